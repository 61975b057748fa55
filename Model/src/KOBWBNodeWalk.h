#ifndef KOBWBNodeWalk_h
#define KOBWBNodeWalk_h

#include <algorithm>
#include <vector>

class KOBWBNode;

// Children of a node in order: an operator's children, an equation's terms;
// leaves have none. Null children are skipped.
void KOBWBAppendChildren(KOBWBNode* node, std::vector<KOBWBNode*>& out);

// Calls visit(node) on every node of the subtree, parents before children.
// Iterative, so that a tree as deep as a very long sum does not exhaust the
// call stack.
template <class Visit> void KOBWBWalkSubtree(KOBWBNode* root, Visit visit) {
    if (!root) return;
    std::vector<KOBWBNode*> pending(1, root);
    while (!pending.empty()) {
        KOBWBNode* node = pending.back();
        pending.pop_back();
        visit(node);
        const size_t first = pending.size();
        KOBWBAppendChildren(node, pending);
        // Children were appended in order; reverse them so the first is taken first.
        std::reverse(pending.begin() + first, pending.end());
    }
}

#endif
