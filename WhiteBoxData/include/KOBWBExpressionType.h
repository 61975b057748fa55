#ifndef KOBWBExpressionType_h
#define KOBWBExpressionType_h

#include "KOBWBxExport.h"

// The kind of an expression node. The model language uses the same codes, plus
// 45 (opposite) and 46 (binary minus), which exist only in the model tree.
enum KOBWBExpressionType {
    KOBWBVariableType = 1,
    KOBWBConstantType = 2,
    KOBWBNotType = 3,
    KOBWBOrType = 4,
    KOBWBAndType = 5,
    KOBWBEqualType = 6,
    KOBWBNotEqualType = 7,
    KOBWBLessEqualType = 8,
    KOBWBImplicationType = 9,
    KOBWBSumType = 10,
    KOBWBProductType = 11,
    KOBWBQuotientType = 12,
    KOBWBPowerType = 13,
    KOBWBRootType = 14,
    KOBWBSqrtType = 15,
    KOBWBLogType = 16,
    KOBWBLnType = 17,
    KOBWBExpType = 18,
    KOBWBSinType = 19,
    KOBWBCosType = 20,
    KOBWBTanType = 21,
    KOBWBAsinType = 22,
    KOBWBAcosType = 23,
    KOBWBAtanType = 24,
    KOBWBAtan2Type = 25,
    KOBWBDimType = 26,
    KOBWBSignType = 27,
    KOBWBStepType = 28,
    KOBWBSinhType = 29,
    KOBWBCoshType = 30,
    KOBWBTanhType = 31,
    KOBWBAsinhType = 32,
    KOBWBAcoshType = 33,
    KOBWBAtanhType = 34,
    KOBWBAbsType = 35,
    KOBWBCeilType = 36,
    KOBWBFloorType = 37,
    KOBWBRoundType = 38,
    KOBWBTruncType = 39,
    KOBWBModType = 40,
    KOBWBMinType = 41,
    KOBWBMaxType = 42,
    KOBWBIfThenElseType = 43,
    KOBWBBlackBoxType = 44,
    KOBWBOppositeType = 45,
    KOBWBMinusType = 46,
    KOBWBIntegrateType = 47
};

// A short name of the code ("+", "sin", "atan2", ...); "" for codes no node carries.
KOBWBX_API const char* KOBWBGetExpressionTypeName(KOBWBExpressionType type);

#endif
