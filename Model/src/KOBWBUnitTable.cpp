#include "KOBWBUnitTable.h"

#include "KOBWBUnitClass.h"

#include <cstring>

namespace {

const char* const distanceUnits[] = {"km", "m",      "cm",   "mm",   "nm",   "in",
                                     "ft", "micron", "yard", "mile", "in_ft"};
const char* const angleUnits[] = {"rad", "deg", "grad", "turn", "mrad", "%_angle"};
const char* const ambiguousUnits[] = {"\xB0", "'", "\""};

template <size_t N>
bool IsAmong(const char* unit, const char* const (&units)[N]) {
    for (const char* candidate : units)
        if (std::strcmp(unit, candidate) == 0) return true;
    return false;
}

} // namespace

KOBWBUnitKind KOBWBClassifyUnit(const char* unit) {
    if (!unit) return KOBWBUnitKind::Unknown;
    if (IsAmong(unit, distanceUnits)) return KOBWBUnitKind::Distance;
    if (IsAmong(unit, angleUnits)) return KOBWBUnitKind::Angle;
    if (IsAmong(unit, ambiguousUnits)) return KOBWBUnitKind::Ambiguous;
    return KOBWBUnitKind::Unknown;
}

const char* KOBWBUnitClassOf(KOBWBUnitKind kind) {
    switch (kind) {
    case KOBWBUnitKind::Distance:
        return KOBWBUnitClassDistance;
    case KOBWBUnitKind::Angle:
        return KOBWBUnitClassAngle;
    case KOBWBUnitKind::Ambiguous:
        return KOBWBUnitClassAmbiguous;
    case KOBWBUnitKind::Unknown:
        break;
    }
    return KOBWBUnitClassNone;
}
