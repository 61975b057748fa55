#include "KOBWBValueType.h"

namespace {

const char* const valueTypeNames[] = {"Undefined",    "Integer",    "Real",
                                      "IntegerInterval", "RealInterval", "IntegerEnum",
                                      "RealEnum",     "Boolean"};

const char* const booleanNames[] = {"False", "True", "Undef", "Contr"};

} // namespace

const char* KOBWBGetValueTypeName(KOBWBValueType type) {
    const int code = static_cast<int>(type);
    return code >= 0 && code < 8 ? valueTypeNames[code] : "";
}

const char* KOBWBGetBooleanName(int boolean) {
    return boolean >= 0 && boolean < 4 ? booleanNames[boolean] : "";
}
