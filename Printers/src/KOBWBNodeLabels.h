#ifndef KOBWBNodeLabels_h
#define KOBWBNodeLabels_h

#include <string>

class KOBWBExpression;

namespace kobwb {

// The text inside double quotes, for DOT and JSON alike: quotes and backslashes
// escaped, a line break as \n, other control characters as spaces.
void AppendQuoted(const std::string& text, std::string& out);
// What a graph shows for the node: a variable's name (v and its index for an
// unnamed one), a constant's value as model text, an operator's name.
std::string NodeLabel(const KOBWBExpression* node);
// Appends the value of a node whose buffer holds a valid one and returns true;
// false for constants, whose label shows their value already.
bool AppendBufferedValue(const KOBWBExpression* node, std::string& out);

} // namespace kobwb

#endif
