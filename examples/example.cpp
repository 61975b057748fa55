// Builds a small equation system through the factory, gives its variables interval
// domains, and prints what evaluation says about each equation.

#include "KOBWBx.h"

#include <cstdio>

namespace {

void PrintValue(const char* label, const KOBWBValue& value) {
    const KOBWBRealInterval interval = value.GetAsRealInterval();
    std::printf("  %-28s %-13s [%g, %g]\n", label, KOBWBGetValueTypeName(value.GetType()), interval.lower,
                interval.upper);
}

// Whether root (relation) 0 can still hold for some point of the domains.
const char* CanHold(const KOBWBEnvironment& environment, KOBWBEquation& equation) {
    const KOBWBRealInterval root = equation.GetRoot()->GetValue().GetAsRealInterval();
    if (KOBWBIsEmpty(root, environment.GetTolerance())) return "no (empty)";
    bool possible = true;
    switch (equation.GetType()) {
    case KOBWBEqEqual: possible = root.lower <= 0 && root.upper >= 0; break;
    case KOBWBEqLessEqual: possible = root.lower <= 0; break;
    case KOBWBEqLess: possible = root.lower < 0; break;
    case KOBWBEqGreaterEqual: possible = root.upper >= 0; break;
    case KOBWBEqGreater: possible = root.upper > 0; break;
    default: break;
    }
    return possible ? "yes" : "no";
}

} // namespace

int main() {
    KOBWBFactory factory;
    KOBWBEnvironment& environment = factory.GetEnvironment();

    std::printf("Variables and constants\n");
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    x->SetName("x");
    y->SetName("y");
    x->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(-4.0, 1.0)));
    y->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(0.5, 2.0)));
    KOBWBConstant* two = factory.CreateIntegerConstant(2);
    KOBWBConstant* pi = factory.CreateConstantPi();
    PrintValue(x->GetName().str(), x->GetValue());
    PrintValue(y->GetName().str(), y->GetValue());
    PrintValue("constant 2", two->GetValue());
    PrintValue("constant Pi", pi->GetValue());
    std::printf("  looked up by name: %s\n", factory.GetVariable("y") == y ? "y found" : "y missing");

    std::printf("\nx + 2y = 0\n");
    KOBWBEquation* linear = factory.AddEquation(factory.CreateSum(x, factory.CreateProduct(two, y)), KOBWBEqEqual);
    PrintValue("x + 2y", linear->GetRoot()->GetValue());
    std::printf("  can hold: %s\n", CanHold(environment, *linear));

    std::printf("\nDistance between (x1, y1) and (x2, y2) equals d\n");
    KOBWBVariable* x1 = factory.CreateVariable();
    KOBWBVariable* y1 = factory.CreateVariable();
    KOBWBVariable* x2 = factory.CreateVariable();
    KOBWBVariable* y2 = factory.CreateVariable();
    KOBWBVariable* d = factory.CreateVariable();
    x1->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(0.0, 1.0)));
    y1->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(0.0, 1.0)));
    x2->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(3.0, 4.0)));
    y2->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(4.0, 5.0)));
    d->SetExprValue(KOBWBValue(5.0));
    KOBWBExpression* dx = factory.CreateSub(x1, x2);
    KOBWBExpression* dy = factory.CreateSub(y1, y2);
    KOBWBExpression* distance =
        factory.CreateSqrt(factory.CreateSum(factory.CreatePower(dx, 2), factory.CreatePower(dy, 2)));
    KOBWBEquation* constraint = factory.AddEquation(distance, KOBWBEqEqual, d);
    PrintValue("sqrt(dx^2 + dy^2)", distance->GetValue());
    PrintValue("sqrt(dx^2 + dy^2) - d", constraint->GetRoot()->GetValue());
    std::printf("  can hold: %s\n", CanHold(environment, *constraint));

    std::printf("\nAfter moving (x2, y2) to [10, 11] x [10, 11]\n");
    x2->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(10.0, 11.0)));
    y2->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(10.0, 11.0)));
    PrintValue("sqrt(dx^2 + dy^2) - d", constraint->GetRoot()->GetValue());
    std::printf("  can hold: %s\n", CanHold(environment, *constraint));
    std::printf("\nEvaluation error flags: %u\n", environment.GetError());
    return 0;
}
