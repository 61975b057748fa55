#include "ModelTestSupport.h"

#include <cmath>
#include <string>

namespace {

// Parses the text and converts every equation into the factory.
struct Converted {
    ParsedModel parsed;
    KOBWBFactory factory{0};
    KOBLVRIntArray ids;
    KOBLVRListPKOBWBVarNode nodes;
    KOBLVRListPKOBWBVariable variables;
    long made = 0;

    explicit Converted(const char* text, KOBLVRListPKOBWBBlackBox* blackBoxes = nullptr)
        : parsed(text, blackBoxes) {
        ids = parsed.ids;
        made = parsed.model.FillFactory(factory, ids, -1, nodes, variables);
    }

    KOBWBExpression* Root(int i) const { return factory.GetEquationById(ids[i])->GetRoot(); }
    KOBWBVariable* Variable(const char* name) { return factory.GetVariable(name); }
};

// Reads |x| - its value at the root as one real.
double RootValue(KOBWBExpression* root) { return root->GetValue().GetAsDouble(); }

class Doubler : public KOBWBBlackBox {
public:
    Doubler() : KOBWBBlackBox("twice") {}
    void Eval(KOBWBValue& result) override { result = KOBWBValue(Eval()); }
    double Eval() override { return 2 * GetOperator()->GetChild(0)->Eval(); }
};

} // namespace

TEST(KOBWBFillFactory, VariablesEquationsAndUnits) {
    Converted c("x = 10 mm; y = 2 m + x; a = 30 deg; b = -a + 1 turn; c = (2) Pi rad; d = 3 in; x - y <= 0;");
    ASSERT_EQ(c.parsed.errors, 0);
    EXPECT_EQ(c.made, 7);
    EXPECT_EQ(c.factory.GetNbOfEquations(), 7);
    EXPECT_EQ(c.factory.GetNbOfVariables(), 6);
    ASSERT_EQ(c.nodes.Size(), 6);
    EXPECT_EQ(c.variables[0], c.Variable("x"));
    EXPECT_EQ(c.nodes[0]->GetName(), "x");
    EXPECT_EQ(c.factory.GetEquationById(c.ids[6])->GetType(), KOBWBEqLessEqual);

    // a - 30 deg: the negated constant is exactly -Pi/6.
    KOBWBExpression* thirty = c.Root(2)->GetChild(1);
    ASSERT_EQ(thirty->GetType(), KOBWBConstantType);
    const KOBWBFraction sixth = thirty->GetExprValue().GetAsFraction();
    EXPECT_TRUE(thirty->GetExprValue().IsAFraction());
    EXPECT_EQ(sixth.numerator, -1);
    EXPECT_EQ(sixth.denominator, 6);
    EXPECT_EQ(sixth.powerOfPi, 1);

    c.Variable("x")->SetExprValue(KOBWBValue(10.0));
    EXPECT_EQ(RootValue(c.Root(0)), 0.0);
    c.Variable("y")->SetExprValue(KOBWBValue(2010.0));
    EXPECT_EQ(RootValue(c.Root(1)), 0.0);
    c.Variable("a")->SetExprValue(KOBWBValue(std::acos(-1.0) / 6));
    EXPECT_NEAR(RootValue(c.Root(2)), 0.0, 1e-15);
    c.Variable("b")->SetExprValue(KOBWBValue(2 * std::acos(-1.0) - std::acos(-1.0) / 6));
    EXPECT_NEAR(RootValue(c.Root(3)), 0.0, 1e-12);
    c.Variable("d")->SetExprValue(KOBWBValue(76.2));
    EXPECT_NEAR(RootValue(c.Root(5)), 0.0, 1e-12);
    EXPECT_EQ(c.factory.GetEnvironment().GetError(), 0u);
}

TEST(KOBWBFillFactory, OperatorsConditionsAndCalls) {
    Doubler twice;
    KOBLVRListPKOBWBBlackBox boxes;
    boxes.Append(&twice);
    Converted c("y = if (x > 1 and x != 4) then (x^2) else (-x); z = max(x, y, 3) - twice(x); "
                "w = atan2(y, x) / 2; v = 7 - (x - 2);",
                &boxes);
    ASSERT_EQ(c.parsed.errors, 0) << c.parsed.err;
    ASSERT_EQ(c.made, 4);
    KOBWBVariable* x = c.Variable("x");
    KOBWBVariable* y = c.Variable("y");
    KOBWBVariable* z = c.Variable("z");
    x->SetExprValue(KOBWBValue(3.0));
    y->SetExprValue(KOBWBValue(9.0));
    z->SetExprValue(KOBWBValue(3.0));
    EXPECT_EQ(RootValue(c.Root(0)), 0.0);
    EXPECT_EQ(RootValue(c.Root(1)), 0.0);
    x->SetExprValue(KOBWBValue(0.5));
    y->SetExprValue(KOBWBValue(-0.5));
    EXPECT_EQ(RootValue(c.Root(0)), 0.0);
    c.Variable("v")->SetExprValue(KOBWBValue(8.5));
    EXPECT_EQ(RootValue(c.Root(3)), 0.0);
    EXPECT_EQ(c.factory.GetBlackBoxByName("twice"), &twice);
}

TEST(KOBWBFillFactory, AmbiguousUnitsFollowTheEquationAndFailuresGiveMinusOne) {
    Converted c("len = 2'; ang = 30' + 0 deg; f = unknown(len); g = 5 furlong; h = sin(1, 2); k = len;");
    EXPECT_EQ(c.made, 3);
    EXPECT_EQ(c.ids[2], -1);
    EXPECT_EQ(c.ids[3], -1);
    EXPECT_EQ(c.ids[4], -1);
    c.Variable("len")->SetExprValue(KOBWBValue(609.6));
    EXPECT_NEAR(RootValue(c.Root(0)), 0.0, 1e-12);
    c.Variable("ang")->SetExprValue(KOBWBValue(std::acos(-1.0) / 360));
    EXPECT_NEAR(RootValue(c.Root(1)), 0.0, 1e-15);

    KOBLVRIntArray again;
    again.Append(c.parsed.ids[5]);
    again.Append(999);
    EXPECT_EQ(c.parsed.model.FillFactory(c.factory, again, 1, c.nodes, c.variables), 1);
    EXPECT_EQ(again[1], 999);
    EXPECT_EQ(c.factory.GetNbOfVariables(), c.nodes.Size());
    EXPECT_EQ(c.factory.GetEquationById(again[0])->GetRoot()->GetChild(0), c.Variable("k"));
}

TEST(KOBWBFillFactory, LongChainsBecomeOneNode) {
    std::string text = "s = x";
    for (int i = 0; i < 100000; ++i) text += i % 2 ? " + x" : " - 2 * x";
    text += "; p = x * x * x * (x + 1) mm;";
    Converted c(text.c_str());
    ASSERT_EQ(c.made, 2);
    KOBWBExpression* chain = c.Root(0)->GetChild(1)->GetChild(1);
    EXPECT_EQ(chain->GetNbOfChildren(), 100001);
    c.Variable("x")->SetExprValue(KOBWBValue(1.0));
    c.Variable("s")->SetExprValue(KOBWBValue(-49999.0));
    EXPECT_EQ(RootValue(c.Root(0)), 0.0);
    c.Variable("p")->SetExprValue(KOBWBValue(2.0));
    EXPECT_EQ(RootValue(c.Root(1)), 0.0);
    EXPECT_EQ(c.Root(1)->GetChild(1)->GetChild(1)->GetNbOfChildren(), 4);
}
