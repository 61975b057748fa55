#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBPolynomialContext.h"
#include "KOBWBVariable.h"

#include <new>

// The members of KOBWBExpression that need the algebra of the polynomial tools:
// coefficient extraction and partial evaluation.

unsigned char KOBWBExpression::IsPolynomial(KOBWBVariable* x, int& degree, KOBWBExpression**& coefficients) const {
    delete[] coefficients;
    coefficients = nullptr;
    KOBWBFactory& factory = GetFactory();
    KOBWBPolynomialContext context(factory, factory.CreateIntegerConstant(0), factory.CreateIntegerConstant(1));
    KOBLVRListPKOBWBExpression extracted;
    if (!context.ExtractCoefficients(const_cast<KOBWBExpression*>(this), x, extracted) || extracted.Size() == 0)
        return 0;
    KOBWBExpression** array = new (std::nothrow) KOBWBExpression*[static_cast<size_t>(extracted.Size())];
    if (!array) return 0;
    for (int i = 0; i < extracted.Size(); ++i) array[i] = extracted[i];
    degree = extracted.Size() - 1;
    coefficients = array;
    return 1;
}

namespace {

// The duplicate of expr that a partial evaluation works on, owned by a new
// equation "= 0" that stays in the factory.
KOBWBExpression* WorkingCopy(KOBWBExpression* expr) {
    KOBWBEquation* equation = expr->GetFactory().AddEquation(expr, KOBWBEqEqual);
    if (!equation) return nullptr;
    equation->DuplicateRoot();
    return equation->GetRoot();
}

bool OfFactory(const KOBWBFactory& factory, const KOBWBExpression* node) {
    return node && &node->GetFactory() == &factory;
}

} // namespace

KOBWBExpression* KOBWBExpression::PartialEval(KOBWBVariable* x, KOBWBExpression* value) {
    KOBWBFactory& factory = GetFactory();
    if (!OfFactory(factory, x) || !OfFactory(factory, value)) return nullptr;
    KOBWBExpression* root = WorkingCopy(this);
    if (!root) return nullptr;
    KOBWBPolynomialContext context(factory, factory.CreateIntegerConstant(0), factory.CreateIntegerConstant(1));
    return context.Substitute(root, x, value);
}

KOBWBExpression* KOBWBExpression::PartialEval(KOBWBVariable** variables, KOBWBExpression** values, int count) {
    KOBWBFactory& factory = GetFactory();
    if (count > 0 && (!variables || !values)) return nullptr;
    KOBWBExpression* root = WorkingCopy(this);
    if (!root) return nullptr;
    KOBWBPolynomialContext context(factory, factory.CreateIntegerConstant(0), factory.CreateIntegerConstant(1));
    for (int i = 0; i < count; ++i) {
        KOBWBVariable* x = variables[i];
        KOBWBExpression* value = values[i];
        if (!OfFactory(factory, x) || !OfFactory(factory, value) || !value->IsConstant()) return nullptr;
        if (root == x) return value;
        context.Substitute(root, x, value);
    }
    return context.Simplify(root);
}
