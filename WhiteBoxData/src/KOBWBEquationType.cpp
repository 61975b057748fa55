#include "KOBWBEquationType.h"

const char* KOBWBGetEquationTypeText(KOBWBEquationType type) {
    static const char* const texts[] = {"", "=", "!=", "<=", "<", ">=", ">", "<minimize>", "<maximize>"};
    const int code = static_cast<int>(type);
    return code >= 0 && code < 9 ? texts[code] : "";
}
