#ifndef KOBWBNodeType_h
#define KOBWBNodeType_h

// The family of a model tree node.
enum KOBWBNodeType {
    KOBWBPlainNodeType = 0,
    KOBWBConstNodeType = 1,
    KOBWBVarNodeType = 2,
    KOBWBOpNodeType = 3,
    KOBWBEqNodeType = 4
};

#endif
