#ifndef KOBWBVisitor_h
#define KOBWBVisitor_h

#include "KOBWBxExport.h"

class KOBWBConstNode;
class KOBWBEqNode;
class KOBWBModel;
class KOBWBOpNode;
class KOBWBVarNode;

// Walks a model tree. Every operation answers KOBWBVisitContinue (1) to go on or
// KOBWBModelFailure. The base operations visit an equation's left then right term
// and an operator's children from 1 to GetNbOfChildren(), stopping at the first
// answer other than 1; a concrete visitor overrides VisitModel, which fails here.
// The walk recurses once a level of the tree: a sum of many thousands of terms
// needs a call stack to match.
class KOBWBX_API KOBWBVisitor {
public:
    virtual ~KOBWBVisitor();
    virtual long VisitModel(KOBWBModel& model);
    virtual long VisitConstant(KOBWBConstNode& node);
    virtual long VisitVariable(KOBWBVarNode& node);
    // Fails when a term is missing.
    virtual long VisitEquation(KOBWBEqNode& node);
    // Fails on a null child.
    virtual long VisitOperator(KOBWBOpNode& node);
};

#endif
