#ifndef KobwbModelSource_h
#define KobwbModelSource_h

#include "KOBWBx.h"

#include <map>
#include <string>

namespace kobwb_tool {

// What the tool keeps of the model text a factory was converted from, to speak of
// the factory in the model's terms: the line each equation was written on, and
// whether each variable is a length or an angle.
class ModelSource {
public:
    enum class Kind { Number, Length, Angle };

    // Notes the model line of the factory equation of that id.
    void SetLine(int equationId, int line) { m_lines[equationId] = line; }
    // Forgets the lines, when the equations no longer come from the model text.
    void ForgetLines() { m_lines.clear(); }
    // Notes a variable's kind from the model check's class of its name.
    void SetKind(const std::string& variable, const KOBLVRString& unitClass);

    // "line 3: x + y = 10;" for an equation of the model, "[5] x + y = 10;" (its
    // id) for one added otherwise.
    std::string NameEquation(const KOBWBEquation* equation) const;
    // The model line of an equation, 0 when it has none.
    int LineOf(const KOBWBEquation* equation) const;
    Kind KindOf(const std::string& variable) const;
    // A variable's value in the model's units: lengths in mm, angles in deg, with
    // twelve significant digits ("80 mm", "[0, 200] mm", "60 deg", "[-inf, 40] mm"
    // for an unbounded side); other values as the printer writes them.
    std::string ValueText(const KOBWBVariable* variable) const;
    // The factor from the factory's units to the model's for a variable: 180/Pi for an
    // angle (radians to degrees), 1 otherwise.
    double UnitScale(const std::string& variable) const;
    // The unit ValueText writes for a variable, empty for a number.
    std::string UnitOf(const std::string& variable) const;

private:
    std::map<int, int> m_lines;
    std::map<std::string, Kind> m_kinds;
};

} // namespace kobwb_tool

#endif
