#include "KOBWBNodeWalk.h"

#include "KOBWBEqNode.h"
#include "KOBWBOpNode.h"

void KOBWBAppendChildren(KOBWBNode* node, std::vector<KOBWBNode*>& out) {
    switch (node->GetNodeType()) {
    case KOBWBOpNodeType: {
        const KOBWBOpNode* op = static_cast<const KOBWBOpNode*>(node);
        for (int i = 1; i <= op->GetNbOfChildren(); ++i)
            if (KOBWBNode* child = op->GetChild(i)) out.push_back(child);
        break;
    }
    case KOBWBEqNodeType: {
        const KOBWBEqNode* equation = static_cast<const KOBWBEqNode*>(node);
        if (equation->GetLeftTerm()) out.push_back(equation->GetLeftTerm());
        if (equation->GetRightTerm()) out.push_back(equation->GetRightTerm());
        break;
    }
    default:
        break;
    }
}

int KOBWBFoldChildCount(const KOBWBNode& node) {
    if (node.GetNodeType() == KOBWBOpNodeType) return static_cast<const KOBWBOpNode&>(node).GetNbOfChildren();
    if (node.GetNodeType() == KOBWBEqNodeType) return static_cast<const KOBWBEqNode&>(node).GetRightTerm() ? 2 : 1;
    return 0;
}

const KOBWBNode* KOBWBFoldChild(const KOBWBNode& node, int i) {
    if (node.GetNodeType() == KOBWBOpNodeType) return static_cast<const KOBWBOpNode&>(node).GetChild(i);
    const KOBWBEqNode& equation = static_cast<const KOBWBEqNode&>(node);
    return i == 1 ? equation.GetLeftTerm() : equation.GetRightTerm();
}
