#include "KOBWBBlackBox.h"
#include "KOBWBBlackBoxOperator.h"
#include "KOBWBConstant.h"
#include "KOBWBDerivBlackBox.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

namespace {

double ConstantOf(const KOBWBExpression* node) { return node->GetExprValue().GetAsDouble(); }

KOBWBExpression* D(KOBWBFactory& factory, KOBWBExpression* e, KOBWBVariable* v) {
    return factory.CreateDerivative(e, 1, &v);
}

// f(x, y) = x^2 y + sin(x y), computed by the black box itself.
class Sample : public KOBWBBlackBox {
public:
    void Eval(KOBWBValue& result) override { result = KOBWBValue(Eval()); }
    double Eval() override {
        const double x = GetOperator()->GetChild(0)->Eval();
        const double y = GetOperator()->GetChild(1)->Eval();
        return x * x * y + std::sin(x * y);
    }
};

struct Formula {
    const char* name;
    std::function<KOBWBExpression*(KOBWBFactory&, KOBWBVariable*, KOBWBVariable*)> build;
};

double At(KOBWBExpression* e, KOBWBVariable* x, KOBWBVariable* y, double xv, double yv) {
    x->SetExprValue(KOBWBValue(xv));
    y->SetExprValue(KOBWBValue(yv));
    return e->Eval();
}

double CentralDifference(KOBWBExpression* e, KOBWBVariable* x, KOBWBVariable* y, double xv, double yv) {
    const double h = 1e-6 * std::max(1.0, std::fabs(xv));
    return (At(e, x, y, xv + h, yv) - At(e, x, y, xv - h, yv)) / (2 * h);
}

} // namespace

TEST(KOBWBDerivative, NodeShapesAndSimplifications) {
    KOBWBFactory f(0);
    KOBWBVariable* x = f.CreateVariable();
    KOBWBVariable* y = f.CreateVariable();
    EXPECT_EQ(ConstantOf(x->Differentiate(x)), 1.0);
    EXPECT_EQ(ConstantOf(y->Differentiate(x)), 0.0);
    EXPECT_EQ(x->Differentiate(nullptr), x);
    KOBWBConstant* three = f.CreateIntegerConstant(3);
    EXPECT_TRUE(D(f, three, x)->GetExprValue().IsAKindOf(KOBWBIntegerValue));
    EXPECT_TRUE(three->Differentiate(x)->GetExprValue().IsAKindOf(KOBWBRealValue));
    EXPECT_EQ(three->Differentiate(nullptr), nullptr);

    KOBWBExpression* dSum = D(f, f.CreateSum(x, f.CreateRealConstant(5)), x);
    EXPECT_EQ(dSum->GetType(), KOBWBConstantType);
    EXPECT_EQ(ConstantOf(dSum), 1.0);
    EXPECT_EQ(D(f, f.CreateProduct(x, y), x), y);

    KOBWBExpression* factors[] = {f.CreateIntegerConstant(2), x, x};
    KOBWBExpression* dTwoXX = D(f, f.CreateProduct(3, factors), x);
    ASSERT_EQ(dTwoXX->GetType(), KOBWBSumType);
    ASSERT_EQ(dTwoXX->GetNbOfChildren(), 2);
    EXPECT_NE(dTwoXX->GetChild(0), dTwoXX->GetChild(1));
    EXPECT_TRUE(dTwoXX->GetChild(0)->IsEqualTo(dTwoXX->GetChild(1)));

    KOBWBExpression* cube = f.CreatePower(x, 3);
    KOBWBExpression* dCube = D(f, cube, x);
    ASSERT_EQ(dCube->GetType(), KOBWBProductType);
    EXPECT_EQ(dCube->GetChild(0), cube->GetChild(1));
    EXPECT_EQ(dCube->GetChild(1)->GetType(), KOBWBPowerType);
    EXPECT_TRUE(dCube->GetChild(1)->GetChild(1)->GetExprValue().IsAKindOf(KOBWBIntegerValue));
    KOBWBExpression* first = f.CreatePower(x, 1);
    EXPECT_EQ(D(f, first, x), first->GetChild(1));
    // Graphs free of the variable, and powers and quotients of them, fold to 0 as
    // the derivative is made: no 0*(y - 1)^1 factors.
    KOBWBExpression* yMinusOne = f.CreateSub(y, f.CreateIntegerConstant(1));
    for (KOBWBExpression* free : {f.CreatePower(y, 3), f.CreatePower(yMinusOne, 2), f.CreateQuotient(y, yMinusOne)}) {
        KOBWBExpression* d = D(f, free, x);
        EXPECT_EQ(d->GetType(), KOBWBConstantType);
        EXPECT_EQ(ConstantOf(d), 0.0);
    }
    KOBWBExpression* dSquare = D(f, f.CreateSum(f.CreatePower(f.CreateSub(x, y), 2), f.CreatePower(yMinusOne, 2)), x);
    ASSERT_EQ(dSquare->GetType(), KOBWBProductType);
    EXPECT_EQ(dSquare->GetChild(1)->GetType(), KOBWBSumType);
    KOBWBExpression* dOverY = D(f, f.CreateQuotient(x, yMinusOne), x);
    ASSERT_EQ(dOverY->GetType(), KOBWBQuotientType);
    EXPECT_EQ(dOverY->GetChild(1), yMinusOne);

    EXPECT_EQ(D(f, f.CreateAbs(x), x), nullptr);
    EXPECT_EQ(D(f, f.CreateMin(x, y), x), nullptr);
    EXPECT_EQ(D(f, f.CreateMod(x, y), x), nullptr);
    EXPECT_EQ(D(f, f.CreateLessEqual(x, y), x), nullptr);
    KOBWBExpression* dFloor = D(f, f.CreateFloor(x), x);
    EXPECT_TRUE(dFloor->GetExprValue().IsAKindOf(KOBWBIntegerValue));
    EXPECT_EQ(ConstantOf(dFloor), 0.0);
    KOBWBExpression* sinX = f.CreateSin(x);
    EXPECT_EQ(f.CreateDerivative(sinX, 0, &x), sinX);
    EXPECT_EQ(f.CreateDerivative(nullptr, 1, &x), nullptr);
    EXPECT_EQ(sinX->Differentiate(nullptr), sinX);

    KOBWBExpression* branch = f.CreateIfThenElse(f.CreateLessEqual(x, f.CreateRealConstant(1)),
                                                 f.CreatePower(x, 2), x);
    x->SetExprValue(KOBWBValue(0.5));
    EXPECT_EQ(D(f, branch, x)->GetType(), KOBWBProductType);
    x->SetExprValue(KOBWBValue(3.0));
    EXPECT_EQ(ConstantOf(D(f, branch, x)), 1.0);
    x->SetExprValue(KOBWBValue(KOBWBRealInterval{0, 2}));
    EXPECT_EQ(D(f, branch, x), nullptr);
}

TEST(KOBWBDerivative, AgreesWithCentralDifferences) {
    const std::vector<Formula> formulas = {
        {"x^3 y", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreateProduct(f.CreatePower(x, 3), y); }},
        {"x^-2", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreatePower(x, -2); }},
        {"x^2.5", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreatePower(x, f.CreateRealConstant(2.5)); }},
        {"x^y", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreatePower(x, y); }},
        {"y^x", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreatePower(y, x); }},
        {"root3", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateRoot(x, 3); }},
        {"sqrt", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreateSqrt(f.CreateProduct(x, y)); }},
        {"x/y", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreateQuotient(x, y); }},
        {"y/x^2", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreateQuotient(y, f.CreatePower(x, 2)); }},
        {"x-y", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreateSub(f.CreatePower(x, 2), y); }},
        {"sin", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateSin(x); }},
        {"cos", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreateCos(f.CreateProduct(x, y)); }},
        {"tan", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateTan(x); }},
        {"asin", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateAsin(f.CreateQuotient(x, f.CreateRealConstant(4))); }},
        {"acos", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateAcos(f.CreateQuotient(x, f.CreateRealConstant(4))); }},
        {"atan", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateAtan(x); }},
        {"atan2", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreateAtan2(y, x); }},
        {"atan2 x first", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreateAtan2(x, y); }},
        {"sinh", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateSinh(x); }},
        {"cosh", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateCosh(x); }},
        {"tanh", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateTanh(x); }},
        {"asinh", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateASinh(x); }},
        {"acosh", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateACosh(f.CreateSum(x, f.CreateRealConstant(2))); }},
        {"atanh", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateATanh(f.CreateQuotient(x, f.CreateRealConstant(4))); }},
        {"ln", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreateLn(f.CreateProduct(x, y)); }},
        {"log", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateLog(x); }},
        {"exp", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreateExp(f.CreateQuotient(x, y)); }},
        {"nested", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) {
             return f.CreateSqrt(f.CreateSum(f.CreatePower(f.CreateSin(x), 2), f.CreatePower(f.CreateLn(y), 2)));
         }},
        {"distance", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) {
             return f.CreateSub(f.CreateSqrt(f.CreateSum(f.CreatePower(f.CreateSub(x, y), 2), f.CreatePower(y, 2))),
                                f.CreateRealConstant(3));
         }},
        {"product chain", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) {
             KOBWBExpression* factors[] = {f.CreateRealConstant(2), x, f.CreateCos(x), y};
             return f.CreateProduct(4, factors);
         }},
        {"exp of tanh", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable*) { return f.CreateExp(f.CreateTanh(f.CreateSin(x))); }},
        {"rounding", [](KOBWBFactory& f, KOBWBVariable* x, KOBWBVariable* y) { return f.CreateSum(f.CreateRound(y), f.CreateProduct(f.CreateCeil(y), x)); }},
    };
    const double points[][2] = {{0.7, 1.3}, {1.9, 0.45}, {2.6, 2.2}};
    for (const Formula& formula : formulas) {
        KOBWBFactory factory(0);
        KOBWBVariable* x = factory.CreateVariable();
        KOBWBVariable* y = factory.CreateVariable();
        KOBWBExpression* e = formula.build(factory, x, y);
        KOBWBExpression* de = D(factory, e, x);
        ASSERT_NE(de, nullptr) << formula.name;
        for (const auto& point : points) {
            const double expected = CentralDifference(e, x, y, point[0], point[1]);
            const double actual = At(de, x, y, point[0], point[1]);
            EXPECT_NEAR(actual, expected, 1e-6 * std::max(1.0, std::fabs(expected)))
                << formula.name << " at " << point[0] << ", " << point[1];
        }
    }
}

TEST(KOBWBDerivative, MixedSecondDerivativesAgreeWithNestedDifferences) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    KOBWBExpression* e = factory.CreateSum(factory.CreateProduct(factory.CreateSin(x), factory.CreateExp(y)),
                                           factory.CreatePower(factory.CreateProduct(x, y), 3));
    KOBWBVariable* order[] = {x, y};
    KOBWBExpression* dxy = factory.CreateDerivative(e, 2, order);
    ASSERT_NE(dxy, nullptr);
    const double xv = 0.8, yv = 0.6, h = 1e-4;
    const double nested = (At(e, x, y, xv + h, yv + h) - At(e, x, y, xv + h, yv - h) -
                           At(e, x, y, xv - h, yv + h) + At(e, x, y, xv - h, yv - h)) /
                          (4 * h * h);
    EXPECT_NEAR(At(dxy, x, y, xv, yv), nested, 1e-5 * std::fabs(nested));
    // A constant graph gives the integer 0 at once, whatever the count.
    KOBWBExpression* constantGraph = factory.CreateProduct(factory.CreateRealConstant(4), factory.CreateConstantPi());
    for (int count : {1, 2}) {
        const int before = factory.GetNbOfExpressions();
        KOBWBExpression* zero = factory.CreateDerivative(constantGraph, count, order);
        EXPECT_TRUE(zero->GetExprValue().IsAKindOf(KOBWBIntegerValue)) << count;
        EXPECT_EQ(zero->GetExprValue().GetAsInteger(), 0) << count;
        EXPECT_EQ(factory.GetNbOfExpressions(), before + 1) << count;
    }
}

TEST(KOBWBDerivative, BlackBoxesDifferentiateNumerically) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    KOBWBVariable* z = factory.CreateVariable();
    Sample* sample = new Sample;
    KOBWBExpression* arguments[] = {x, y};
    KOBWBExpression* call = factory.DeclareBlackBox(sample, 2, arguments, 1);
    EXPECT_EQ(sample->GetName(), "BBx0");
    EXPECT_EQ(call->Differentiate(z), nullptr);
    EXPECT_EQ(call->Differentiate(nullptr), call);
    KOBWBExpression* dx = D(factory, call, x);
    ASSERT_NE(dx, nullptr);
    EXPECT_EQ(D(factory, call, x), dx);
    EXPECT_EQ(static_cast<KOBWBBlackBoxOperator*>(dx)->GetBlackBoxName(), "dva0BBx0");
    EXPECT_EQ(factory.GetDerivBlackBox(sample, x)->GetOperator(), dx);
    EXPECT_EQ(factory.GetDerivBlackBox(sample, y), nullptr);

    const double xv = 1.2, yv = 0.7;
    x->SetExprValue(KOBWBValue(xv));
    y->SetExprValue(KOBWBValue(yv));
    EXPECT_EQ(call->Eval(), xv * xv * yv + std::sin(xv * yv));
    const double slope = dx->Eval();
    EXPECT_NEAR(slope, 2 * xv * yv + yv * std::cos(xv * yv), 1e-6);
    EXPECT_EQ(x->Eval(), xv);
    EXPECT_FALSE(call->IsBufferValid());

    KOBWBValue value;
    dx->Eval(value);
    EXPECT_NEAR(value.GetAsReal(), slope, 1e-12);
    KOBWBDerivBlackBox orphan(nullptr, nullptr);
    EXPECT_EQ(orphan.GetName(), "BBx");
    EXPECT_TRUE(orphan.IsADerivative());
}

// A long chain is differentiated without exhausting the call stack, and a graph whose
// paths double at every level in the time of its nodes.
TEST(KOBWBDerivative, DeepAndSharedGraphs) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    x->SetExprValue(KOBWBValue(1.5));
    KOBWBExpression* chain = x;
    constexpr int depth = 200000;
    for (int i = 0; i < depth; ++i) chain = factory.CreateSum(chain, i % 2 ? factory.CreateRealConstant(1.0) : x);
    KOBWBExpression* slope = factory.CreateDerivative(chain, 1, &x);
    ASSERT_NE(slope, nullptr);
    EXPECT_EQ(slope->Eval(), 1.0 + depth / 2);

    KOBWBExpression* power = x;
    constexpr int levels = 40;
    for (int level = 0; level < levels; ++level) power = factory.CreateProduct(power, power);
    const int before = factory.GetNbOfExpressions();
    KOBWBExpression* derivative = factory.CreateDerivative(power, 1, &x);
    ASSERT_NE(derivative, nullptr);
    EXPECT_LT(factory.GetNbOfExpressions() - before, 10 * levels);
    x->SetExprValue(KOBWBValue(1.0));
    EXPECT_EQ(derivative->Eval(), std::ldexp(1.0, levels));
}

// Every node a derivative makes is part of it: no derivative is made only to be
// dropped, and the constants the rules need come from the graph when it holds them.
TEST(KOBWBDerivative, MakesOnlyTheNodesItKeeps) {
    KOBWBFactory factory(0);
    KOBWBVariable* v[4];
    for (KOBWBVariable*& variable : v) variable = factory.CreateVariable();
    KOBWBExpression* dx = factory.CreateSub(v[2], v[0]);
    KOBWBExpression* dy = factory.CreateSub(v[3], v[1]);
    KOBWBExpression* distance = factory.CreateSub(
        factory.CreateSqrt(factory.CreateSum(factory.CreatePower(dx, 2), factory.CreatePower(dy, 2))),
        factory.CreateRealConstant(11.18));
    KOBWBExpression* angle = factory.CreateSub(factory.CreateAtan2(dy, dx), factory.CreateRealConstant(0.46));
    for (KOBWBExpression* root : {distance, angle}) {
        for (KOBWBVariable* variable : v) {
            const int before = factory.GetNbOfExpressions();
            KOBWBExpression* derivative = factory.CreateDerivative(root, 1, &variable);
            ASSERT_NE(derivative, nullptr);
            std::vector<const KOBWBExpression*> reached;
            std::vector<const KOBWBExpression*> pending{derivative};
            while (!pending.empty()) {
                const KOBWBExpression* node = pending.back();
                pending.pop_back();
                reached.push_back(node);
                for (int i = 0; i < node->GetNbOfChildren(); ++i) pending.push_back(node->GetChild(i));
            }
            const int made = factory.GetNbOfExpressions() - before;
            EXPECT_LE(made, 13);
            for (int i = before; i < factory.GetNbOfExpressions(); ++i)
                EXPECT_NE(std::find(reached.begin(), reached.end(), factory.GetExpression(i)), reached.end())
                    << "node " << i - before << " of " << made;
        }
    }

    KOBWBVariable* x = v[0];
    KOBWBExpression* square = factory.CreatePower(x, 2);
    KOBWBExpression* root = D(factory, factory.CreateSqrt(square), x);
    ASSERT_EQ(root->GetType(), KOBWBQuotientType);
    EXPECT_EQ(root->GetChild(1)->GetChild(0), square->GetChild(1));
    EXPECT_EQ(root->GetChild(0)->GetChild(0), square->GetChild(1));
}

// Every further derivative of a product of many factors that all depend on the
// variable grows with the number of factors, not with its power: the third derivative
// of a 40-factor product stays a few thousand nodes, and holds its value.
TEST(KOBWBDerivative, WideProductsGrowLinearly) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    constexpr int count = 40;
    std::vector<KOBWBExpression*> factors;
    std::vector<double> shifts;
    for (int i = 0; i < count; ++i) {
        shifts.push_back(1.0 + i / 40.0);
        factors.push_back(factory.CreateSum(x, factory.CreateRealConstant(shifts.back())));
    }
    KOBWBExpression* product = factory.CreateProduct(count, factors.data());
    const int before = factory.GetNbOfExpressions();
    KOBWBVariable* byX[] = {x, x, x};
    KOBWBExpression* third = factory.CreateDerivative(product, 3, byX);
    ASSERT_NE(third, nullptr);
    EXPECT_LT(factory.GetNbOfExpressions() - before, 60 * count);

    // The product's coefficients, differentiated three times, evaluated by Horner.
    std::vector<double> coefficients{1.0};
    for (double shift : shifts) {
        std::vector<double> next(coefficients.size() + 1, 0.0);
        for (std::size_t k = 0; k < coefficients.size(); ++k) {
            next[k] += coefficients[k] * shift;
            next[k + 1] += coefficients[k];
        }
        coefficients.swap(next);
    }
    const double at = -0.3;
    double expected = 0.0;
    for (std::size_t k = coefficients.size(); k-- > 3;) expected = expected * at + coefficients[k] * k * (k - 1) * (k - 2);
    x->SetExprValue(KOBWBValue(at));
    EXPECT_NEAR(third->Eval(), expected, 1e-9 * std::fabs(expected));
}
