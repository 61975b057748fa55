#ifndef KOBWBUnitConflicts_h
#define KOBWBUnitConflicts_h

#include "KOBWBTextPlaces.h"

#include <string>
#include <vector>

class KOBWBEqNode;
class KOBWBModel;

namespace kobwb {

// A place where a length and an angle meet, and what meets there.
struct UnitConflict {
    // The equation it is in, and where it is (line and column from 1): the
    // operator that joins the two, or the variable whose kind the equation contradicts.
    const KOBWBEqNode* equation;
    int line;
    int column;
    // "x is a length (mm on line 1) but 30 deg is an angle",
    // "'+' joins 30 deg, an angle, and 5 mm, a length".
    std::string detail;
};

// The conflicts of lengths and angles in a model, in text order: the model check
// says that a unit is inconsistent and where the equation is; this tells which
// quantities and units disagree. Variables take the kind of the first equation that
// sets one of its sides, a variable alone, to a length or an angle.
std::vector<UnitConflict> FindUnitConflicts(const KOBWBModel& model, const TextPlaces& places);

} // namespace kobwb

#endif
