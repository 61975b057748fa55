#ifndef KOBWBParserMessenger_h
#define KOBWBParserMessenger_h

#include "KOBLVRArrayKOBLVRString.h"
#include "KOBLVRIntArray.h"
#include "KOBLVRString.h"
#include "KOBWBModelLists.h"

class KOBWBLocation;

// Collects the errors found in a model text: for each, its location and a code
// taken from the message; every report is also written to standard error unless
// the messenger is told to keep its reports to itself.
class KOBWBX_API KOBWBParserMessenger {
public:
    KOBWBParserMessenger() = default;
    ~KOBWBParserMessenger();
    KOBWBParserMessenger(const KOBWBParserMessenger&) = delete;
    KOBWBParserMessenger& operator=(const KOBWBParserMessenger&) = delete;

    // Records one error and writes "ExprParser : <message> in <location>" and an
    // empty line to standard error (only the empty line without a location),
    // unless the echo is off. Returns 0.
    long ReportError(const KOBWBLocation* location, const KOBLVRString& message);
    int GetErrorNumber() const { return m_nbOfErrors; }
    // Whether reports are also written to standard error, and invalid characters
    // announced on standard output; on by default. An application that shows the
    // errors its own way turns it off, and nothing is written.
    void SetEchoToStandardError(bool echo) { m_echo = echo; }
    bool IsEchoingToStandardError() const { return m_echo; }
    // The message of the i-th error, from 0 in report order, as reported
    // ("syntax error, unexpected identifier"); empty outside.
    KOBLVRString GetErrorMessage(int i) const;
    // Code and location of the i-th error, from 0 in report order; fails outside.
    long GetError(int i, int& code, KOBWBLocation& location) const;
    // Empties both outputs (deleting the locations the list holds), then fills
    // them with the code and a new copy of the location of every error. Returns 0.
    long GetErrors(KOBLVRIntArray& codes, KOBLVRListPKOBWBLocation& locations) const;
    // A character the scanner could not use and skipped. It is not an error: the
    // error count and lists do not change; it is only kept to be read back.
    void NoteInvalidCharacter(const KOBWBLocation& location);
    int GetNbOfInvalidCharacters() const { return m_invalidCharacters.Size() / 2; }
    // Line and column (from 1 and from 0, as locations count) of the i-th invalid
    // character, from 0 in text order; fails outside.
    long GetInvalidCharacter(int i, int& line, int& column) const;

    // The messages of the errors reported with a location, one a line.
    KOBLVRString GetString() const { return m_text; }

    // The code of a message: 1 to 7 for the syntax errors the table names, 21 to
    // 25 and 100 for the semantic ones, -1 for any other.
    static int GetErrorCode(const char* message);

private:
    KOBLVRListPKOBWBLocation m_locations;
    KOBLVRIntArray m_codes;
    KOBLVRArrayKOBLVRString m_messages;
    KOBLVRIntArray m_invalidCharacters; // line, column of each
    int m_nbOfErrors = 0;
    bool m_echo = true;
    KOBLVRString m_text;
};

#endif
