#include "KOBWBSymbolicTransformations.h"

#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBSymbolicTransformationsImp.h"
#include "KOBWBSymbolicTransformationsImp2.h"

#include "KOBWBTransformationPasses.h"

#include <new>

const char* const KOBWBConstantProperty = "constant";
const char* const KOBWBLinearProperty = "linear";

KOBLVROperator::OperatorInfo* KOBWBSymbolicTransformations::_pInfo = nullptr;

KOBWBSymbolicTransformations::KOBWBSymbolicTransformations(unsigned level, KOBWBFactory& factory)
    : m_factory(factory) {
    SetLVRLevel(level);
}

KOBWBSymbolicTransformations::~KOBWBSymbolicTransformations() = default;

void KOBWBSymbolicTransformations::InitWithEnv() {}

int KOBWBSymbolicTransformations::GetVersionOfStream() const { return 0; }

KOBLVRString KOBWBSymbolicTransformations::GetOperatorName() { return "KOBWBSymbolicTransformations"; }

KOBLVRString KOBWBSymbolicTransformations::GetOperatorShortName() { return "ST"; }

void KOBWBSymbolicTransformations::Remove() { delete this; }

KOBLVROperator::OperatorInfo& KOBWBSymbolicTransformations::GetOperatorInfo() {
    // One description for every instance, made on first use and kept for the process.
    // The initialisation of a local static runs once even when several threads ask at
    // the same time, so the record is created once and published safely.
    static OperatorInfo* const info = _pInfo =
        new OperatorInfo("KOBWBSymbolicTransformations", "ST", "LVRWBReplay");
    return *info;
}

bool KOBWBSymbolicTransformations::CheckInput(std::ostream&) const { return true; }

bool KOBWBSymbolicTransformations::CheckOutput(std::ostream&) const { return true; }

bool KOBWBSymbolicTransformations::SetEquationToSimplify(int) { return false; }

bool KOBWBSymbolicTransformations::AreInequalitiesInconsistent() { return false; }

KOBWBExpression* KOBWBSymbolicTransformations::VariableExpression(int) const { return nullptr; }

bool KOBWBSymbolicTransformations::GetProperty(KOBWBExpression* expression, KOBWBProperty property) const {
    return expression && expression->GetProperty(m_properties[property]) == 1;
}

void KOBWBSymbolicTransformations::SetProperty(KOBWBExpression* expression, KOBWBProperty property, bool value) {
    if (expression) expression->SetProperty(m_properties[property], value ? 1 : 0);
}

void KOBWBSymbolicTransformations::SetProperties(KOBWBExpression* expression) {
    if (!expression) return;
    const bool linearToo = (m_mode & KOBWBMarkLinear) != 0;
    kobwb::PostOrder(expression, [this, linearToo](KOBWBExpression* node) {
        const KOBWBExpressionType type = node->GetType();
        if (type == KOBWBVariableType || type == KOBWBConstantType) {
            SetProperty(node, Constant, type == KOBWBConstantType);
            if (linearToo) SetProperty(node, Linear, true);
            return;
        }
        int count = 0, constants = 0, linears = 0;
        for (int i = 0; i < node->GetNbOfChildren(); ++i) {
            KOBWBExpression* child = node->GetChild(i);
            if (!child) continue;
            ++count;
            constants += GetProperty(child, Constant) ? 1 : 0;
            linears += linearToo && GetProperty(child, Linear) ? 1 : 0;
        }
        SetProperty(node, Constant, constants == count);
        // Linearity is only ever set, never cleared.
        if (linearToo && ((type == KOBWBSumType && linears == count) ||
                          (type == KOBWBProductType && linears == count && count - constants <= 1)))
            SetProperty(node, Linear, true);
    });
}

KOBWBSymbolicTransformations* KOBCreateWBSymbolicTransformations(unsigned level, KOBWBFactory& factory) {
    if (factory.GetEnvironment().IsUseOldSymbolicTransformations())
        return new (std::nothrow) KOBWBSymbolicTransformationsImp2(level, factory);
    return new (std::nothrow) KOBWBSymbolicTransformationsImp(level, factory);
}

void KOBRemove(KOBWBSymbolicTransformations* transformations) {
    if (transformations) transformations->Remove();
}
