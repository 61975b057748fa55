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

} // namespace kobwb

#endif
