#include "KOBWBBlackBox.h"
#include "KOBWBBlackBoxOperator.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBLimits.h"
#include "KOBWBVariable.h"

#include "KOBWBArithmetic.h"
#include "KOBWBExponentials.h"
#include "KOBWBPowers.h"
#include "KOBWBTrigonometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <vector>

namespace {

// Doubles its first argument and counts how often it is evaluated.
class CountingDouble : public KOBWBBlackBox {
public:
    int calls = 0;
    void Eval(KOBWBValue& result) override {
        ++calls;
        const KOBWBRealInterval x = GetOperator()->GetChild(0)->GetValue().GetAsRealInterval();
        result = KOBWBValue(KOBWBRealInterval{2 * x.lower, 2 * x.upper});
    }
    double Eval() override {
        ++calls;
        return 2 * GetOperator()->GetChild(0)->Eval();
    }
};

KOBWBRealInterval Interval(KOBWBExpression* node) { return node->GetValue().GetAsRealInterval(); }

} // namespace

TEST(KOBWBEvaluation, SharedNodesAreComputedOncePerPass) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    x->SetExprValue(KOBWBValue(KOBWBRealInterval{1, 2}));
    CountingDouble counter;
    KOBWBExpression* argument[] = {x};
    KOBWBExpression* doubled = factory.DeclareBlackBox(&counter, 1, argument, 0);
    KOBWBExpression* root = factory.CreateProduct(factory.CreateSum(doubled, doubled), doubled);

    const KOBWBRealInterval value = Interval(root);
    EXPECT_EQ(value.lower, 8);
    EXPECT_EQ(value.upper, 32);
    EXPECT_EQ(counter.calls, 1);
    Interval(root);
    EXPECT_EQ(counter.calls, 1);

    x->Fix(0);
    Interval(root);
    EXPECT_EQ(counter.calls, 1);
    x->Fix(1);
    Interval(root);
    EXPECT_EQ(counter.calls, 2);
    x->Fix(1);
    Interval(root);
    EXPECT_EQ(counter.calls, 2);

    x->SetExprValue(KOBWBValue(3.0));
    EXPECT_EQ(Interval(root).lower, 72);
    EXPECT_EQ(counter.calls, 3);

    factory.ResetBuffer(root);
    EXPECT_FALSE(doubled->IsBufferValid());
    EXPECT_EQ(root->Eval(), 72);
    EXPECT_EQ(counter.calls, 4);

    KOBWBConstant* c = factory.CreateRealConstant(1.0);
    KOBWBExpression* other = factory.CreateSum(c, x);
    EXPECT_EQ(other->Eval(), 4.0);
    c->SetValue(KOBWBValue(2.0), other);
    EXPECT_TRUE(doubled->IsBufferValid());
    EXPECT_EQ(other->Eval(), 5.0);
    EXPECT_EQ(counter.GetName(), "BBx0");
}

TEST(KOBWBEvaluation, LinearAndDistanceConstraintsOverIntervals) {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    x->SetExprValue(KOBWBValue(KOBWBRealInterval{-1, 1}));
    y->SetExprValue(KOBWBValue(KOBWBRealInterval{0, 2}));
    KOBWBEquation* linear =
        factory.AddEquation(factory.CreateSum(x, factory.CreateProduct(factory.CreateRealConstant(2), y)), KOBWBEqEqual);
    KOBWBValue value;
    linear->GetRoot()->Eval(value);
    EXPECT_EQ(value.GetType(), KOBWBRealIntervalValue);
    EXPECT_EQ(value.GetAsRealInterval().lower, -1);
    EXPECT_EQ(value.GetAsRealInterval().upper, 5);

    KOBWBVariable* x2 = factory.CreateVariable();
    KOBWBVariable* y2 = factory.CreateVariable();
    KOBWBVariable* d = factory.CreateVariable();
    x2->SetExprValue(KOBWBValue(3.0));
    y2->SetExprValue(KOBWBValue(4.0));
    d->SetExprValue(KOBWBValue(KOBWBRealInterval{4, 6}));
    x->SetExprValue(KOBWBValue(0.0));
    y->SetExprValue(KOBWBValue(0.0));
    KOBWBExpression* distance = factory.CreateSqrt(factory.CreateSum(
        factory.CreatePower(factory.CreateSub(x, x2), 2), factory.CreatePower(factory.CreateSub(y, y2), 2)));
    KOBWBEquation* constraint = factory.AddEquation(distance, KOBWBEqEqual, d);
    const KOBWBRealInterval residual = constraint->GetRoot()->GetValue().GetAsRealInterval();
    EXPECT_NEAR(residual.lower, -1, 1e-12);
    EXPECT_NEAR(residual.upper, 1, 1e-12);
    EXPECT_EQ(factory.GetEnvironment().GetError(), 0u);
}

TEST(KOBWBEvaluation, ConditionsAndBooleans) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    x->SetExprValue(KOBWBValue(KOBWBRealInterval{0, 1}));
    KOBWBExpression* one = factory.CreateRealConstant(1.0);
    KOBWBExpression* two = factory.CreateRealConstant(2.0);
    KOBWBExpression* choose = factory.CreateIfThenElse(factory.CreateLessEqual(x, two), one, two);
    EXPECT_EQ(choose->Eval(), 1.0);
    KOBWBExpression* undecided = factory.CreateIfThenElse(factory.CreateLessEqual(x, factory.CreateRealConstant(0.5)), one, two);
    KOBWBValue value;
    undecided->Eval(value);
    EXPECT_TRUE(value.IsIndefinite());
    KOBWBExpression* notBoolean = factory.CreateIfThenElse(x, one, two);
    KOBWBConstant* seed = factory.CreateRealConstant(5.0);
    notBoolean->Eval(value);
    EXPECT_TRUE(value.IsIndefinite());
    EXPECT_EQ(seed->Eval(), 5.0);

    EXPECT_EQ(factory.CreateGreater(x, two)->GetValue().GetAsBoolean(), KOBWBFalse);
    EXPECT_EQ(factory.CreateLess(x, two)->GetValue().GetAsBoolean(), KOBWBTrue);
    EXPECT_EQ(factory.CreateAnd(factory.CreateLess(x, two), factory.CreateEqual(one, one))->GetValue().GetAsBoolean(),
              KOBWBTrue);
    EXPECT_EQ(factory.CreateNotEqual(one, two)->GetValue().GetAsBoolean(), KOBWBTrue);
}

// Nodes keep interval results in their buffers without building values, and equation
// roots compute through plans that keep them beside the nodes; whatever the kinds of
// the operands, a node must give what its value function gives, kind, bounds and
// error bits alike, also when its buffer held another kind before.
TEST(KOBWBEvaluation, NodesGiveWhatTheValueFunctionsGive) {
    KOBWBFactory factory;
    KOBWBEnvironment& environment = factory.GetEnvironment();
    KOBWBVariable* a = factory.CreateVariable();
    KOBWBVariable* b = factory.CreateVariable();
    KOBWBVariable* c = factory.CreateVariable();
    using Function = std::function<KOBWBValue(const KOBWBValue&, const KOBWBValue&, const KOBWBValue&)>;
    struct Case {
        const char* name;
        KOBWBExpression* node;
        Function function;
    };
    const std::vector<Case> cases = {
        {"sum", factory.CreateSum(a, b), [&](auto& x, auto& y, auto&) { return KOBWBSum(environment, x, y); }},
        {"product of three", factory.CreateProduct(3, std::vector<KOBWBExpression*>{a, b, c}.data()),
         [&](auto& x, auto& y, auto& z) { return KOBWBMul(environment, KOBWBMul(environment, x, y), z); }},
        {"quotient", factory.CreateQuotient(a, b), [&](auto& x, auto& y, auto&) { return KOBWBDiv(environment, x, y); }},
        {"power", factory.CreatePower(a, b), [&](auto& x, auto& y, auto&) { return KOBWBPow(environment, x, y); }},
        {"atan2", factory.CreateAtan2(a, b),
         [&](auto& x, auto& y, auto&) { return KOBWBAtan2(environment, x, y, nullptr); }},
        {"sqrt", factory.CreateSqrt(a), [&](auto& x, auto&, auto&) { return KOBWBSqrt(environment, x); }},
        {"sin", factory.CreateSin(a), [&](auto& x, auto&, auto&) { return KOBWBSin(environment, x); }},
    };
    const std::vector<KOBWBValue> operands = {
        KOBWBValue(KOBWBRealInterval{-2, 3}),  KOBWBValue(KOBWBRealInterval{0.5, 4}),
        KOBWBValue(KOBWBRealInterval{3, 1}),   KOBWBValue(2),
        KOBWBValue(-1),                        KOBWBValue(-0.5),
        KOBWBValue(KOBWBSingleReal_Any),       KOBWBValue(KOBWBSingleInteger_Nil),
        KOBWBValue(KOBWBIntegerInterval{1, 3}), KOBWBValue(KOBWBCreateFraction(1, 3, 0, 0)),
    };
    for (const bool roots : {false, true}) {
      if (roots)
          for (const Case& test : cases) factory.AddEquation(test.node, KOBWBEqEqual);
      for (const KOBWBValue& x : operands) {
        for (const KOBWBValue& y : operands) {
            const KOBWBValue& z = operands[0];
            a->SetExprValue(x);
            b->SetExprValue(y);
            c->SetExprValue(z);
            for (const Case& test : cases) {
                environment.ClearError();
                const KOBWBValue expected = test.function(x, y, z);
                const unsigned expectedError = environment.GetError();
                environment.ClearError();
                factory.ResetBuffer(nullptr);
                const KOBWBValue& actual = test.node->GetValue();
                SCOPED_TRACE(testing::Message() << test.name << " of kinds " << x.GetType() << ", " << y.GetType());
                EXPECT_EQ(actual.GetType(), expected.GetType());
                EXPECT_EQ(actual.IsAFraction(), expected.IsAFraction());
                EXPECT_EQ(environment.GetError(), expectedError);
                const KOBWBRealInterval got = actual.GetAsRealInterval();
                const KOBWBRealInterval want = expected.GetAsRealInterval();
                EXPECT_EQ(got.lower, want.lower);
                EXPECT_EQ(got.upper, want.upper);
            }
        }
      }
    }
}

TEST(KOBWBEvaluation, DeepChainsDoNotExhaustTheStack) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    x->SetExprValue(KOBWBValue(1.0));
    KOBWBExpression* chain = x;
    constexpr int depth = 200000;
    for (int i = 0; i < depth; ++i) chain = factory.CreateSum(chain, i % 2 ? x : factory.CreateRealConstant(1.0));
    EXPECT_EQ(chain->Eval(), depth + 1.0);
    EXPECT_FALSE(chain->IsConstant());
    EXPECT_FALSE(chain->IsFree(x));
    EXPECT_TRUE(chain->IsFree(y));
    KOBWBVariable** present = nullptr;
    ASSERT_EQ(chain->FindPresentVariables(present), 1);
    delete[] present;
    factory.ResetBuffer(chain);
    EXPECT_FALSE(chain->GetChild(0)->IsBufferValid());
    x->SetExprValue(KOBWBValue(3.0));
    EXPECT_EQ(chain->Eval(), 3.0 + depth / 2 * 3.0 + depth / 2);

    KOBWBEquation* equation = factory.AddEquation(chain, KOBWBEqEqual);
    equation->DuplicateRoot();
    ASSERT_NE(equation->GetRoot(), chain);
    EXPECT_EQ(equation->GetRoot()->Eval(), chain->Eval());
}

// A root's plan keeps the results of the nodes below it beside them; everything a
// caller can observe must be as if every node had evaluated itself.
TEST(KOBWBEvaluation, EquationRootsEvaluateThroughPlans) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    x->SetExprValue(KOBWBValue(KOBWBRealInterval{1, 2}));
    y->SetExprValue(KOBWBValue(KOBWBRealInterval{3, 4}));
    CountingDouble counter;
    KOBWBExpression* argument[] = {x};
    KOBWBExpression* doubled = factory.DeclareBlackBox(&counter, 1, argument, 0);
    KOBWBExpression* dx = factory.CreateSub(y, x);
    KOBWBExpression* square = factory.CreatePower(dx, 2);
    KOBWBConstant* offset = factory.CreateRealConstant(-10.0);
    KOBWBExpression* first =
        factory.AddEquation(factory.CreateSum(factory.CreateSum(square, doubled), offset), KOBWBEqEqual)->GetRoot();
    KOBWBExpression* second = factory.AddEquation(factory.CreateAtan2(dx, doubled), KOBWBEqEqual)->GetRoot();

    for (int pass = 0; pass < 3; ++pass) {
        factory.ResetBuffer(nullptr);
        EXPECT_EQ(Interval(first).lower, 1 + 2 - 10);
        EXPECT_EQ(Interval(first).upper, 9 + 4 - 10);
        EXPECT_NEAR(Interval(second).lower, std::atan2(1, 4), 1e-15);
        EXPECT_EQ(counter.calls, pass + 1);
    }
    // The nodes below answer as if they had evaluated themselves.
    EXPECT_TRUE(square->IsBufferValid());
    EXPECT_EQ(square->GetExprValue().GetAsRealInterval().lower, 1);
    EXPECT_EQ(dx->GetValue().GetAsRealInterval().upper, 3);
    square->SetExprValue(KOBWBValue(7.0));
    EXPECT_EQ(square->GetExprValue().GetAsReal(), 7.0);
    EXPECT_EQ(square->GetValue().GetAsRealInterval().upper, 9);

    // A constant set while its buffer stays valid keeps its value until a reset.
    KOBWBExpression* unrelated = factory.CreateSum(y, y);
    offset->SetValue(KOBWBValue(-20.0), unrelated);
    EXPECT_EQ(offset->GetValue().GetAsReal(), -10.0);
    EXPECT_EQ(Interval(first).lower, -7);
    // (A reset changes nothing until some buffer was filled since the last one.)
    EXPECT_EQ(Interval(unrelated).lower, 6);
    factory.ResetBuffer(nullptr);
    EXPECT_EQ(Interval(first).lower, -17);

    // A changed children list is followed at once.
    ASSERT_TRUE(square->ReplaceChild(1, factory.CreateIntegerConstant(3)));
    factory.ResetBuffer(nullptr);
    EXPECT_EQ(Interval(first).upper, 27 + 4 - 20);
    EXPECT_EQ(first->Eval(), first->GetValue().GetAsDouble());
    ASSERT_TRUE(first->AddChild(factory.CreateRealConstant(0.5)));
    factory.ResetBuffer(nullptr);
    EXPECT_EQ(Interval(first).upper, 27 + 4 - 20 + 0.5);

    // Errors of the pass are those of the nodes, and Eval starts them afresh.
    y->SetExprValue(KOBWBValue(KOBWBRealInterval{-9, -5}));
    KOBWBExpression* root = factory.AddEquation(factory.CreateSqrt(y), KOBWBEqEqual)->GetRoot();
    root->Eval();
    EXPECT_NE(factory.GetEnvironment().GetError(), 0u);
    y->SetExprValue(KOBWBValue(16.0));
    EXPECT_EQ(root->Eval(), 4.0);
    EXPECT_EQ(factory.GetEnvironment().GetError(), 0u);
}

// A graph whose paths double at every level has 2^60 paths below its top and 61
// nodes: every walk must take the time of its nodes.
TEST(KOBWBEvaluation, SharedGraphsAreWalkedOncePerNode) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    x->SetExprValue(KOBWBValue(1.0));
    KOBWBExpression* top = x;
    for (int level = 0; level < 60; ++level) top = factory.CreateProduct(top, top);
    EXPECT_EQ(top->Eval(), 1.0);
    EXPECT_FALSE(top->IsConstant());
    EXPECT_TRUE(top->IsFree(y));
    EXPECT_FALSE(top->IsFree(x));
    KOBWBVariable** present = nullptr;
    ASSERT_EQ(top->FindPresentVariables(present), 1);
    EXPECT_EQ(present[0], x);
    delete[] present;
    factory.ResetBuffer(top);
    EXPECT_FALSE(top->GetChild(0)->GetChild(0)->IsBufferValid());
    x->SetExprValue(KOBWBValue(-1.0));
    EXPECT_EQ(factory.AddEquation(top, KOBWBEqEqual)->GetRoot()->Eval(), 1.0);
}

namespace {

// Expressions that are no equation roots: the entries of a Jacobian, among them
// leaves, an entry below another, a single number, an exact fraction, an empty
// result with its error bit, a black box and an absent entry.
std::vector<KOBWBExpression*> JacobianEntries(KOBWBFactory& f, std::vector<KOBWBVariable*>& variables) {
    for (int i = 0; i < 3; ++i) variables.push_back(f.CreateVariable());
    variables[0]->SetExprValue(KOBWBValue(KOBWBRealInterval{1.0, 2.0}));
    variables[1]->SetExprValue(KOBWBValue(KOBWBRealInterval{-3.0, 0.5}));
    variables[2]->SetExprValue(KOBWBValue(0.25));
    KOBWBVariable* x = variables[0];
    KOBWBVariable* y = variables[1];
    KOBWBExpression* dx = f.CreateSub(y, x);
    KOBWBExpression* length = f.CreateSqrt(f.CreateSum(f.CreatePower(dx, 2), f.CreatePower(variables[2], 2)));
    KOBWBExpression* angle = f.CreateAtan2(variables[2], dx);
    std::vector<KOBWBExpression*> entries;
    for (KOBWBExpression* root : {length, angle})
        for (KOBWBVariable* v : variables) entries.push_back(f.CreateDerivative(root, 1, &v));
    entries.push_back(f.CreateDerivative(entries[0], 1, &variables[1]));
    entries.push_back(dx);
    entries.push_back(f.CreateProduct(f.CreateConstantPi(), f.CreateIntegerConstant(2)));
    entries.push_back(f.CreateSqrt(f.CreateSub(f.CreateRealConstant(-4.0), f.CreatePower(x, 2))));
    entries.push_back(nullptr);
    KOBWBExpression* argument[] = {f.CreateSin(y)};
    entries.push_back(f.DeclareBlackBox(new CountingDouble, 1, argument, 1));
    entries.push_back(length);
    return entries;
}

} // namespace

// A list evaluated together gives each expression the value and the error bits that
// GetValue gives it alone, again after a leaf or a children list changes.
TEST(KOBWBEvaluation, ListsOfExpressionsEvaluateTogether) {
    KOBWBFactory listed(0);
    KOBWBFactory alone(0);
    std::vector<KOBWBVariable*> listedVariables;
    std::vector<KOBWBVariable*> aloneVariables;
    const std::vector<KOBWBExpression*> entries = JacobianEntries(listed, listedVariables);
    const std::vector<KOBWBExpression*> references = JacobianEntries(alone, aloneVariables);
    const int count = static_cast<int>(entries.size());
    const auto check = [&](const char* stage) {
        listed.GetEnvironment().InitForEval();
        alone.GetEnvironment().InitForEval();
        listed.EvaluateExpressions(count, entries.data());
        for (int i = 0; i < count; ++i) {
            if (!entries[i]) continue;
            EXPECT_TRUE(entries[i]->IsBufferValid()) << stage << " " << i;
            const KOBWBValue& value = entries[i]->GetValue();
            const KOBWBValue& expected = references[i]->GetValue();
            EXPECT_EQ(value.GetType(), expected.GetType()) << stage << " " << i;
            EXPECT_TRUE(value.IsEqualTo(listed.GetEnvironment(), expected)) << stage << " " << i;
        }
        EXPECT_EQ(listed.GetEnvironment().GetError(), alone.GetEnvironment().GetError()) << stage;
    };
    check("first");
    EXPECT_NE(listed.GetEnvironment().GetError(), 0u);
    listed.ResetBuffer();
    alone.ResetBuffer();
    check("again");
    const KOBWBValue moved(KOBWBRealInterval{4.0, 4.5});
    listedVariables[1]->SetExprValue(moved);
    aloneVariables[1]->SetExprValue(moved);
    check("moved");
    ASSERT_TRUE(entries[1]->ReplaceChild(0, listedVariables[2]));
    ASSERT_TRUE(references[1]->ReplaceChild(0, aloneVariables[2]));
    listed.ResetBuffer();
    alone.ResetBuffer();
    check("replaced");
}
