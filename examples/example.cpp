// Builds a small equation system through the factory, gives its variables interval
// domains, and prints what evaluation says about each equation. Then reads a
// sketch written in the model language (examples/sketch.wbm, or the file named on
// the command line), reports errors and homogeneity, converts it into a factory
// and evaluates every equation over the domains below.

#include "KOBWBx.h"

#include <cstdio>
#include <cstring>
#include <string>

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

// The domain given to a variable of the sketch, in millimetres and radians.
KOBWBRealInterval SketchDomain(const char* name) {
    struct Domain {
        const char* name;
        double lower;
        double upper;
    };
    static const Domain domains[] = {
        {"x1", -1, 1},    {"y1", -1, 1},    {"x2", 78, 82},     {"y2", -1, 1},
        {"x3", 100, 110}, {"y3", 40, 45},   {"width", 79, 81},  {"side", 49, 51},
        {"angle", 1.0, 1.1},
    };
    for (const Domain& domain : domains)
        if (std::strcmp(domain.name, name) == 0) return KOBWBCreateRealInterval(domain.lower, domain.upper);
    return KOBWBCreateRealInterval(-1000, 1000);
}

// The bundled sketch: next to the installed program, or in the source tree.
std::string DefaultModelPath(const char* program) {
    std::string folder = program;
    const size_t slash = folder.rfind('/');
    folder = slash == std::string::npos ? "." : folder.substr(0, slash);
    for (const char* candidate : {"/../share/KOBWBx/examples/sketch.wbm", "/sketch.wbm"}) {
        const std::string path = folder + candidate;
        if (FILE* file = std::fopen(path.c_str(), "r")) {
            std::fclose(file);
            return path;
        }
    }
    return KOBWBX_EXAMPLE_MODEL;
}

int ReadSketch(const std::string& path) {
    std::printf("\nModel %s\n", path.c_str());
    FILE* file = std::fopen(path.c_str(), "r");
    if (!file) {
        std::printf("  cannot open the file\n");
        return 1;
    }
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    const int errors = KOBWBParser::Parse(file, model, ids, messenger, nullptr);
    std::fclose(file);
    std::printf("  %d equations, %d errors\n", model.GetNbOfEquations(), errors);
    for (int i = 0; i < errors; ++i) {
        int code = 0;
        KOBWBLocation location;
        messenger.GetError(i, code, location);
        std::printf("  error %d at %s\n", code, location.Write().str());
    }

    KOBWBFactory factory;
    KOBLVRIntArray converted = ids;
    KOBLVRListPKOBWBVarNode names;
    KOBLVRListPKOBWBVariable variables;
    model.FillFactory(factory, converted, -1, names, variables);
    for (int i = 0; i < variables.Size(); ++i)
        variables[i]->SetExprValue(KOBWBValue(SketchDomain(variables[i]->GetName().str())));

    for (int i = 0; i < ids.Size(); ++i) {
        KOBWBEqNode* node = model.GetEquationById(ids[i]);
        const long homogeneity = KOBWBModelHomogeneity::CheckHomogeneity(*node);
        std::printf("  line %d: %s", node->GetLocation().GetFirstLine(),
                    homogeneity == 0 ? "homogeneous" : "homogeneity not established");
        KOBWBEquation* equation = factory.GetEquationById(converted[i]);
        if (!equation) {
            std::printf(", not converted\n");
            continue;
        }
        const KOBWBRealInterval root = equation->GetRoot()->GetValue().GetAsRealInterval();
        std::printf(", root %s 0 over [%g, %g], can hold: %s\n",
                    KOBWBGetEquationTypeText(equation->GetType()), root.lower, root.upper,
                    CanHold(factory.GetEnvironment(), *equation));
    }
    return errors == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
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

    std::printf("\nShape and algebra\n");
    KOBWBExpression* one = factory.CreateIntegerConstant(1);
    KOBWBExpression* square = factory.CreatePower(factory.CreateSum(x, one), 2);
    std::printf("  (x + 1)^2 is linear: %s, quadratic: %s\n", square->IsLinear() ? "yes" : "no",
                square->IsQuadratic() ? "yes" : "no");
    KOBWBExpression* identity = factory.CreateSub(factory.CreateSub(square, factory.CreatePower(x, 2)),
                                                  factory.CreateSum(factory.CreateProduct(two, x), one));
    KOBWBExpression* zero = KOBWBPolynomialTools::Simplify(identity);
    std::printf("  (x + 1)^2 - x^2 - (2x + 1) simplifies to %s\n",
                zero->GetType() == KOBWBConstantType && zero->GetExprValue().GetAsInteger() == 0 ? "the integer 0"
                                                                                                : "something else");
    int degree = 0;
    KOBWBExpression** coefficients = nullptr;
    if (square->IsPolynomial(x, degree, coefficients)) {
        std::printf("  coefficients of (x + 1)^2 in x:");
        for (int k = 0; k <= degree; ++k) std::printf(" %g", coefficients[k]->GetExprValue().GetAsDouble());
        std::printf("\n");
    }
    delete[] coefficients;
    KOBWBExpression* atThree = distance->PartialEval(x2, factory.CreateIntegerConstant(3));
    PrintValue("distance at x2 = 3", atThree->GetValue());

    return ReadSketch(argc > 1 ? argv[1] : DefaultModelPath(argv[0]));
}
