#include "KOBWBVisitor.h"

#include "KOBWBEqNode.h"
#include "KOBWBModelStatus.h"
#include "KOBWBOpNode.h"

KOBWBVisitor::~KOBWBVisitor() = default;

long KOBWBVisitor::VisitModel(KOBWBModel&) {
    return KOBWBModelFailure;
}

long KOBWBVisitor::VisitConstant(KOBWBConstNode&) {
    return KOBWBVisitContinue;
}

long KOBWBVisitor::VisitVariable(KOBWBVarNode&) {
    return KOBWBVisitContinue;
}

long KOBWBVisitor::VisitEquation(KOBWBEqNode& node) {
    KOBWBNode* left = node.GetLeftTerm();
    KOBWBNode* right = node.GetRightTerm();
    if (!left || !right) return KOBWBModelFailure;
    const long result = left->Accept(*this);
    return result == KOBWBVisitContinue ? right->Accept(*this) : result;
}

long KOBWBVisitor::VisitOperator(KOBWBOpNode& node) {
    long result = KOBWBVisitContinue;
    for (int i = 1; i <= node.GetNbOfChildren() && result == KOBWBVisitContinue; ++i) {
        KOBWBNode* child = node.GetChild(i);
        result = child ? child->Accept(*this) : KOBWBModelFailure;
    }
    return result;
}
