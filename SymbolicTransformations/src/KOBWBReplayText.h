#ifndef KOBWBReplayText_h
#define KOBWBReplayText_h

#include "KOBWBValue.h"

#include <string>

// The words of the equation-system replay text: quoted names, integers, reals
// that read back bit for bit, and values of every kind. The grammar is documented
// in KOBWBEquations.h.
namespace kobwb {
namespace replay {

// name in double quotes, with \\, \", \n, \r, \t and \xHH for the other control
// characters.
void AppendQuoted(std::string& text, const char* name);
void AppendInteger(std::string& text, int value);
// The shortest decimal text that reads back as the same double ("inf", "-inf" and
// "nan" for the special values); independent of the locale.
void AppendReal(std::string& text, double value);
void AppendValue(std::string& text, const KOBWBValue& value);

// Reads the words of one line. Every reading skips the blanks before its word and
// answers false when the word is not there: Accept, AcceptWord, ReadInteger and
// ReadReal then consume nothing more, the other readings may have gone on.
class TextCursor {
public:
    TextCursor(const char* begin, const char* end) : m_position(begin), m_end(end) {}

    // Whether only blanks are left.
    bool AtEnd();
    // The next character after blanks, '\0' at the end.
    char Peek();
    // Consumes c when it comes next.
    bool Accept(char c);
    // Consumes word when it comes next, whole.
    bool AcceptWord(const char* word);
    // The characters up to the next blank or the end.
    bool ReadWord(std::string& word);
    // The characters up to the first of stops; false when there are none.
    bool ReadUntil(const char* stops, std::string& word);
    bool ReadInteger(int& value);
    bool ReadReal(double& value);
    bool ReadQuoted(std::string& name);
    bool ReadValue(KOBWBValue& value);

private:
    void SkipBlanks();

    const char* m_position;
    const char* m_end;
};

} // namespace replay
} // namespace kobwb

#endif
