#include "KOBWBFunctionNames.h"

#include <cstring>

namespace {

// Arity 0 for step: its parameters are not counted.
constexpr KOBWBFunctionName rows[] = {
    {KOBWBSqrtType, "sqrt", 1, 1, true, true},         {KOBWBLogType, "log", 1, 1, true, true},
    {KOBWBLnType, "ln", 1, 1, true, true},             {KOBWBExpType, "exp", 1, 1, true, true},
    {KOBWBSinType, "sin", 1, 1, true, true},           {KOBWBCosType, "cos", 1, 1, true, true},
    {KOBWBTanType, "tan", 1, 1, true, true},           {KOBWBAsinType, "asin", 1, 1, true, true},
    {KOBWBAcosType, "acos", 1, 1, true, true},         {KOBWBAtanType, "atan", 1, 1, true, true},
    {KOBWBAtan2Type, "atan2", 2, 2, true, true},       {KOBWBDimType, "dim", 2, 2, true, true},
    {KOBWBSignType, "sign", 2, 2, true, true},         {KOBWBStepType, "step", 0, 0, true, true},
    {KOBWBSinhType, "sinh", 1, 1, true, true},         {KOBWBCoshType, "cosh", 1, 1, true, true},
    {KOBWBTanhType, "tanh", 1, 1, true, true},         {KOBWBAsinhType, "asinh", 1, 1, true, true},
    {KOBWBAcoshType, "acosh", 1, 1, true, true},       {KOBWBAtanhType, "atanh", 1, 1, true, true},
    {KOBWBAbsType, "abs", 1, 1, true, true},           {KOBWBCeilType, "ceil", 1, 1, true, true},
    {KOBWBFloorType, "floor", 1, 1, true, true},       {KOBWBRoundType, "round", 1, 1, true, true},
    {KOBWBTruncType, "trunc", 1, 1, true, true},       {KOBWBModType, "mod", 2, 2, true, true},
    {KOBWBMinType, "min", 2, -1, true, true},          {KOBWBMaxType, "max", 2, -1, true, true},
    {KOBWBIntegrateType, "Int", 2, 2, true, true},     {KOBWBIntegrateType, "int", 2, 2, true, false},
    {KOBWBImplicationType, "implies", 2, 2, false, true},
};
constexpr int rowCount = static_cast<int>(sizeof rows / sizeof rows[0]);

} // namespace

int KOBWBGetNbOfFunctionNames() { return rowCount; }

const KOBWBFunctionName* KOBWBGetFunctionNameRow(int i) { return i >= 0 && i < rowCount ? &rows[i] : nullptr; }

const KOBWBFunctionName* KOBWBFindWrittenFunction(KOBWBExpressionType type) {
    for (const KOBWBFunctionName& row : rows)
        if (row.type == type && row.written) return &row;
    return nullptr;
}

const KOBWBFunctionName* KOBWBFindReadFunction(const char* name, int length) {
    // Every name is two to five characters long: most identifiers are not looked for.
    if (!name || length < 2 || length > 5) return nullptr;
    for (const KOBWBFunctionName& row : rows)
        if (row.read && row.name[0] == name[0] && std::strlen(row.name) == static_cast<size_t>(length) &&
            std::memcmp(row.name, name, static_cast<size_t>(length)) == 0)
            return &row;
    return nullptr;
}
