#ifndef KOBWBModelReports_h
#define KOBWBModelReports_h

#include "KOBWBxExport.h"

#include <string>
#include <vector>

class KOBWBModel;
class KOBWBParserMessenger;

// One report on a model text: where it is (line and column from 1), what it says,
// and the messenger's code for it.
struct KOBWBModelReport {
    int line = 0;
    int column = 0;
    std::string message;
    int code = 0;
};

// The reports on a model text, worded for the person who wrote it.
class KOBWBX_API KOBWBModelReports {
public:
    // The errors the messenger collected while the text was parsed into the model, in
    // the order they were reported. Each message stays as the model language words
    // it and is followed by what the text tells about it: for an inconsistent unit,
    // which quantities and units disagree (the report then points at the operator or
    // the variable where they meet); the name of an unknown unit; "expected ';'" at
    // the end of a line where an equation seems to go on without its ';'; how deep
    // the brackets were where the parser's stack ran out.
    static std::vector<KOBWBModelReport> Errors(const std::string& text, const KOBWBModel& model,
                                                const KOBWBParserMessenger& messenger);
    // "invalid character ':', skipped" for the character the scanner skipped at a
    // place of the text (line from 1, column from 0); a byte that is not printable
    // ASCII is shown as \xNN.
    static std::string InvalidCharacter(const std::string& text, int line, int column);
};

#endif
