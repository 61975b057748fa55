#include "PrinterTestSupport.h"

#include <fstream>
#include <sstream>

namespace {

struct Variables {
    KOBWBFactory& f;
    KOBWBVariable* x;
    KOBWBVariable* y;
    KOBWBVariable* z;
    explicit Variables(KOBWBFactory& factory)
        : f(factory), x(Named("x")), y(Named("y")), z(Named("z")) {}
    KOBWBVariable* Named(const char* name) {
        KOBWBVariable* v = f.CreateVariable();
        v->SetName(name);
        return v;
    }
    KOBWBExpression* I(int n) { return f.CreateIntegerConstant(n); }
    KOBWBExpression* Pi(int n, int d) { return f.CreateConstant(KOBWBValue(KOBWBCreateFraction(n, d, 1, 1))); }
};

std::string Text(const KOBWBExpression* e) { return KOBWBEquationPrinter::ToText(e); }

TEST(KOBWBEquationPrinter, WritesOnlyTheBracketsThePrecedencesNeed) {
    KOBWBFactory factory;
    Variables v(factory);
    KOBWBFactory& f = factory;
    EXPECT_EQ(Text(f.CreateProduct(f.CreateSum(v.x, v.y), v.z)), "(x + y)*z");
    EXPECT_EQ(Text(f.CreateSum(v.x, f.CreateProduct(v.y, v.z))), "x + y*z");
    EXPECT_EQ(Text(f.CreateSub(v.x, f.CreateSub(v.y, v.z))), "x - (y - z)");
    EXPECT_EQ(Text(f.CreateSub(f.CreateSub(v.x, v.y), v.z)), "x - y - z");
    EXPECT_EQ(Text(f.CreateSub(v.x, f.CreateProduct(v.I(2), v.y))), "x - 2*y");
    EXPECT_EQ(Text(f.CreateQuotient(v.x, f.CreateProduct(v.y, v.z))), "x/(y*z)");
    EXPECT_EQ(Text(f.CreateProduct(f.CreateQuotient(v.x, v.y), v.z)), "x/y*z");
    EXPECT_EQ(Text(f.CreatePower(v.x, f.CreatePower(v.y, v.z))), "x^y^z");
    EXPECT_EQ(Text(f.CreatePower(f.CreatePower(v.x, v.y), v.z)), "(x^y)^z");
    EXPECT_EQ(Text(f.CreatePower(v.I(-2), v.x)), "(-2)^x");
    EXPECT_EQ(Text(f.CreatePower(v.x, v.I(-1))), "x^(-1)");
    EXPECT_EQ(Text(f.CreateOpposite(f.CreateSum(v.x, v.y))), "-(x + y)");
    EXPECT_EQ(Text(f.CreateOpposite(f.CreatePower(v.x, 2))), "-x^2");
    EXPECT_EQ(Text(f.CreatePower(f.CreateOpposite(v.x), 2)), "(-x)^2");
    EXPECT_EQ(Text(f.CreateSub(v.x, f.CreateQuotient(v.I(3), v.y))), "x - 3/y");
    EXPECT_EQ(Text(f.CreateAtan2(f.CreateSub(v.y, v.x), v.z)), "atan2(y - x, z)");
    KOBWBExpression* three[] = {v.x, v.y, v.z};
    EXPECT_EQ(Text(f.CreateOperator(KOBWBMaxType, 3, three)), "max(x, y, z)");
    EXPECT_EQ(Text(f.CreateIfThenElse(f.CreateAnd(f.CreateGreater(v.x, v.I(1)), f.CreateNotEqual(v.y, v.I(2))),
                                      v.z, f.CreateSqrt(v.x))),
              "if (x > 1 and y != 2) then (z) else (sqrt(x))");
    EXPECT_EQ(Text(nullptr), "null");
}

TEST(KOBWBEquationPrinter, WritesExactConstantsExactlyAndShowsOtherValues) {
    KOBWBFactory factory;
    Variables v(factory);
    KOBWBFactory& f = factory;
    EXPECT_EQ(Text(v.Pi(1, 4)), "Pi/4");
    EXPECT_EQ(Text(v.Pi(3, 2)), "3*Pi/2");
    EXPECT_EQ(Text(v.Pi(-1, 6)), "-Pi/6");
    EXPECT_EQ(Text(f.CreateConstantPi()), "Pi");
    EXPECT_EQ(Text(f.CreateConstant(KOBWBValue(KOBWBCreateFraction(1, 3, 0, 1)))), "1/3");
    EXPECT_EQ(Text(f.CreateConstant(KOBWBValue(KOBWBCreateFraction(1, 4, 2, 1)))), "Pi^2/4");
    EXPECT_EQ(Text(f.CreateProduct(v.x, v.Pi(1, 4))), "x*(Pi/4)");
    EXPECT_EQ(Text(f.CreateSum(v.x, v.Pi(-1, 4))), "x - Pi/4");
    EXPECT_EQ(Text(f.CreateRealConstant(100.0)), "100.0");
    EXPECT_EQ(Text(f.CreateRealConstant(0.1)), "0.1");
    EXPECT_EQ(Text(f.CreateRealConstant(-2.5e-300)), "-2.5e-300");
    // Whole numbers with all their digits, up to 1e21; past it, with an exponent.
    EXPECT_EQ(Text(f.CreateRealConstant(3e9)), "3000000000.0");
    EXPECT_EQ(Text(f.CreateRealConstant(-12157665459056928801.0)), "-12157665459056928768.0");
    EXPECT_EQ(Text(f.CreateRealConstant(1e21)), "1e+21");
    EXPECT_EQ(Text(f.CreateConstant(KOBWBValue(KOBWBCreateRealInterval(-1, 2.5)))), "[-1.0, 2.5]");
    const int elements[] = {3, 1, 2};
    KOBWBValue enumeration;
    enumeration.Set(KOBWBIntegerEnum(KOBWBEnumList));
    enumeration.Set(3, elements);
    EXPECT_EQ(Text(f.CreateConstant(enumeration)), "{1, 2, 3}");
    EXPECT_EQ(Text(f.CreateConstant(KOBWBValue(KOBWBTrue))), "True");
}

TEST(KOBWBEquationPrinter, WritesEquationsWithTheirRelationAndRightSide) {
    KOBWBFactory factory;
    Variables v(factory);
    KOBWBFactory& f = factory;
    f.AddEquation(f.CreateSum(v.x, f.CreateProduct(v.I(2), v.y)), KOBWBEqEqual, v.I(10));
    f.AddEquation(f.CreateProduct(v.x, v.y), KOBWBEqLessEqual, nullptr);
    f.AddEquation(v.x, KOBWBEqGreater, v.Pi(1, 6));
    f.AddEquation(f.CreateSqrt(v.z), KOBWBEqUndefined);
    EXPECT_EQ(KOBWBEquationPrinter::ToText(f),
              "x + 2*y = 10;\n"
              "x*y <= 0;\n"
              "x > Pi/6;\n"
              "sqrt(z);\n");
    EXPECT_EQ(KOBWBEquationPrinter::ToText(static_cast<const KOBWBEquation*>(nullptr)), "");
}

TEST(KOBWBEquationPrinter, ModelsReadBackIntoTheSameSystem) {
    const char* models[] = {
        "sketch.model",
    };
    for (const char* name : models) {
        std::ifstream file(std::string(KOBWBX_TEST_DATA) + "/" + name);
        std::stringstream text;
        text << file.rdbuf();
        KOBWBFactory factory;
        ASSERT_EQ(FillFromText(text.str(), factory), 0) << name;
        EXPECT_TRUE(RoundTrips(factory)) << name;
    }
    const char* texts[] = {
        "a - b - (c - d) = -3*e/f^g^h;",
        "-x^2 + (-y)^3 >= 2 Pi - 30 deg;",
        "if (x > 1 and y != 2 or z <= 3) then (w = 1) else (w = -x);",
        "min(a, b, c) + max(a, 1) - abs(-a) + atan2(a, b) * mod(a, 3) != sign(a, b);",
        "sqrt(ln(exp(sin(cos(tan(x)))))) + asin(x) + acos(y) < sinh(cosh(tanh(asinh(acosh(atanh(y)))))) + atan(x);",
        "ceil(x) + floor(y) + round(z) + trunc(w) + dim(x, y) = 2.5e-7;",
        "1 / (x * y) - x / y * z + 0.1 = 100.0;",
        "x - y;",
        "if (x == 2) then (x + 1) else (x - 1) = 4 m;",
    };
    for (const char* text : texts) {
        KOBWBFactory factory;
        ASSERT_EQ(FillFromText(text, factory), 0) << text;
        EXPECT_TRUE(RoundTrips(factory)) << text;
    }
}

// Right sides of a negated exact constant read back as sub-expressions (Pi/6 as a
// quotient whose numerator takes the sign), and a product led by a nested product
// reads back as one product; the copy must print as the original did.
TEST(KOBWBEquationPrinter, TextReadBackPrintsTheSameText) {
    const char* texts[] = {
        "alpha = 30 deg;",
        "beta = 2 Pi - 30 deg;",
        "x = 540 deg;",
        "x = -30 deg;",
        "x = -540 deg;",
        "x - 180 deg * y = 0;",
        "x*(-30 deg) + 1 > -180 deg / y;",
        "y - 31 deg;",
        "x - 31 deg - (-Pi^2)*y + 2 Pi deg * z = 0;",
        "z = -540 deg * x - 1*(3*Pi)*-1;",
        "a + -(2*b)*x*3;",
        "z + -540 deg * x + -Pi/3 * y;",
    };
    for (const char* text : texts) {
        KOBWBFactory original;
        ASSERT_EQ(FillFromText(text, original), 0) << text;
        const std::string printed = KOBWBEquationPrinter::ToText(original);
        KOBWBFactory copy;
        ASSERT_EQ(FillFromText(printed, copy), 0) << printed;
        EXPECT_TRUE(RoundTrips(copy)) << printed;
        EXPECT_EQ(KOBWBEquationPrinter::ToText(copy), printed) << text;
    }
}

// The first product met in a walk of the graph, parents first.
const KOBWBExpression* FirstProduct(const KOBWBExpression* root) {
    std::vector<const KOBWBExpression*> pending{root};
    while (!pending.empty()) {
        const KOBWBExpression* node = pending.back();
        pending.pop_back();
        if (node->GetType() == KOBWBProductType) return node;
        for (int i = node->GetNbOfChildren() - 1; i >= 0; --i) pending.push_back(node->GetChild(i));
    }
    return nullptr;
}

// -1 times a node that would take a minus sign into its own leading constant (3*y,
// 3/y, 3, 2*y*x) must not be written as that node after a minus: it would read back
// as -3*y.
TEST(KOBWBEquationPrinter, ProductsOfMinusOneReadBackWithTheirFactor) {
    KOBWBFactory f;
    Variables v(f);
    KOBWBExpression* terms[] = {
        f.CreateProduct(v.I(-1), f.CreateProduct(v.I(3), v.y)),
        f.CreateProduct(v.I(-1), f.CreateQuotient(v.I(3), v.y)),
        f.CreateProduct(v.I(-1), v.I(3)),
        f.CreateProduct(v.I(-1), f.CreateProduct(v.I(3), f.CreateConstantPi())),
        f.CreateProduct(v.I(-1), f.CreateProduct(f.CreateProduct(v.I(2), v.y), v.x)),
    };
    for (KOBWBExpression* term : terms) {
        f.AddEquation(term, KOBWBEqUndefined);
        f.AddEquation(f.CreateSum(v.x, term), KOBWBEqUndefined);
        f.AddEquation(f.CreateSum(v.x, term), KOBWBEqLessEqual);
    }
    const std::string text = KOBWBEquationPrinter::ToText(f);
    KOBWBFactory copy;
    ASSERT_EQ(FillFromText(text, copy), 0) << text;
    KOBWBEquation* b = copy.GetFirstEquation();
    for (KOBWBEquation* a = f.GetFirstEquation(); a; a = a->GetNext(), b = b->GetNext()) {
        const KOBWBExpression* product = FirstProduct(b->GetRoot());
        ASSERT_NE(product, nullptr) << KOBWBEquationPrinter::ToText(b);
        EXPECT_EQ(product->GetNbOfChildren(), FirstProduct(a->GetRoot())->GetNbOfChildren())
            << KOBWBEquationPrinter::ToText(a);
        double first = 0;
        EXPECT_TRUE(IsPointConstant(product->GetChild(0), first) && first == -1) << KOBWBEquationPrinter::ToText(a);
    }
}

TEST(KOBWBEquationPrinter, GeneratedGraphsReadBackIntoTheSameSystem) {
    for (unsigned seed = 1; seed <= 40; ++seed) {
        KOBWBFactory factory;
        RandomGraphs graphs(factory, seed);
        for (int i = 0; i < 5; ++i) {
            KOBWBExpression* left = graphs.Make(5);
            factory.AddEquation(left, graphs.Relation(), graphs.Make(3));
        }
        EXPECT_TRUE(RoundTrips(factory)) << "seed " << seed;
    }
}

TEST(KOBWBEquationPrinter, PrintsDeepGraphsWithoutRecursion) {
    KOBWBFactory f;
    Variables v(f);
    const int depth = 200000;
    KOBWBExpression* sum = v.x;
    KOBWBExpression* power = v.y;
    for (int i = 0; i < depth; ++i) {
        sum = f.CreateSum(sum, v.y);
        power = f.CreatePower(v.x, power);
    }
    const std::string sums = Text(sum);
    EXPECT_EQ(sums.size(), 1 + 4 * static_cast<size_t>(depth));
    EXPECT_EQ(sums.substr(0, 9), "x + y + y");
    const std::string powers = Text(power);
    EXPECT_EQ(powers.size(), 1 + 2 * static_cast<size_t>(depth));
    EXPECT_EQ(powers.substr(powers.size() - 5), "x^x^y");
}

} // namespace
