#include "KOBWBModelScannerSupport.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

int KOBWBBuiltinToken(KOBWBMODELLANGSTYPE* value, KOBWBExpressionType type) {
    value->code = type;
    return TOKEN_BUILTIN_FUNC;
}

int KOBWBDigitsToken(KOBWBMODELLANGSTYPE* value, const char* text) {
    const double number = std::atof(text);
    if (number > 2147483647.0 || number < -2147483648.0) {
        value->real = number;
        return TOKEN_REAL;
    }
    value->integer = std::atoi(text);
    return TOKEN_INTEGER;
}

int KOBWBRealToken(KOBWBMODELLANGSTYPE* value, const char* text) {
    value->real = std::atof(text);
    return TOKEN_REAL;
}

int KOBWBIdentifierToken(KOBWBMODELLANGSTYPE* value, const char* text, int length) {
    char* copy = static_cast<char*>(std::malloc(static_cast<size_t>(length) + 1));
    if (copy) {
        std::memcpy(copy, text, static_cast<size_t>(length));
        copy[length] = '\0';
    }
    value->text = copy;
    return TOKEN_IDENTIFIER;
}

void KOBWBInvalidCharacter() {
    std::fputs("Invalid character\n", stdout);
}
