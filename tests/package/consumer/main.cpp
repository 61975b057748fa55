#include "KOBWBFactory.h"
#include <KOBWBx/KOBWBx.h>

#include <cstdio>
#include <vector>

// Builds x + 2 y over intervals through the installed package, and factors x^2 - 1
// (the exact algebra's backend linked in as well).
int main() {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    x->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(1.0, 2.0)));
    y->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(0.0, 1.0)));
    KOBWBExpression* root = factory.CreateSum(x, factory.CreateProduct(factory.CreateIntegerConstant(2), y));
    KOBWBEquation* equation = factory.AddEquation(root, KOBWBEqEqual);
    const KOBWBRealInterval value = equation->GetRoot()->GetValue().GetAsRealInterval();
    if (value.lower != 1.0 || value.upper != 4.0) return 1;
    const KOBWBPolynomial square = KOBWBPolynomial::Atom(1, 2) - KOBWBPolynomial(KOBWBCoefficient(1));
    KOBWBRational constant;
    std::vector<KOBWBPolynomialFactor> factors;
    if (!KOBWBMultivariatePolynomialTools::Factor(square, constant, factors) || factors.size() != 2) return 1;
    std::printf("consumer ok\n");
    return 0;
}
