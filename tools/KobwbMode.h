#ifndef KobwbMode_h
#define KobwbMode_h

#include <string>

namespace kobwb_tool {

// The mode of the symbolic transformations when none is given: simplify each equation.
constexpr unsigned defaultMode = 4;

// Reads a mode: a number from 0 to 31, or bits joined by "+" or "|" ("2+4+16").
// Empty when done, otherwise what was wrong.
std::string ParseMode(const std::string& text, unsigned& mode);

} // namespace kobwb_tool

#endif
