#ifndef KOBWBPresentVariables_h
#define KOBWBPresentVariables_h

#include <vector>

class KOBWBExpression;
class KOBWBVariable;

namespace kobwb {

// The variables below root, each once, in increasing index order. Found by a walk
// over the graph, so that the time is that of the graph, whatever the number of
// variables of the factory.
std::vector<KOBWBVariable*> PresentVariables(const KOBWBExpression& root);

} // namespace kobwb

#endif
