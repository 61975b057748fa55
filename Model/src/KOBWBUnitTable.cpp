#include "KOBWBUnitTable.h"

#include "KOBLVRString.h"
#include "KOBWBUnitClass.h"

#include <cstring>
#include <vector>

namespace {

const char* const distanceUnits[] = {"km", "m",      "cm",   "mm",   "nm",   "in",
                                     "ft", "micron", "yard", "mile", "in_ft"};
const char* const angleUnits[] = {"rad", "deg", "grad", "turn", "mrad", "%_angle"};
const char* const ambiguousUnits[] = {"\xB0", "'", "\""};

template <size_t N> bool IsAmong(const char* unit, const char* const (&units)[N]) {
    for (const char* candidate : units)
        if (std::strcmp(unit, candidate) == 0) return true;
    return false;
}

const char* const unitClasses[] = {KOBWBUnitClassDistance, KOBWBUnitClassAngle,
                                   KOBWBUnitClassNone,     KOBWBUnitClassAmbiguous,
                                   KOBWBUnitClassUnsolved, KOBWBUnitClassInhomogeneous};

// Every text of the tables above once, as strings.
struct SharedTexts {
    std::vector<KOBLVRString> texts;
    SharedTexts() {
        for (const char* text : unitClasses)
            texts.emplace_back(text);
        for (const char* text : distanceUnits)
            texts.emplace_back(text);
        for (const char* text : angleUnits)
            texts.emplace_back(text);
        for (const char* text : ambiguousUnits)
            texts.emplace_back(text);
    }
};

const SharedTexts& GetSharedTexts() {
    static const SharedTexts shared;
    return shared;
}

} // namespace

const KOBLVRString* KOBWBSharedUnitText(const char* text) {
    for (const KOBLVRString& candidate : GetSharedTexts().texts)
        if (std::strcmp(candidate.str(), text) == 0) return &candidate;
    return nullptr;
}

bool KOBWBIsSharedUnitText(const KOBLVRString* text) {
    const std::vector<KOBLVRString>& texts = GetSharedTexts().texts;
    return text >= texts.data() && text < texts.data() + texts.size();
}

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
