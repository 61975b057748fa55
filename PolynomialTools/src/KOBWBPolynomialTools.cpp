#include "KOBWBPolynomialTools.h"

#include "KOBWBExpression.h"
#include "KOBWBPolynomialContext.h"

KOBWBExpression* KOBWBPolynomialTools::Simplify(KOBWBExpression* expression) {
    bool expanded = true;
    return Simplify(expression, expanded);
}

KOBWBExpression* KOBWBPolynomialTools::Simplify(KOBWBExpression* expression, bool& expanded) {
    expanded = true;
    if (!expression) return nullptr;
    KOBWBPolynomialContext context(expression->GetFactory());
    KOBWBExpression* simplified = context.Simplify(expression);
    expanded = !context.ExceededBudget();
    return simplified;
}
