#include "KOBWBx.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

// The canonical text of an expression written in the model language over the
// variables x, y and z (made in that order, so x has the lowest index).
std::string Canonical(const std::string& input) {
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    messenger.SetEchoToStandardError(false);
    const std::string text = "x + y + z = 0; " + input + " = 0;";
    if (KOBWBParser::Parse(text.c_str(), model, ids, messenger, nullptr) != 0) return "parse error";
    KOBWBFactory factory;
    KOBLVRListPKOBWBVarNode nodes;
    KOBLVRListPKOBWBVariable variables;
    if (model.FillFactory(factory, ids, -1, nodes, variables) != 2) return "not converted";
    KOBWBExpression* simplified = KOBWBPolynomialTools::Simplify(factory.GetEquationById(ids[1])->GetRoot());
    return simplified ? KOBWBEquationPrinter::ToText(simplified) : "null";
}

struct Case {
    const char* input;
    const char* canonical;
};

void Check(const char* rule, std::initializer_list<Case> cases) {
    for (const Case& c : cases) EXPECT_EQ(Canonical(c.input), c.canonical) << rule << ": " << c.input;
}

} // namespace

// Input text and canonical text, rule by rule, as KOBWBPolynomialContext.h lists
// the rules.
TEST(KOBWBCanonicalForm, RuleByRule) {
    Check("1: like terms collected, zeros dropped",
          {{"x + x", "2*x"}, {"x - x", "0"}, {"x + y - y", "x"}, {"x*0", "0"}, {"2*x*y - y*x*2", "0"},
           {"sin(x + 1) - sin(1 + x)", "0"}, {"0.5*x + 0.5*x - x", "0"}});
    Check("2: one constant per coefficient",
          {{"2*x*3", "6*x"}, {"x/2 + x/3", "5/6*x"}, {"Pi/180*x", "Pi/180*x"}, {"x/3*Pi^2", "Pi^2/3*x"},
           {"x*2^31", "2.0^31*x"}, {"x*2^64", "4.0^32*x"}, {"x*6^36", "6.0^36*x"}, {"x*12^12", "12.0^12*x"},
           {"0.1*x + 0.2*x", "0.30000000000000004*x"}, {"0.375*x", "3/8*x"},
           {"x*Pi/Pi", "x"}});
    Check("3: coefficient first, 1 left out, -1 kept",
          {{"x*y*2", "2*x*y"}, {"1*x", "x"}, {"-1*x", "-x"}, {"y*(-2)", "-2*y"}, {"3", "3"}});
    Check("4: powers of atoms",
          {{"x^1", "x"}, {"x*x", "x^2"}, {"x^2*x^3", "x^5"}, {"sin(x)*sin(x)", "sin(x)^2"}});
    Check("5: atom order",
          {{"y*x", "x*y"}, {"z*y*x", "x*y*z"}, {"sin(y) + sin(x) + x", "x + sin(x) + sin(y)"},
           {"sqrt(y)*sqrt(x)", "sqrt(x)*sqrt(y)"}, {"cos(x)*sin(x)", "sin(x)*cos(x)"}, {"x^y + x", "x + x^y"}});
    Check("6: descending degree, then the atom order, constant last",
          {{"y^2 + x + x*y + x^2 + 1", "x^2 + x*y + y^2 + x + 1"}, {"(x + y)^2", "x^2 + 2*x*y + y^2"},
           {"1 + z + y + x", "x + y + z + 1"}, {"x*y^2 + x^2*y", "x^2*y + x*y^2"}});
    Check("7: quotients by non-constant denominators",
          {{"1/y + x/y", "(x + 1)/y"}, {"x/(2*y) + x/(4*y)", "3/4*x/y"}, {"x/x", "x/x"},
           {"1/(x + 2) + 1/(x+1)", "1/(x + 1) + 1/(x + 2)"}, {"x + 1/x + 2", "x + 2 + 1/x"},
           {"x/(2*x + 4)", "1/2*x/(x + 2)"}, {"x/4", "1/4*x"}});
    Check("8: one n-ary sum", {{"(x + (y + (z + 1)))", "x + y + z + 1"}, {"(x + 1) - 1", "x"}});
}

// Rule 9: variables, constants and atoms whose arguments come back the same are reused.
TEST(KOBWBCanonicalForm, NodesAreReused) {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    KOBWBPolynomialContext context(factory);
    EXPECT_EQ(context.Simplify(factory.CreateProduct(x, factory.CreateIntegerConstant(1))), x);
    KOBWBExpression* sine = factory.CreateSin(y);
    EXPECT_EQ(context.Simplify(sine), sine);
    // sin(y*1) is the atom sin(y) again: it is written as the node already written.
    EXPECT_EQ(context.Simplify(factory.CreateSin(factory.CreateProduct(y, factory.CreateIntegerConstant(1)))), sine);
    KOBWBExpression* once = context.Simplify(factory.CreateSum(factory.CreateProduct(factory.CreateIntegerConstant(3), x),
                                                               factory.CreateProduct(factory.CreateIntegerConstant(3), y)));
    ASSERT_EQ(once->GetType(), KOBWBSumType);
    // Both coefficients 3 are one node, and x and y the variables themselves.
    EXPECT_EQ(once->GetChild(0)->GetChild(0), once->GetChild(1)->GetChild(0));
    EXPECT_EQ(once->GetChild(0)->GetChild(1), x);
    EXPECT_EQ(once->GetChild(1)->GetChild(1), y);
}

namespace {

class Named : public KOBWBBlackBox {
public:
    explicit Named(const char* name) : KOBWBBlackBox(name) {}
    void Eval(KOBWBValue& result) override { result = KOBWBValue(0.0); }
    double Eval() override { return 0.0; }
};

// The call box(x), declared in the factory.
KOBWBExpression* Call(KOBWBFactory& factory, Named& box, KOBWBExpression* x) {
    KOBWBExpression* arguments[] = {x};
    return factory.DeclareBlackBox(&box, 1, arguments, 0);
}

} // namespace

// The canonical text is one function of the expression: black boxes by name,
// interval constants by value, long atoms by a digest, whatever was read before.
TEST(KOBWBCanonicalForm, SameTextWhateverWasReadBefore) {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    Named g("g"), f("f");
    // g is declared first, f sorts first by its name.
    KOBWBExpression* gx = Call(factory, g, x);
    KOBWBExpression* fx = Call(factory, f, x);
    KOBWBExpression* wide = factory.CreateConstant(KOBWBValue(KOBWBCreateRealInterval(3, 4)));
    KOBWBExpression* narrow = factory.CreateConstant(KOBWBValue(KOBWBCreateRealInterval(1, 2)));
    // An atom whose key is too long to be spelled out: sin of a sum of 300 powers.
    std::vector<KOBWBExpression*> powers;
    for (int k = 1; k <= 300; ++k) powers.push_back(factory.CreatePower(x, k));
    KOBWBExpression* longSine = factory.CreateSin(factory.CreateSum(static_cast<int>(powers.size()), powers.data()));
    KOBWBExpression* shortSine = factory.CreateSin(x);
    KOBWBExpression* terms[] = {factory.CreateProduct(wide, x), factory.CreateProduct(narrow, x), gx, fx, longSine, shortSine};
    KOBWBExpression* expression = factory.CreateSum(6, terms);
    std::vector<KOBWBExpression*> readFirst = {wide, narrow, gx, fx, longSine, shortSine};

    std::string expected;
    for (int order = 0; order < 4; ++order) {
        KOBWBPolynomialContext context(factory);
        // Each order reads the atoms alone first, in a different order.
        for (size_t i = 0; i < readFirst.size(); ++i) context.Simplify(readFirst[(i * (order + 1) + order) % readFirst.size()]);
        const std::string text = KOBWBEquationPrinter::ToText(context.Simplify(expression));
        if (order == 0) expected = text;
        EXPECT_EQ(text, expected) << "order " << order;
        std::reverse(readFirst.begin(), readFirst.end());
    }
    // Variables, then interval constants by value, then operators (black boxes by name).
    const size_t narrowAt = expected.find("[1"), wideAt = expected.find("[3"), fAt = expected.find("f(va0)"),
                 gAt = expected.find("g(va0)"), sinAt = expected.find("sin(va0)");
    ASSERT_NE(sinAt, std::string::npos) << expected;
    EXPECT_LT(narrowAt, wideAt) << expected;
    EXPECT_LT(wideAt, fAt) << expected;
    EXPECT_LT(fAt, gAt) << expected;
    EXPECT_LT(gAt, expected.find("sin(va0^300")) << expected;
}

// Operators told apart by their parameters or their black box, not by their
// arguments, are found again when read anew, and kept apart from each other.
TEST(KOBWBCanonicalForm, ParametersAndBlackBoxesFindTheirAtomsAgain) {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    Named g("g"), h("h");
    KOBWBExpression* gx = Call(factory, g, x);
    KOBWBExpression* hx = Call(factory, h, x);
    const auto step = [&](double last) {
        KOBWBExpression* node = factory.CreateUnaryOperator(KOBWBStepType, x);
        for (int i = 0; i < 4; ++i) node->SetParameter(i, i == 3 ? last : i * 0.5);
        return node;
    };
    KOBWBExpression *step1 = step(2.0), *step2 = step(2.0), *step3 = step(3.0);
    ASSERT_GT(step1->GetNbOfParameters(), 0);

    KOBWBPolynomialContext context(factory);
    // Each reading starts afresh: the operators are interned again.
    const auto read = [&context](KOBWBExpression* expression) {
        KOBWBPolynomial polynomial;
        EXPECT_TRUE(context.ToPolynomial(expression, polynomial));
        return polynomial;
    };
    const KOBWBPolynomial g1 = read(gx), s1 = read(step1);
    const int atoms = context.GetNbOfAtoms();
    EXPECT_EQ(read(gx), g1);
    EXPECT_EQ(read(step2), s1);
    EXPECT_EQ(context.GetNbOfAtoms(), atoms);
    EXPECT_NE(read(hx), g1);
    EXPECT_NE(read(step3), s1);
    EXPECT_EQ(context.GetNbOfAtoms(), atoms + 2);
}
