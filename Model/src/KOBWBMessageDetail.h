#ifndef KOBWBMessageDetail_h
#define KOBWBMessageDetail_h

#include "KOBWBModelReports.h"
#include "KOBWBTextPlaces.h"

#include <string>

namespace kobwb {

// The details added to the parser's and the model check's messages, read from the
// model text. The message stays first, as the model language words it; the detail
// follows it.

// "invalid character ':', skipped" for the character at the place (line from 1,
// column from 0); a byte that is not printable ASCII shown as \xNN.
std::string InvalidCharacterMessage(const TextPlaces& places, int line, int column);

// Adds to a report of the parser or the model check (its line from 1, column
// from 1) what the text tells: the name of an unknown unit; "expected ';'" at the
// end of the line before, when an equation seems to go on past a line without
// its ';'; the depth of the brackets where the parser's stack ran out.
void DetailReport(const TextPlaces& places, KOBWBModelReport& report);

} // namespace kobwb

#endif
