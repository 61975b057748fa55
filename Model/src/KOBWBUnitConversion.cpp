#include "KOBWBUnitConversion.h"

#include <cstring>

namespace {

// A factor is exact (numerator / denominator x Pi^power) or, where no exact form
// exists, the real that stands in the last column.
struct UnitFactor {
    const char* unit;
    int numerator;
    int denominator;
    int powerOfPi;
    double real;
};

constexpr double exact = 0.0;

const UnitFactor units[] = {
    {"km", 1000000, 1, 0, exact},  {"m", 1000, 1, 0, exact},   {"cm", 10, 1, 0, exact},
    {"mm", 1, 1, 0, exact},        {"nm", 0, 0, 0, 1e-6},      {"micron", 0, 0, 0, 1e-3},
    {"in", 0, 0, 0, 25.4},         {"in_ft", 0, 0, 0, 25.4},   {"ft", 0, 0, 0, 304.8},
    {"yard", 0, 0, 0, 914.4},      {"mile", 1609344, 1, 0, exact},
    {"rad", 1, 1, 0, exact},       {"mrad", 0, 0, 0, 1e-3},    {"deg", 1, 180, 1, exact},
    {"\xB0", 1, 180, 1, exact},    {"grad", 1, 200, 1, exact}, {"turn", 2, 1, 1, exact},
    {"%_angle", 1, 50, 1, exact},
};

const UnitFactor feet = {"'", 0, 0, 0, 304.8};
const UnitFactor arcMinute = {"'", 1, 10800, 1, exact};
const UnitFactor inches = {"\"", 0, 0, 0, 25.4};
const UnitFactor arcSecond = {"\"", 1, 648000, 1, exact};

const UnitFactor* Find(const char* unit, bool amongAngles) {
    if (std::strcmp(unit, "'") == 0) return amongAngles ? &arcMinute : &feet;
    if (std::strcmp(unit, "\"") == 0) return amongAngles ? &arcSecond : &inches;
    for (const UnitFactor& entry : units)
        if (std::strcmp(unit, entry.unit) == 0) return &entry;
    return nullptr;
}

} // namespace

bool KOBWBIsAmbiguousUnit(const char* unit) {
    return unit && (std::strcmp(unit, "'") == 0 || std::strcmp(unit, "\"") == 0);
}

bool KOBWBGetUnitFactor(const char* unit, bool amongAngles, KOBWBValue& factor) {
    const UnitFactor* entry = unit ? Find(unit, amongAngles) : nullptr;
    if (!entry) return false;
    if (entry->real != exact)
        factor = KOBWBValue(entry->real);
    else
        factor = KOBWBValue(KOBWBCreateFraction(entry->numerator, entry->denominator, entry->powerOfPi, 1));
    return true;
}
