#ifndef KOBWBNodeWalk_h
#define KOBWBNodeWalk_h

#include <algorithm>
#include <utility>
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

// The children a bottom-up fold takes, from 1: an operator's children, an equation's
// terms (its right term only when it has one); leaves have none.
int KOBWBFoldChildCount(const KOBWBNode& node);
const KOBWBNode* KOBWBFoldChild(const KOBWBNode& node, int i);

// A node of a bottom-up fold and the next of its children to take.
struct KOBWBFoldFrame {
    const KOBWBNode* node;
    int nextChild;
};

// Folds the subtree below root bottom-up and returns the root's value: a node's value
// is value(node, children), children pointing at its children's values in order (a
// null child is a node too, with none). frames and results are the walk's stacks,
// kept by the caller for their room. Iterative, so that deep trees do not exhaust
// the call stack.
template <class Value, class ValueOf>
Value KOBWBFoldSubtree(const KOBWBNode* root, std::vector<KOBWBFoldFrame>& frames, std::vector<Value>& results,
                       ValueOf value) {
    frames.assign(1, KOBWBFoldFrame{root, 0});
    results.clear();
    while (!frames.empty()) {
        KOBWBFoldFrame& frame = frames.back();
        const KOBWBNode* node = frame.node;
        const int count = node ? KOBWBFoldChildCount(*node) : 0;
        if (frame.nextChild < count) {
            ++frame.nextChild;
            frames.push_back(KOBWBFoldFrame{KOBWBFoldChild(*node, frame.nextChild), 0});
            continue;
        }
        const size_t first = results.size() - static_cast<size_t>(count);
        Value folded = value(node, results.data() + first);
        results.resize(first);
        results.push_back(std::move(folded));
        frames.pop_back();
    }
    return results.back();
}

#endif
