#ifndef KOBWBUnknowns_h
#define KOBWBUnknowns_h

#include <vector>

class KOBWBExpression;
class KOBWBFactory;
class KOBWBVariable;

namespace kobwb {

// The unknowns of a system's equalities, as the solvers take them: the variables that
// occur in the roots, in index order, less those fixed by their own Fix flag or listed
// in fixed (entries of another factory are ignored).
std::vector<KOBWBVariable*> EqualityUnknowns(KOBWBFactory& factory, const std::vector<KOBWBExpression*>& roots,
                                             const std::vector<KOBWBVariable*>& fixed = {});

// The same in two parts, for a solver that meets the variables of the roots itself:
// which variables, by index, are not fixed...
std::vector<bool> UnfixedVariables(KOBWBFactory& factory, const std::vector<KOBWBVariable*>& fixed);
// ...and, of the variables met (each any number of times), the unfixed ones in index
// order.
std::vector<KOBWBVariable*> UnknownsAmong(KOBWBFactory& factory, const std::vector<bool>& unfixed,
                                          const std::vector<KOBWBVariable*>& met);

} // namespace kobwb

#endif
