#ifndef KOBWBStableKeys_h
#define KOBWBStableKeys_h

#include <cstdint>
#include <string>

class KOBWBExpression;
class KOBWBValue;

// What the canonical order of atoms is made of: texts and digests that are one
// function of an expression, the same from run to run and whatever was read before
// (no addresses, no numbers given in the order of reading).
namespace KOBWBStableKeys {

// A 64-bit digest of bytes (FNV-1a), mixed into an earlier digest.
std::uint64_t Digest(const std::string& text, std::uint64_t digest = 14695981039346656037ull);
// Two digests mixed so that the order of the pair matters.
std::uint64_t Mix(std::uint64_t digest, std::uint64_t value);
// Sixteen hexadecimal digits.
std::string Hex(std::uint64_t digest);

// The text of a value, exact to the bit: its kind, then its numbers as
// hexadecimal floating point.
std::string ValueText(const KOBWBValue& value);

// The head of a node's key: its type, its parameters, and for a black-box call
// the black box's name and its place among the factory's black boxes.
std::string NodeHead(KOBWBExpression* node);

// A digest of the whole graph below node, made of the heads of its nodes, the
// values of its constants and the indices of its variables.
std::uint64_t NodeDigest(KOBWBExpression* node);

} // namespace KOBWBStableKeys

#endif
