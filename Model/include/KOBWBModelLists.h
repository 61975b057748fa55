#ifndef KOBWBModelLists_h
#define KOBWBModelLists_h

#include "KOBLVRListP.h"

class KOBWBBlackBox;
class KOBWBLocation;
class KOBWBNode;
class KOBWBOpNode;
class KOBWBVarNode;

// The typed pointer lists of the model tree.
typedef KOBLVRListP<KOBWBNode> KOBLVRListPKOBWBNode;
typedef KOBLVRListP<KOBWBLocation> KOBLVRListPKOBWBLocation;
typedef KOBLVRListP<KOBWBVarNode> KOBLVRListPKOBWBVarNode;
typedef KOBLVRListP<KOBWBOpNode> KOBLVRListPKOBWBOpNode;
typedef KOBLVRListP<KOBWBBlackBox> KOBLVRListPKOBWBBlackBox;

#endif
