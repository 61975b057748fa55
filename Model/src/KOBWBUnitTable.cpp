#include "KOBWBUnitTable.h"

#include "KOBLVRString.h"
#include "KOBWBUnitClass.h"

#include <vector>

namespace {

const char* const distanceUnits[] = {"km", "m",      "cm",   "mm",   "nm",   "in",
                                     "ft", "micron", "yard", "mile", "in_ft"};
const char* const angleUnits[] = {"rad", "deg", "grad", "turn", "mrad", "%_angle"};
const char* const ambiguousUnits[] = {"\xB0", "'", "\""};

// The tables' texts are a few characters long and mostly differ from the
// first: comparing in place is quicker than calling strcmp.
bool IsSameText(const char* a, const char* b) {
    while (*a && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

template <size_t N> bool IsAmong(const char* unit, const char* const (&units)[N]) {
    for (const char* candidate : units)
        if (IsSameText(unit, candidate)) return true;
    return false;
}

const char* const unitClasses[] = {KOBWBUnitClassDistance, KOBWBUnitClassAngle,
                                   KOBWBUnitClassNone,     KOBWBUnitClassAmbiguous,
                                   KOBWBUnitClassUnsolved, KOBWBUnitClassInhomogeneous};

// Every text of the tables above once, as strings, with the kind of each (a
// unit class is no unit: Unknown).
struct SharedTexts {
    std::vector<KOBLVRString> texts;
    std::vector<KOBWBUnitKind> kinds;
    SharedTexts() {
        Add(unitClasses, KOBWBUnitKind::Unknown);
        Add(distanceUnits, KOBWBUnitKind::Distance);
        Add(angleUnits, KOBWBUnitKind::Angle);
        Add(ambiguousUnits, KOBWBUnitKind::Ambiguous);
    }
    template <size_t N> void Add(const char* const (&table)[N], KOBWBUnitKind kind) {
        for (const char* text : table) {
            texts.emplace_back(text);
            kinds.push_back(kind);
        }
    }
};

const SharedTexts& GetSharedTexts() {
    static const SharedTexts shared;
    return shared;
}

} // namespace

const KOBLVRString* KOBWBSharedUnitText(const char* text) {
    for (const KOBLVRString& candidate : GetSharedTexts().texts)
        if (IsSameText(candidate.str(), text)) return &candidate;
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

KOBWBUnitKind KOBWBClassifyUnit(const KOBLVRString& unit) {
    const SharedTexts& shared = GetSharedTexts();
    if (KOBWBIsSharedUnitText(&unit))
        return shared.kinds[static_cast<size_t>(&unit - shared.texts.data())];
    return KOBWBClassifyUnit(unit.str());
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
