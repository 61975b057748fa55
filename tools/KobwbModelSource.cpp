#include "KobwbModelSource.h"

#include <cmath>
#include <cstdio>
#include <cstring>

namespace kobwb_tool {

namespace {

constexpr double degreesPerRadian = 180.0 / 3.14159265358979323846;

// A bound in a unit, readably: twelve significant digits undo the rounding of
// the conversion (60 deg, not 59.99999999999999 deg); a bound at the largest real
// or past it (unbounded) is -inf or inf.
std::string Bound(double value, double scale) {
    if (std::fabs(value) >= KOBWBMaxReal) return value < 0 ? "-inf" : "inf";
    value *= scale;
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.12g", value);
    return buffer;
}

} // namespace

void ModelSource::SetKind(const std::string& variable, const KOBLVRString& unitClass) {
    const char* text = unitClass.str();
    if (std::strcmp(text, KOBWBUnitClassDistance) == 0)
        m_kinds[variable] = Kind::Length;
    else if (std::strcmp(text, KOBWBUnitClassAngle) == 0)
        m_kinds[variable] = Kind::Angle;
}

int ModelSource::LineOf(const KOBWBEquation* equation) const {
    const auto found = m_lines.find(equation->GetId());
    return found == m_lines.end() ? 0 : found->second;
}

std::string ModelSource::NameEquation(const KOBWBEquation* equation) const {
    const int line = LineOf(equation);
    const std::string place = line > 0 ? "line " + std::to_string(line) + ": " : '[' + std::to_string(equation->GetId()) + "] ";
    return place + KOBWBEquationPrinter::ToText(equation);
}

ModelSource::Kind ModelSource::KindOf(const std::string& variable) const {
    const auto found = m_kinds.find(variable);
    return found == m_kinds.end() ? Kind::Number : found->second;
}

double ModelSource::UnitScale(const std::string& variable) const {
    return KindOf(variable) == Kind::Angle ? degreesPerRadian : 1.0;
}

std::string ModelSource::UnitOf(const std::string& variable) const {
    switch (KindOf(variable)) {
    case Kind::Length: return "mm";
    case Kind::Angle: return "deg";
    default: return "";
    }
}

std::string ModelSource::ValueText(const KOBWBVariable* variable) const {
    KOBWBVariable* named = const_cast<KOBWBVariable*>(variable);
    const std::string name = named->GetName().str();
    const KOBWBValue& value = variable->GetExprValue();
    const Kind kind = KindOf(name);
    const KOBWBValueType type = value.GetType();
    const bool interval = type == KOBWBRealValue || type == KOBWBRealIntervalValue || type == KOBWBIntegerValue ||
                          type == KOBWBIntegerIntervalValue;
    const KOBWBRealInterval bounds = interval ? value.GetAsRealInterval() : KOBWBRealInterval{0, 0};
    if (kind == Kind::Number || !interval || value.IsIndefinite() || !(bounds.lower <= bounds.upper)) {
        std::string text;
        KOBWBEquationPrinter::PrintValue(value, text);
        return text;
    }
    const double scale = UnitScale(name);
    const std::string lower = Bound(bounds.lower, scale);
    const std::string upper = Bound(bounds.upper, scale);
    return (lower == upper ? lower : '[' + lower + ", " + upper + ']') + ' ' + UnitOf(name);
}

} // namespace kobwb_tool
