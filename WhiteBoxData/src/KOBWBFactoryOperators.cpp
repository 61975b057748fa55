#include "KOBWBFactory.h"

#include "KOBWBArithmetic.h"
#include "KOBWBConstant.h"
#include "KOBWBOperatorFamilies.h"
#include "KOBWBOperatorTable.h"
#include "KOBWBVariable.h"

#include <new>
#include <vector>

// Creation of operator nodes: the generic forms check their children, the
// family comes from the operator table, and the named forms delegate.

using kobwb::FamilyOf;
using kobwb::OperatorFamily;

KOBWBExpression* KOBWBFactory::CreateAlgebraicOperator(KOBWBExpressionType type, int n,
                                                       KOBWBExpression** children) {
    if (n < 2 || !children) return nullptr;
    for (int i = 0; i < n; ++i)
        if (!children[i]) return nullptr;
    return AddExpression(new (*this) KOBWBAlgebraicOperator(*this, type, n, children));
}

KOBWBExpression* KOBWBFactory::CreateBinaryOperator(KOBWBExpressionType type, KOBWBExpression* a,
                                                    KOBWBExpression* b) {
    if (!a || !b) return nullptr;
    return AddExpression(new (*this) KOBWBBinaryOperator(*this, type, a, b));
}

KOBWBExpression* KOBWBFactory::CreateUnaryOperator(KOBWBExpressionType type, KOBWBExpression* x) {
    if (!x) return nullptr;
    return AddExpression(new (*this) KOBWBUnaryOperator(*this, type, x));
}

KOBWBExpression* KOBWBFactory::CreateTrigonometricOperator(KOBWBExpressionType type, KOBWBExpression* x) {
    if (!x) return nullptr;
    return AddExpression(new (*this) KOBWBTrigonometricOperator(*this, type, x));
}

KOBWBExpression* KOBWBFactory::CreateBooleanOperator(KOBWBExpressionType type, KOBWBExpression* a,
                                                     KOBWBExpression* b) {
    if (!a || !b) return nullptr;
    return AddExpression(new (*this) KOBWBBooleanOperator(*this, type, a, b));
}

KOBWBExpression* KOBWBFactory::CreateBooleanOperator(KOBWBExpressionType type, KOBWBExpression* x) {
    if (!x) return nullptr;
    return AddExpression(new (*this) KOBWBBooleanOperator(*this, type, x));
}

KOBWBExpression* KOBWBFactory::CreateOperator(KOBWBExpressionType type, KOBWBExpression* x) {
    if (type == KOBWBStepType) return nullptr;
    switch (FamilyOf(type)) {
    case OperatorFamily::Boolean: return type == KOBWBNotType ? CreateBooleanOperator(type, x) : nullptr;
    case OperatorFamily::Unary: return CreateUnaryOperator(type, x);
    case OperatorFamily::Trigonometric: return CreateTrigonometricOperator(type, x);
    default: return nullptr;
    }
}

namespace {

// The real value of a constant node, for the parameters of a step.
bool ConstantReal(KOBWBExpression* node, double& value) {
    if (!node || node->GetType() != KOBWBConstantType) return false;
    value = node->GetExprValue().GetAsDouble();
    return true;
}

} // namespace

KOBWBExpression* KOBWBFactory::CreateOperator(KOBWBExpressionType type, int n, KOBWBExpression** children) {
    if (n <= 0 || !children) return nullptr;
    const OperatorFamily family = FamilyOf(type);
    if (family == OperatorFamily::Algebraic) return CreateAlgebraicOperator(type, n, children);
    if (family == OperatorFamily::IfThenElse)
        return n == 3 ? CreateIfThenElse(children[0], children[1], children[2]) : nullptr;
    if (type == KOBWBStepType) {
        double parameters[4];
        if (n != 5 || !children[0]) return nullptr;
        for (int i = 0; i < 4; ++i)
            if (!ConstantReal(children[i + 1], parameters[i])) return nullptr;
        KOBWBExpression* step = CreateUnaryOperator(type, children[0]);
        for (int i = 0; step && i < 4; ++i) step->SetParameter(i, parameters[i]);
        return step;
    }
    if (family == OperatorFamily::Integrate) {
        if (n != 2 || !children[1] || children[1]->GetType() != KOBWBVariableType) return nullptr;
        return CreateIntegrateOperator(children[0], static_cast<KOBWBVariable*>(children[1]));
    }
    if (n == 1) return CreateOperator(type, children[0]);
    if (n != 2) return nullptr;
    if (family == OperatorFamily::Binary) return CreateBinaryOperator(type, children[0], children[1]);
    if (family == OperatorFamily::Boolean && type != KOBWBNotType)
        return CreateBooleanOperator(type, children[0], children[1]);
    return nullptr;
}

KOBWBExpression* KOBWBFactory::CreateOperator(KOBWBExpressionType type, KOBLVRListPKOBWBExpression& children) {
    std::vector<KOBWBExpression*> array(static_cast<size_t>(children.Size()));
    for (int i = 0; i < children.Size(); ++i) array[static_cast<size_t>(i)] = children[i];
    return CreateOperator(type, children.Size(), array.data());
}

KOBWBExpression* KOBWBFactory::CreateSum(KOBWBExpression* a, KOBWBExpression* b) {
    KOBWBExpression* children[] = {a, b};
    return CreateAlgebraicOperator(KOBWBSumType, 2, children);
}

KOBWBExpression* KOBWBFactory::CreateSum(int n, KOBWBExpression** children) {
    return CreateAlgebraicOperator(KOBWBSumType, n, children);
}

KOBWBExpression* KOBWBFactory::CreateProduct(KOBWBExpression* a, KOBWBExpression* b) {
    KOBWBExpression* children[] = {a, b};
    return CreateAlgebraicOperator(KOBWBProductType, 2, children);
}

KOBWBExpression* KOBWBFactory::CreateProduct(int n, KOBWBExpression** children) {
    return CreateAlgebraicOperator(KOBWBProductType, n, children);
}

KOBWBExpression* KOBWBFactory::CreateMin(KOBWBExpression* a, KOBWBExpression* b) {
    KOBWBExpression* children[] = {a, b};
    return CreateAlgebraicOperator(KOBWBMinType, 2, children);
}

KOBWBExpression* KOBWBFactory::CreateMax(KOBWBExpression* a, KOBWBExpression* b) {
    KOBWBExpression* children[] = {a, b};
    return CreateAlgebraicOperator(KOBWBMaxType, 2, children);
}

KOBWBExpression* KOBWBFactory::NegatedConstant(KOBWBExpression* constant) {
    KOBWBValue value;
    constant->Eval(value);
    return CreateConstant(KOBWBMul(m_environment, value, KOBWBValue(-1)));
}

namespace {

// Whether the opposite of b folds the sign into a constant of its own.
bool FoldsSign(KOBWBExpression* b) {
    const int count = b->GetNbOfChildren();
    KOBWBExpression* first = count > 0 ? b->GetChild(0) : nullptr;
    const bool constantFirst = first && first->GetType() == KOBWBConstantType;
    return b->GetType() == KOBWBConstantType || (b->GetType() == KOBWBProductType && count > 1 && constantFirst) ||
           (b->GetType() == KOBWBQuotientType && constantFirst);
}

} // namespace

KOBWBExpression* KOBWBFactory::CreateOpposite(KOBWBExpression* b) {
    if (!b) return nullptr;
    if (!FoldsSign(b)) return CreateProduct(CreateIntegerConstant(-1), b);
    if (b->GetType() == KOBWBConstantType) return NegatedConstant(b);
    KOBWBExpression* first = NegatedConstant(b->GetChild(0));
    if (b->GetType() == KOBWBQuotientType) return CreateQuotient(first, b->GetChild(1));
    const int count = b->GetNbOfChildren();
    std::vector<KOBWBExpression*> factors(static_cast<size_t>(count));
    factors[0] = first;
    for (int i = 1; i < count; ++i) factors[static_cast<size_t>(i)] = b->GetChild(i);
    return CreateAlgebraicOperator(KOBWBProductType, count, factors.data());
}

KOBWBExpression* KOBWBFactory::CreateSub(KOBWBExpression* a, KOBWBExpression* b) {
    if (!b) return a;
    // The folding forms make nothing without a first term; the plain form makes
    // its -1 and product all the same.
    if (!a && FoldsSign(b)) return nullptr;
    return CreateSum(a, CreateOpposite(b));
}

KOBWBExpression* KOBWBFactory::CreateQuotient(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateBinaryOperator(KOBWBQuotientType, a, b);
}

KOBWBExpression* KOBWBFactory::CreatePower(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateBinaryOperator(KOBWBPowerType, a, b);
}

KOBWBExpression* KOBWBFactory::CreatePower(KOBWBExpression* a, int n) {
    return CreateBinaryOperator(KOBWBPowerType, a, CreateIntegerConstant(n));
}

KOBWBExpression* KOBWBFactory::CreateRoot(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateBinaryOperator(KOBWBRootType, a, b);
}

KOBWBExpression* KOBWBFactory::CreateRoot(KOBWBExpression* a, int n) {
    return CreateBinaryOperator(KOBWBRootType, a, CreateIntegerConstant(n));
}

KOBWBExpression* KOBWBFactory::CreateAtan2(KOBWBExpression* y, KOBWBExpression* x) {
    return CreateBinaryOperator(KOBWBAtan2Type, y, x);
}

KOBWBExpression* KOBWBFactory::CreateDim(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateBinaryOperator(KOBWBDimType, a, b);
}

KOBWBExpression* KOBWBFactory::CreateSign(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateBinaryOperator(KOBWBSignType, a, b);
}

KOBWBExpression* KOBWBFactory::CreateMod(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateBinaryOperator(KOBWBModType, a, b);
}

KOBWBExpression* KOBWBFactory::CreateSqrt(KOBWBExpression* x) { return CreateUnaryOperator(KOBWBSqrtType, x); }
KOBWBExpression* KOBWBFactory::CreateLog(KOBWBExpression* x) { return CreateUnaryOperator(KOBWBLogType, x); }
KOBWBExpression* KOBWBFactory::CreateLn(KOBWBExpression* x) { return CreateUnaryOperator(KOBWBLnType, x); }
KOBWBExpression* KOBWBFactory::CreateExp(KOBWBExpression* x) { return CreateUnaryOperator(KOBWBExpType, x); }
KOBWBExpression* KOBWBFactory::CreateAbs(KOBWBExpression* x) { return CreateUnaryOperator(KOBWBAbsType, x); }
KOBWBExpression* KOBWBFactory::CreateCeil(KOBWBExpression* x) { return CreateUnaryOperator(KOBWBCeilType, x); }
KOBWBExpression* KOBWBFactory::CreateFloor(KOBWBExpression* x) { return CreateUnaryOperator(KOBWBFloorType, x); }
KOBWBExpression* KOBWBFactory::CreateRound(KOBWBExpression* x) { return CreateUnaryOperator(KOBWBRoundType, x); }
KOBWBExpression* KOBWBFactory::CreateTrunc(KOBWBExpression* x) { return CreateUnaryOperator(KOBWBTruncType, x); }

KOBWBExpression* KOBWBFactory::CreateSin(KOBWBExpression* x) { return CreateTrigonometricOperator(KOBWBSinType, x); }
KOBWBExpression* KOBWBFactory::CreateCos(KOBWBExpression* x) { return CreateTrigonometricOperator(KOBWBCosType, x); }
KOBWBExpression* KOBWBFactory::CreateTan(KOBWBExpression* x) { return CreateTrigonometricOperator(KOBWBTanType, x); }
KOBWBExpression* KOBWBFactory::CreateAsin(KOBWBExpression* x) { return CreateTrigonometricOperator(KOBWBAsinType, x); }
KOBWBExpression* KOBWBFactory::CreateAcos(KOBWBExpression* x) { return CreateTrigonometricOperator(KOBWBAcosType, x); }
KOBWBExpression* KOBWBFactory::CreateAtan(KOBWBExpression* x) { return CreateTrigonometricOperator(KOBWBAtanType, x); }
KOBWBExpression* KOBWBFactory::CreateSinh(KOBWBExpression* x) { return CreateTrigonometricOperator(KOBWBSinhType, x); }
KOBWBExpression* KOBWBFactory::CreateCosh(KOBWBExpression* x) { return CreateTrigonometricOperator(KOBWBCoshType, x); }
KOBWBExpression* KOBWBFactory::CreateTanh(KOBWBExpression* x) { return CreateTrigonometricOperator(KOBWBTanhType, x); }
KOBWBExpression* KOBWBFactory::CreateASinh(KOBWBExpression* x) { return CreateTrigonometricOperator(KOBWBAsinhType, x); }
KOBWBExpression* KOBWBFactory::CreateACosh(KOBWBExpression* x) { return CreateTrigonometricOperator(KOBWBAcoshType, x); }
KOBWBExpression* KOBWBFactory::CreateATanh(KOBWBExpression* x) { return CreateTrigonometricOperator(KOBWBAtanhType, x); }

KOBWBExpression* KOBWBFactory::CreateNot(KOBWBExpression* x) { return CreateBooleanOperator(KOBWBNotType, x); }

KOBWBExpression* KOBWBFactory::CreateOr(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateBooleanOperator(KOBWBOrType, a, b);
}

KOBWBExpression* KOBWBFactory::CreateAnd(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateBooleanOperator(KOBWBAndType, a, b);
}

KOBWBExpression* KOBWBFactory::CreateEqual(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateBooleanOperator(KOBWBEqualType, a, b);
}

KOBWBExpression* KOBWBFactory::CreateNotEqual(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateBooleanOperator(KOBWBNotEqualType, a, b);
}

KOBWBExpression* KOBWBFactory::CreateLessEqual(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateBooleanOperator(KOBWBLessEqualType, a, b);
}

KOBWBExpression* KOBWBFactory::CreateImplication(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateBooleanOperator(KOBWBImplicationType, a, b);
}

KOBWBExpression* KOBWBFactory::CreateGreaterEqual(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateLessEqual(b, a);
}

KOBWBExpression* KOBWBFactory::CreateLess(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateNot(CreateLessEqual(b, a));
}

KOBWBExpression* KOBWBFactory::CreateGreater(KOBWBExpression* a, KOBWBExpression* b) {
    return CreateNot(CreateLessEqual(a, b));
}

KOBWBExpression* KOBWBFactory::CreateIfThenElse(KOBWBExpression* condition, KOBWBExpression* thenBranch,
                                                KOBWBExpression* elseBranch) {
    if (!condition || !thenBranch || !elseBranch) return nullptr;
    return AddExpression(new (*this) KOBWBIfThenElseOperator(*this, condition, thenBranch, elseBranch));
}
