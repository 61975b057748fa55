#include "KOBWBModelScannerSupport.h"

#include "KOBWBFunctionNames.h"
#include "KOBWBModel.h"
#include "KOBWBParserMessenger.h"

#include <cstdio>
#include <cstdlib>
#include <limits>

namespace {

// The characters of identifiers, as the scanner's IDSTART and IDCHAR.
bool StartsIdentifier(unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' || c == '"' || c == '\'' ||
           c == '%' || c == 0xB0;
}

bool ContinuesIdentifier(unsigned char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '%';
}

bool IsDigit(unsigned char c) {
    return c >= '0' && c <= '9';
}

// How far ahead a statement is read: a long one would have its first names
// pushed out of the cache by its last ones before they are needed.
const int foreseenCharacters = 512;

} // namespace

int KOBWBDigitsToken(KOBWBMODELLANGSTYPE* value, const char* text) {
    // The digits are read here while they fit in an int; a larger number is the
    // real that atof reads.
    const long long largest = std::numeric_limits<int>::max();
    long long number = 0;
    const char* digit = text;
    while (*digit && number <= largest)
        number = number * 10 + (*digit++ - '0');
    if (number > largest) {
        value->real = std::atof(text);
        return TOKEN_REAL;
    }
    value->integer = static_cast<int>(number);
    return TOKEN_INTEGER;
}

int KOBWBRealToken(KOBWBMODELLANGSTYPE* value, const char* text) {
    value->real = std::atof(text);
    return TOKEN_REAL;
}

int KOBWBNameToken(KOBWBMODELLANGSTYPE* value, KOBWBScanContext& context, const char* text, int length) {
    if (const KOBWBFunctionName* function = KOBWBFindReadFunction(text, length)) {
        value->code = function->type;
        return TOKEN_BUILTIN_FUNC;
    }
    value->text = context.identifiers.Copy(text, static_cast<size_t>(length));
    return TOKEN_IDENTIFIER;
}

void KOBWBInvalidCharacter(KOBWBScanContext& context, const KOBWBLocation& location) {
    context.messenger.NoteInvalidCharacter(location);
    if (context.messenger.IsEchoingToStandardError()) std::fputs("Invalid character\n", stdout);
}

void KOBWBForeseeStatement(const KOBWBModel& model, const char* text) {
    const char* const end = text + foreseenCharacters;
    const char* next = text;
    while (next < end && *next && *next != ';') {
        const unsigned char c = static_cast<unsigned char>(*next);
        const char* word = next++;
        if (StartsIdentifier(c)) {
            while (ContinuesIdentifier(static_cast<unsigned char>(*next)))
                ++next;
            model.ForeseeVariable(word, static_cast<size_t>(next - word));
        } else if (IsDigit(c)) {
            // A number, with the unit or the exponent glued to it.
            while (ContinuesIdentifier(static_cast<unsigned char>(*next)) || *next == '.')
                ++next;
        }
    }
}
