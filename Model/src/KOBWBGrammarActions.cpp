#include "KOBWBGrammarActions.h"

#include "KOBLVRIntArray.h"
#include "KOBWBBlackBox.h"
#include "KOBWBComparisonType.h"
#include "KOBWBConstNode.h"
#include "KOBWBEqNode.h"
#include "KOBWBModel.h"
#include "KOBWBOpNode.h"
#include "KOBWBParserMessenger.h"
#include "KOBWBVarNode.h"

#include <memory>

namespace {

KOBWBValue PiValue() {
    return KOBWBValue(KOBWBCreateFraction(1, 1, 1, 1));
}

KOBWBNode* MakeConstant(KOBWBModel& model, const KOBWBLocation& location, const KOBWBValue& value,
                        const KOBWBLocation* unitLocation, const char* unitText) {
    if (unitLocation && unitText)
        return model.CreateConstant(location, value, *unitLocation, unitText);
    return model.CreateConstant(location, value);
}

} // namespace

KOBWBLocation KOBWBSpan(const KOBWBLocation& first, const KOBWBLocation& last) {
    return KOBWBLocation(first.GetFirstLine(), first.GetFirstColumn(), last.GetLastLine(),
                         last.GetLastColumn());
}

void KOBWBReportSyntaxError(KOBWBParserMessenger& messenger, const KOBWBLocation* location,
                            const char* message) {
    messenger.ReportError(location, message);
}

void KOBWBAddEquation(KOBWBModel& model, KOBLVRIntArray& ids, const KOBWBLocation& location,
                      KOBWBNode* left, int type, KOBWBNode* right) {
    if (!left || !right) return;
    if (KOBWBEqNode* equation =
            model.AddEquation(location, left, static_cast<KOBWBEquationType>(type), right))
        ids.Append(equation->GetId());
}

void KOBWBAddTermEquation(KOBWBModel& model, KOBLVRIntArray& ids, KOBWBNode* term) {
    if (KOBWBEqNode* equation = model.AddEquation(term)) ids.Append(equation->GetId());
}

void KOBWBAddConditionalEquation(KOBWBModel& model, KOBLVRIntArray& ids,
                                 const KOBWBLocation& location, KOBWBNode* conditions,
                                 const KOBWBLocation& thenLocation, KOBWBNode* thenLeft,
                                 int thenType, KOBWBNode* thenRight,
                                 const KOBWBLocation& elseLocation, KOBWBNode* elseLeft,
                                 int elseType, KOBWBNode* elseRight) {
    KOBWBNode* thenBranch = KOBWBMakeComparison(model, thenLocation, thenType, thenLeft, thenRight);
    KOBWBNode* elseBranch = KOBWBMakeComparison(model, elseLocation, elseType, elseLeft, elseRight);
    KOBWBNode* choice = KOBWBMakeIfThenElse(model, location, conditions, thenBranch, elseBranch);
    if (!choice) return;
    if (KOBWBEqNode* equation = model.AddEquation(location, choice, KOBWBEqUndefined, nullptr))
        ids.Append(equation->GetId());
}

KOBWBNode* KOBWBMakeNumber(KOBWBModel& model, const KOBWBLocation& location, int number,
                           const KOBWBLocation* unitLocation, const char* unitText) {
    return MakeConstant(model, location, KOBWBValue(number), unitLocation, unitText);
}

KOBWBNode* KOBWBMakeNumber(KOBWBModel& model, const KOBWBLocation& location, double number,
                           const KOBWBLocation* unitLocation, const char* unitText) {
    return MakeConstant(model, location, KOBWBValue(number), unitLocation, unitText);
}

KOBWBNode* KOBWBMakePi(KOBWBModel& model, const KOBWBLocation& location,
                       const KOBWBLocation* unitLocation, const char* unitText) {
    return MakeConstant(model, location, PiValue(), unitLocation, unitText);
}

KOBWBNode* KOBWBMakeTimesPi(KOBWBModel& model, const KOBWBLocation& location, KOBWBNode* factor,
                            const KOBWBLocation* unitLocation, const char* unitText) {
    KOBWBNode* pi = KOBWBMakePi(model, location, unitLocation, unitText);
    return KOBWBMakeBinary(model, location, KOBWBProductType, factor, pi);
}

KOBWBNode* KOBWBSetUnit(KOBWBNode* node, const KOBWBLocation& unitLocation, const char* unitText) {
    if (node && unitText) node->SetUnitData(unitLocation, unitText);
    return node;
}

KOBWBNode* KOBWBMakeVariable(KOBWBModel& model, const KOBWBLocation& location, const char* name) {
    if (!name) return nullptr;
    if (KOBWBVarNode* existing = model.GetVariable(name, location)) return existing;
    return model.CreateVariable(location, name);
}

KOBWBNode* KOBWBMakeUnary(KOBWBModel& model, const KOBWBLocation& location,
                          KOBWBExpressionType type, KOBWBNode* child) {
    if (!child) return nullptr;
    return model.CreateOperator(location, type, KOBWBNoComparison, 1, &child);
}

KOBWBNode* KOBWBMakeBinary(KOBWBModel& model, const KOBWBLocation& location,
                           KOBWBExpressionType type, KOBWBNode* left, KOBWBNode* right) {
    if (!left || !right) return nullptr;
    KOBWBNode* const children[2] = {left, right};
    return model.CreateOperator(location, type, KOBWBNoComparison, 2, children);
}

KOBWBNode* KOBWBMakeIfThenElse(KOBWBModel& model, const KOBWBLocation& location,
                               KOBWBNode* conditions, KOBWBNode* thenNode, KOBWBNode* elseNode) {
    if (!conditions || !thenNode || !elseNode) return nullptr;
    KOBWBNode* const children[3] = {conditions, thenNode, elseNode};
    return model.CreateOperator(location, KOBWBIfThenElseType, KOBWBNoComparison, 3, children);
}

KOBWBNode* KOBWBMakeComparison(KOBWBModel& model, const KOBWBLocation& location, int relation,
                               KOBWBNode* left, KOBWBNode* right) {
    if (!left || !right) return nullptr;
    KOBWBNode* const children[2] = {left, right};
    if (relation == KOBWBEqEqual)
        return model.CreateOperator(location, KOBWBEqualType, KOBWBNoComparison, 2, children);
    return model.CreateOperator(location, KOBWBLessEqualType,
                                static_cast<KOBWBComparisonType>(relation), 2, children);
}

KOBWBNode* KOBWBMakeFunction(KOBWBModel& model, const KOBWBLocation& location,
                             KOBWBExpressionType type, KOBLVRListPKOBWBNode* arguments) {
    const std::unique_ptr<KOBLVRListPKOBWBNode> owned(arguments);
    if (!arguments) return nullptr;
    return model.CreateOperator(location, type, *arguments);
}

KOBWBNode* KOBWBMakeCall(KOBWBModel& model, const KOBWBLocation& location, const char* name,
                         KOBLVRListPKOBWBNode* arguments, KOBLVRListPKOBWBBlackBox* blackBoxes) {
    const std::unique_ptr<KOBLVRListPKOBWBNode> owned(arguments);
    if (!name) return nullptr;
    const KOBLVRListPKOBWBNode none;
    const KOBLVRListPKOBWBNode& actual = arguments ? *arguments : none;
    const KOBLVRString calledName(name);
    for (int i = 0; blackBoxes && i < blackBoxes->Size(); ++i) {
        KOBWBBlackBox* blackBox = (*blackBoxes)[i];
        if (blackBox && blackBox->GetName() == calledName)
            return model.DeclareBlackBox(location, blackBox, actual);
    }
    return model.GetBBxOp(location, calledName, actual);
}

KOBLVRListPKOBWBNode* KOBWBNoArguments() {
    return new KOBLVRListPKOBWBNode;
}

KOBLVRListPKOBWBNode* KOBWBFirstArgument(KOBWBNode* first) {
    KOBLVRListPKOBWBNode* arguments = new KOBLVRListPKOBWBNode;
    arguments->Append(first);
    return arguments;
}

KOBLVRListPKOBWBNode* KOBWBAppendArgument(KOBLVRListPKOBWBNode* arguments, KOBWBNode* next) {
    if (arguments) arguments->Append(next);
    return arguments;
}
