#include "KOBWBModelFunctions.h"

namespace {

struct Function {
    KOBWBExpressionType type;
    const char* name;
    int minimum;
    int maximum;
};

// Arity 0 for step: its parameters are not counted.
const Function functions[] = {
    {KOBWBSqrtType, "sqrt", 1, 1},     {KOBWBLogType, "log", 1, 1},
    {KOBWBLnType, "ln", 1, 1},         {KOBWBExpType, "exp", 1, 1},
    {KOBWBSinType, "sin", 1, 1},       {KOBWBCosType, "cos", 1, 1},
    {KOBWBTanType, "tan", 1, 1},       {KOBWBAsinType, "asin", 1, 1},
    {KOBWBAcosType, "acos", 1, 1},     {KOBWBAtanType, "atan", 1, 1},
    {KOBWBAtan2Type, "atan2", 2, 2},   {KOBWBDimType, "dim", 2, 2},
    {KOBWBSignType, "sign", 2, 2},     {KOBWBStepType, "step", 0, 0},
    {KOBWBSinhType, "sinh", 1, 1},     {KOBWBCoshType, "cosh", 1, 1},
    {KOBWBTanhType, "tanh", 1, 1},     {KOBWBAsinhType, "asinh", 1, 1},
    {KOBWBAcoshType, "acosh", 1, 1},   {KOBWBAtanhType, "atanh", 1, 1},
    {KOBWBAbsType, "abs", 1, 1},       {KOBWBCeilType, "ceil", 1, 1},
    {KOBWBFloorType, "floor", 1, 1},   {KOBWBRoundType, "round", 1, 1},
    {KOBWBTruncType, "trunc", 1, 1},   {KOBWBModType, "mod", 2, 2},
    {KOBWBMinType, "min", 2, -1},      {KOBWBMaxType, "max", 2, -1},
    {KOBWBIntegrateType, "Int", 2, 2},
};

const Function* Find(KOBWBExpressionType type) {
    // The codes of the table run from sqrt to max, then Int: the operators,
    // which most nodes are, are not looked for.
    if ((type < KOBWBSqrtType || type > KOBWBMaxType) && type != KOBWBIntegrateType)
        return nullptr;
    for (const Function& function : functions)
        if (function.type == type) return &function;
    return nullptr;
}

} // namespace

const char* KOBWBFunctionName(KOBWBExpressionType type) {
    const Function* function = Find(type);
    return function ? function->name : nullptr;
}

bool KOBWBFunctionArity(KOBWBExpressionType type, int& minimum, int& maximum) {
    const Function* function = Find(type);
    if (!function || function->minimum == 0) return false;
    minimum = function->minimum;
    maximum = function->maximum;
    return true;
}
