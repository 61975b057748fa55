#ifndef KOBWBDataLists_h
#define KOBWBDataLists_h

#include "KOBLVRListP.h"

class KOBWBExpression;
class KOBWBVariable;
class KOBWBEquation;
class KOBWBBlackBox;
class KOBWBValue;

typedef KOBLVRListP<KOBWBExpression> KOBLVRListPKOBWBExpression;
typedef KOBLVRListP<KOBWBVariable> KOBLVRListPKOBWBVariable;
typedef KOBLVRListP<KOBWBEquation> KOBLVRListPKOBWBEquation;
typedef KOBLVRListP<KOBWBBlackBox> KOBLVRListPKOBWBBlackBox;
typedef KOBLVRListP<KOBWBValue> KOBLVRListPKOBWBValue;

#endif
