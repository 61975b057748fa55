#include "KOBWBParserMessenger.h"

#include "KOBWBLocation.h"
#include "KOBWBModelStatus.h"

#include <cstdio>
#include <cstring>

namespace {

struct MessageCode {
    const char* message;
    int code;
};

const MessageCode messageCodes[] = {
    {"syntax error, unexpected end of input", 1},
    {"syntax error, unexpected identifier", 2},
    {"syntax error, unexpected integer", 3},
    {"syntax error, unexpected real", 4},
    {"syntax error, unexpected left bracket", 5},
    {"syntax error, unexpected integer, expecting left bracket", 6},
    {"syntax error, unexpected semi-colon", 7},
    {"syntax error, unexpected semi-colon, expecting right bracket", 7},
    {"semantic error, unknown variable name", 21},
    {"semantic error, unknown unit", 22},
    {"semantic error, inconsistent unit", 23},
    {"semantic error, invalid operation with unit", 24},
    {"semantic error, ambiguous Pi", 25},
    {"internal error, unit computation not available", 100},
};

} // namespace

KOBWBParserMessenger::~KOBWBParserMessenger() {
    m_locations.DeleteAll();
}

int KOBWBParserMessenger::GetErrorCode(const char* message) {
    if (!message) return -1;
    for (const MessageCode& entry : messageCodes)
        if (std::strcmp(message, entry.message) == 0) return entry.code;
    return -1;
}

long KOBWBParserMessenger::ReportError(const KOBWBLocation* location, const KOBLVRString& message) {
    KOBLVRString line;
    if (location) {
        line = "ExprParser : ";
        line += message;
        line += " in ";
        line += location->Write();
        line += "\n";
        m_text += message;
        m_text += "\n";
    }
    if (m_echo) std::fprintf(stderr, "%s\n", line.str());
    m_messages.Append(message);
    m_locations.Append(location ? new KOBWBLocation(*location) : new KOBWBLocation);
    m_codes.Append(GetErrorCode(message.str()));
    ++m_nbOfErrors;
    return 0;
}

long KOBWBParserMessenger::GetError(int i, int& code, KOBWBLocation& location) const {
    if (i < 0 || i >= m_nbOfErrors) return KOBWBModelFailure;
    code = m_codes[i];
    location = *m_locations[i];
    return 0;
}

void KOBWBParserMessenger::NoteInvalidCharacter(const KOBWBLocation& location) {
    m_invalidCharacters.Append(location.GetFirstLine());
    m_invalidCharacters.Append(location.GetFirstColumn());
}

long KOBWBParserMessenger::GetInvalidCharacter(int i, int& line, int& column) const {
    if (i < 0 || i >= GetNbOfInvalidCharacters()) return KOBWBModelFailure;
    line = m_invalidCharacters[2 * i];
    column = m_invalidCharacters[2 * i + 1];
    return 0;
}

KOBLVRString KOBWBParserMessenger::GetErrorMessage(int i) const {
    if (i < 0 || i >= m_nbOfErrors) return KOBLVRString();
    return m_messages[i];
}

long KOBWBParserMessenger::GetErrors(KOBLVRIntArray& codes,
                                     KOBLVRListPKOBWBLocation& locations) const {
    locations.DeleteAll();
    codes.SetDimension(0);
    for (int i = 0; i < m_nbOfErrors; ++i) {
        codes.Append(m_codes[i]);
        locations.Append(new KOBWBLocation(*m_locations[i]));
    }
    return 0;
}
