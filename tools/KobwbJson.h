#ifndef KobwbJson_h
#define KobwbJson_h

#include <string>

namespace kobwb_tool {

// Appends text as a JSON string, quoted, with quotes, backslashes and control
// characters escaped (bytes from 0x80 up are passed through as they are).
void AppendJsonString(std::string& out, const std::string& text);

// Appends a number as JSON: the shortest text that reads back to the same double,
// null for a NaN and for the infinities, which JSON cannot write.
void AppendJsonNumber(std::string& out, double value);

} // namespace kobwb_tool

#endif
