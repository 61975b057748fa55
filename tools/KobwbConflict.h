#ifndef KobwbConflict_h
#define KobwbConflict_h

#include "KOBWBx.h"

#include <vector>

namespace kobwb_tool {

// The domains of every factory variable, by index.
std::vector<KOBWBValue> SaveDomains(KOBWBFactory& factory);
void RestoreDomains(KOBWBFactory& factory, const std::vector<KOBWBValue>& domains);

// The equations that together empty the domains given (a contraction of the whole
// system found no solution there): the equations revised in turn from those
// domains until one of them is empty, then, for a system of up to a few dozen
// equations, every equation left out whose absence still leaves the domains
// empty. Empty when revising the equations one at a time does not empty the
// domains. The variables' domains are whatever the last trial left.
std::vector<KOBWBEquation*> EquationsThatEmpty(KOBWBFactory& factory, const std::vector<KOBWBValue>& domains);

} // namespace kobwb_tool

#endif
