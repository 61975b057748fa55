#include "KOBWBPolynomialTools.h"

#include "KOBWBExpression.h"
#include "KOBWBPolynomialContext.h"

KOBWBExpression* KOBWBPolynomialTools::Simplify(KOBWBExpression* expression) {
    if (!expression) return nullptr;
    KOBWBPolynomialContext context(expression->GetFactory());
    return context.Simplify(expression);
}
