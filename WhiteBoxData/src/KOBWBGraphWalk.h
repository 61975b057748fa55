#ifndef KOBWBGraphWalk_h
#define KOBWBGraphWalk_h

#include "KOBWBExpression.h"

#include <cstddef>
#include <unordered_set>
#include <vector>

// Walks over a node and the nodes below it with an explicit stack, so that a deep
// graph cannot exhaust the call stack. A node shared by several parents is walked
// over once: past the first nodes, the walk remembers those it has seen, so that a
// graph whose paths multiply at every level (x2 = x1 + x1, x3 = x2 + x2, ...) is
// walked in the time of its nodes rather than of its paths. Small graphs are walked
// without that bookkeeping; their few shared nodes may then be seen twice, which the
// walks of this library do not mind.
namespace kobwb {

enum class WalkStep {
    // Go on below the node.
    Descend,
    // Leave the nodes below it out.
    Skip,
    // End the walk.
    Stop
};

// Calls visit on every node reached, null children included; false when visit
// stopped the walk.
template <class Node, class Visit>
bool WalkGraph(Node* start, Visit visit) {
    constexpr std::size_t remembering = 64;
    std::vector<Node*> pending{start};
    std::unordered_set<const KOBWBExpression*> seen;
    std::size_t walked = 0;
    while (!pending.empty()) {
        Node* node = pending.back();
        pending.pop_back();
        if (node && ++walked > remembering && !seen.insert(node).second) continue;
        const WalkStep step = visit(node);
        if (step == WalkStep::Stop) return false;
        if (step == WalkStep::Skip || !node) continue;
        for (int i = node->GetNbOfChildren() - 1; i >= 0; --i) pending.push_back(node->GetChild(i));
    }
    return true;
}

} // namespace kobwb

#endif
