#include "KOBLVRGlobalParameters.h"
#include "KOBLVRStream.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBEquations.h"
#include "KOBWBFactory.h"
#include "KOBWBSymbolicTransformations.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory>
#include <sstream>

namespace {

struct Remover {
    void operator()(KOBWBSymbolicTransformations* transformations) const { KOBRemove(transformations); }
};
typedef std::unique_ptr<KOBWBSymbolicTransformations, Remover> Operator;

Operator Make(KOBWBFactory& factory, unsigned mode, bool old = false) {
    factory.GetEnvironment().SetUseOldSymbolicTransformations(old);
    Operator transformations(KOBCreateWBSymbolicTransformations(0, factory));
    transformations->SetMode(mode);
    return transformations;
}

// Opens the protected property reading for the tests.
struct Marks : KOBWBSymbolicTransformations {
    static bool Of(KOBWBSymbolicTransformations& op, KOBWBExpression* e, KOBWBProperty p) {
        return (op.*(&Marks::GetProperty))(e, p);
    }
};

} // namespace

TEST(KOBWBSymbolicTransformations, OperatorFrame) {
    KOBWBFactory factory;
    Operator transformations = Make(factory, 0);
    EXPECT_EQ(transformations->GetOperatorName(), "KOBWBSymbolicTransformations");
    EXPECT_EQ(transformations->GetOperatorShortName(), "ST");
    EXPECT_EQ(transformations->GetVersionOfStream(), 0);
    EXPECT_TRUE(transformations->SetEquationToSimplify(3));
    // An empty factory: nothing to do, storage back to normal.
    EXPECT_EQ(transformations->Run(), 0);
    EXPECT_FALSE(factory.IsUsingTemporaryStorage());
    EXPECT_FALSE(transformations->AreInequalitiesInconsistent());
    Operator old = Make(factory, 2, true);
    EXPECT_FALSE(old->SetEquationToSimplify(0));
    EXPECT_EQ(old->Run(), 0);
    KOBRemove(nullptr);
}

TEST(KOBWBSymbolicTransformations, MarksConstantAndLinear) {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    KOBWBExpression* two = factory.CreateIntegerConstant(2);
    KOBWBExpression* three = factory.CreateIntegerConstant(3);
    KOBWBExpression* twoVariables[] = {two, x, y};
    KOBWBExpression* oneVariable[] = {two, three, x};
    KOBWBEquation* nonlinear = factory.AddEquation(factory.CreateProduct(3, twoVariables), KOBWBEqLessEqual);
    KOBWBEquation* linear = factory.AddEquation(factory.CreateProduct(3, oneVariable), KOBWBEqLessEqual);
    KOBWBEquation* constant = factory.AddEquation(factory.CreateSum(two, three), KOBWBEqLessEqual);
    Operator transformations = Make(factory, 1);
    transformations->Run();
    EXPECT_FALSE(Marks::Of(*transformations, nonlinear->GetRoot(), Linear));
    EXPECT_TRUE(Marks::Of(*transformations, linear->GetRoot(), Linear));
    EXPECT_FALSE(Marks::Of(*transformations, linear->GetRoot(), Constant));
    EXPECT_TRUE(Marks::Of(*transformations, constant->GetRoot(), Constant));
    EXPECT_TRUE(Marks::Of(*transformations, constant->GetRoot(), Linear));

    // A root rewritten by the elimination is marked as it now stands: x = 2 makes
    // x y - 3 <= 0 linear.
    KOBWBFactory eliminated;
    KOBWBVariable* u = eliminated.CreateVariable();
    KOBWBVariable* w = eliminated.CreateVariable();
    eliminated.AddEquation(u, KOBWBEqEqual, eliminated.CreateIntegerConstant(2));
    KOBWBEquation* product = eliminated.AddEquation(
        eliminated.CreateSub(eliminated.CreateProduct(u, w), eliminated.CreateIntegerConstant(3)), KOBWBEqLessEqual);
    Operator elimination = Make(eliminated, KOBWBEliminateLinear | KOBWBSimplifyEquations);
    elimination->Run();
    EXPECT_EQ(eliminated.GetNbOfEquations(), 1);
    EXPECT_TRUE(Marks::Of(*elimination, product->GetRoot(), Linear));
    EXPECT_FALSE(Marks::Of(*elimination, product->GetRoot(), Constant));
}

TEST(KOBWBSymbolicTransformations, FlattensAndBinarises) {
    KOBWBFactory factory;
    KOBWBVariable* v[4];
    for (KOBWBVariable*& variable : v) variable = factory.CreateVariable();
    const auto nested = [&] {
        return factory.CreateSum(v[0], factory.CreateSum(v[1], factory.CreateProduct(v[2], v[3])));
    };
    // Mode 2 flattens and leaves a nonlinear equation otherwise as it was.
    KOBWBEquation* equation = factory.AddEquation(nested(), KOBWBEqEqual);
    Make(factory, 2)->Run();
    ASSERT_EQ(equation->GetRoot()->GetType(), KOBWBSumType);
    EXPECT_EQ(equation->GetRoot()->GetNbOfChildren(), 3);
    // With bit 8 the sum ends as a left chain of binary sums.
    KOBWBEquation* chained = factory.AddEquation(nested(), KOBWBEqEqual);
    Make(factory, 2 | 8)->Run();
    KOBWBExpression* root = chained->GetRoot();
    ASSERT_EQ(root->GetNbOfChildren(), 2);
    EXPECT_EQ(root->GetChild(0)->GetType(), KOBWBSumType);
    EXPECT_EQ(root->GetChild(0)->GetNbOfChildren(), 2);
    EXPECT_EQ(root->GetChild(1)->GetType(), KOBWBProductType);
    // The older implementation flattens in place with the same result.
    KOBWBEquation* inPlace = factory.AddEquation(nested(), KOBWBEqEqual);
    KOBWBExpression* before = inPlace->GetRoot();
    Make(factory, 2 | 8, true)->Run();
    EXPECT_EQ(inPlace->GetRoot(), before);
    EXPECT_EQ(before->GetNbOfChildren(), 2);
}

// A run reads the caller's trees and gives the equations new ones: the nodes the caller
// built stay as they were, whether a root is written anew (a min of three and a max
// over a fraction, which binarising and the constants' canonical form would change
// in place) or kept, on a flattened duplicate (a nested min, an integral).
TEST(KOBWBSymbolicTransformations, ARunLeavesTheCallersNodesAsTheyWere) {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    KOBWBVariable* z = factory.CreateVariable();
    KOBWBExpression* three[] = {x, y, z};
    KOBWBExpression* min = factory.CreateAlgebraicOperator(KOBWBMinType, 3, three);
    KOBWBExpression* halfPi = factory.CreateConstant(KOBWBValue(KOBWBCreateFraction(1, 2, 1, 1)));
    KOBWBExpression* max = factory.CreateMax(x, halfPi);
    KOBWBEquation* written = factory.AddEquation(factory.CreateSum(min, max), KOBWBEqEqual);
    KOBWBExpression* nested = factory.CreateMin(factory.CreateMin(x, y), z);
    KOBWBEquation* flattened = factory.AddEquation(factory.CreateSum(nested, y), KOBWBEqLessEqual);
    KOBWBExpression* integral = factory.CreateIntegrateOperator(factory.CreateSum(x, factory.CreateSum(y, z)), x);
    KOBWBEquation* kept = factory.AddEquation(factory.CreateSum(integral, y), KOBWBEqEqual);
    Make(factory, 4 | 8)->Run();
    EXPECT_EQ(min->GetNbOfChildren(), 3);
    EXPECT_EQ(max->GetChild(1), halfPi);
    ASSERT_EQ(nested->GetNbOfChildren(), 2);
    EXPECT_EQ(nested->GetChild(0)->GetType(), KOBWBMinType);
    ASSERT_EQ(integral->GetChild(0)->GetNbOfChildren(), 2);
    EXPECT_EQ(integral->GetChild(0)->GetChild(1)->GetType(), KOBWBSumType);
    // The equations' own roots: every min binary, the nested one flattened first
    // (three leaves under two binary mins), and values unchanged.
    int mins = 0;
    KOBWBExpression* outer = nullptr;
    const std::function<void(KOBWBExpression*)> walk = [&](KOBWBExpression* node) {
        if (node->GetType() == KOBWBMinType) {
            ++mins;
            EXPECT_EQ(node->GetNbOfChildren(), 2);
            if (node->GetChild(0)->GetType() == KOBWBMinType) outer = node;
        }
        for (int i = 0; i < node->GetNbOfChildren(); ++i) walk(node->GetChild(i));
    };
    walk(written->GetRoot());
    walk(flattened->GetRoot());
    EXPECT_EQ(mins, 4);
    // min(min(x, y), z) flattens to min(z, x, y), which binarises to min(min(z, x), y).
    ASSERT_NE(outer, nullptr);
    EXPECT_EQ(outer->GetChild(1), y);
    x->SetExprValue(KOBWBValue(1.0));
    y->SetExprValue(KOBWBValue(2.0));
    z->SetExprValue(KOBWBValue(-3.0));
    EXPECT_NEAR(written->GetRoot()->Eval(), -3.0 + 3.14159265358979323846 / 2, 1e-12);
    EXPECT_NEAR(flattened->GetRoot()->Eval(), -1.0, 1e-12);
    EXPECT_NE(kept->GetRoot(), nullptr);
}

TEST(KOBWBSymbolicTransformations, ConstantsOfAnglesAreCanonical) {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    // x - Pi/180 and x - 180/Pi, written as quotients.
    KOBWBEquation* degree = factory.AddEquation(x, KOBWBEqEqual, factory.CreateQuotient(factory.CreateConstantPi(),
                                                                                      factory.CreateIntegerConstant(180)));
    KOBWBEquation* radian = factory.AddEquation(x, KOBWBEqGreaterEqual, factory.CreateQuotient(factory.CreateIntegerConstant(180),
                                                                                             factory.CreateConstantPi()));
    Make(factory, 4)->Run();
    const auto holds = [](KOBWBExpression* root, KOBWBExpression* constant) {
        for (int i = 0; i < root->GetNbOfChildren(); ++i)
            if (root->GetChild(i) == constant) return true;
        return false;
    };
    KOBWBExpression* dtor = factory.CreateConstantDTOR();
    KOBWBExpression* rtod = factory.CreateConstantRTOD();
    ASSERT_EQ(degree->GetRoot()->GetType(), KOBWBSumType);
    // -Pi/180 is written -1 times the degree constant or as the fraction's own quotient.
    x->SetExprValue(KOBWBValue(1.0));
    EXPECT_NEAR(degree->GetRoot()->Eval(), 1.0 - 3.14159265358979323846 / 180, 1e-12);
    EXPECT_NEAR(radian->GetRoot()->Eval(), 1.0 - 180 / 3.14159265358979323846, 1e-12);
    KOBWBEquation* plain = factory.AddEquation(factory.CreateProduct(x, factory.CreateQuotient(factory.CreateConstantPi(),
                                                                                             factory.CreateIntegerConstant(180))),
                                               KOBWBEqEqual);
    Make(factory, 4)->Run();
    EXPECT_TRUE(holds(plain->GetRoot(), dtor));
    KOBWBEquation* back = factory.AddEquation(factory.CreateProduct(x, factory.CreateQuotient(factory.CreateIntegerConstant(180),
                                                                                            factory.CreateConstantPi())),
                                              KOBWBEqEqual);
    Make(factory, 4)->Run();
    EXPECT_TRUE(holds(back->GetRoot(), rtod));
}

TEST(KOBWBSymbolicTransformations, JudgesConstantInequalitiesOnly) {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    factory.AddEquation(factory.CreateIntegerConstant(1), KOBWBEqLessEqual, factory.CreateIntegerConstant(2));
    factory.AddEquation(x, KOBWBEqGreater, factory.CreateIntegerConstant(1000));
    std::ostringstream out;
    KOBLVRStream replay(&out);
    Operator transformations = Make(factory, 2 | 4 | 16);
    transformations->SetReplayStream(&replay);
    transformations->Run();
    EXPECT_FALSE(transformations->AreInequalitiesInconsistent());
    EXPECT_NE(out.str().find("#!INCONSISTENCIES\nNOTFOUND"), std::string::npos);
    factory.AddEquation(factory.CreateIntegerConstant(3), KOBWBEqLess, factory.CreateIntegerConstant(2));
    transformations->SetMode(2 | 16);
    transformations->Run();
    EXPECT_TRUE(transformations->AreInequalitiesInconsistent());
    EXPECT_NE(out.str().find("#!INCONSISTENCIES\nFOUND"), std::string::npos);
    EXPECT_NE(out.str().find("#!MODE\n18"), std::string::npos);
    // Without bit 16 the section is not written.
    out.str("");
    transformations->SetMode(4);
    transformations->Run();
    EXPECT_EQ(out.str().find("#!INCONSISTENCIES"), std::string::npos);
}

TEST(KOBWBSymbolicTransformations, SimplifiesOnlyTheSelectedEquations) {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    const auto twice = [&] { return factory.CreateSum(x, x); };
    KOBWBEquation* first = factory.AddEquation(twice(), KOBWBEqEqual);
    KOBWBEquation* second = factory.AddEquation(twice(), KOBWBEqEqual);
    KOBWBEquation* gone = factory.AddEquation(factory.CreateSub(twice(), factory.CreateProduct(factory.CreateIntegerConstant(2), x)),
                                              KOBWBEqEqual);
    const int goneId = gone->GetId();
    Operator transformations = Make(factory, 4);
    transformations->SetEquationToSimplify(second->GetId());
    transformations->SetEquationToSimplify(goneId);
    transformations->SetEquationToSimplify(goneId);
    transformations->SetEquationToSimplify(12345);
    transformations->Run();
    EXPECT_EQ(first->GetRoot()->GetType(), KOBWBSumType);
    EXPECT_EQ(second->GetRoot()->GetType(), KOBWBProductType);
    EXPECT_EQ(factory.GetEquationById(goneId), nullptr);
    EXPECT_EQ(factory.GetNbOfEquations(), 2);
    // The list is emptied by the run: the next covers every equation.
    transformations->Run();
    EXPECT_EQ(first->GetRoot()->GetType(), KOBWBProductType);
}

TEST(KOBWBSymbolicTransformations, BadInputDoesNotBreakARun) {
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBEquation* nullRoot = factory.AddEquation(x, KOBWBEqEqual);
    nullRoot->SetRoot(nullptr);
    factory.AddEquation(factory.CreateSum(x, factory.CreateIntegerConstant(1)), KOBWBEqEqual);
    for (bool old : {false, true}) {
        Operator transformations = Make(factory, 0xFFFFFFFFu, old);
        transformations->SetEquationToSimplify(-7);
        EXPECT_EQ(transformations->Run(), 0);
        EXPECT_EQ(transformations->GetVariableExpression(-1), nullptr);
        EXPECT_EQ(transformations->GetVariableExpression(100), nullptr);
    }
    EXPECT_FALSE(factory.IsUsingTemporaryStorage());

    // A factory that changes between traced runs: new variables, equations removed.
    std::ostringstream out;
    KOBLVRStream trace(&out);
    GetGlobalParameters().SetTraceStream(&trace);
    GetGlobalParameters().SetTraceLevel(2);
    Operator transformations = Make(factory, 2 | 4);
    KOBWBVariable* y = factory.CreateVariable();
    factory.AddEquation(factory.CreateSum(x, y), KOBWBEqEqual, factory.CreateIntegerConstant(3));
    transformations->Run();
    KOBWBVariable* z = factory.CreateVariable();
    factory.AddEquation(factory.CreateProduct(z, y), KOBWBEqEqual, factory.CreateIntegerConstant(2));
    KOBWBEquation* last = factory.GetLastEquation();
    factory.RemoveEquation(last);
    transformations->Run();
    GetGlobalParameters().SetTraceLevel(0);
    GetGlobalParameters().SetTraceStream(nullptr);
    EXPECT_NE(out.str().find("Eq[0] = "), std::string::npos);
}

TEST(KOBWBSymbolicTransformations, ARunReplaysFromItsInputReplay) {
    // A run with its replay: the input part holds the system, the selection and the mode.
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    x->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(0.0, 4.0)));
    factory.AddEquation(factory.CreateSum(x, factory.CreateProduct(factory.CreateIntegerConstant(2), y)), KOBWBEqEqual,
                        factory.CreateIntegerConstant(10));
    KOBWBEquation* product = factory.AddEquation(factory.CreateProduct(x, y), KOBWBEqEqual, factory.CreateIntegerConstant(12));
    factory.AddEquation(factory.CreateSum(x, x), KOBWBEqLessEqual, factory.CreateConstantPi());
    std::ostringstream input, output;
    {
        KOBLVRStream replay(&input);
        Operator transformations = Make(factory, 4 | 8);
        transformations->SetEquationToSimplify(product->GetId());
        transformations->SetReplayStream(&replay);
        transformations->WriteInput(replay);
        KOBLVRStream results(&output);
        transformations->SetReplayStream(&results);
        transformations->Run();
    }
    const std::string text = input.str();
    ASSERT_NE(text.find("#!SIMPLIFY"), std::string::npos);
    ASSERT_NE(text.find("#!MODE\n12"), std::string::npos);

    // The same run on the system read back gives the same output part.
    KOBWBFactory replayed;
    KOBLVRIntArray selection;
    KOBLVRArrayKOBLVRString names, contents;
    ASSERT_TRUE(KOBWBEquations::Read(text.c_str(), replayed, selection, names, contents));
    unsigned mode = 0;
    for (int i = 0; i < names.Size(); ++i)
        if (names[i] == "#!MODE") mode = static_cast<unsigned>(std::atoi(contents[i].str()));
    EXPECT_EQ(mode, 12u);
    std::ostringstream again;
    {
        KOBLVRStream results(&again);
        Operator transformations = Make(replayed, mode);
        for (int i = 0; i < selection.Size(); ++i) transformations->SetEquationToSimplify(selection[i]);
        transformations->SetReplayStream(&results);
        transformations->Run();
    }
    const std::string original = output.str(), replayedText = again.str();
    const size_t outputPart = original.find("#!VARIABLES", original.find("#!MODE"));
    ASSERT_NE(outputPart, std::string::npos);
    EXPECT_EQ(replayedText.substr(replayedText.find("#!VARIABLES", replayedText.find("#!MODE"))),
              original.substr(outputPart));
}

TEST(KOBWBSymbolicTransformations, LargePowersAreNotExpandedPastTheReals) {
    // Expanding (x + 3)^3000 exactly took seconds of big-number products for coefficients
    // that no real holds; the power now stays as it is.
    KOBWBFactory factory;
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    factory.AddEquation(factory.CreatePower(factory.CreateSum(x, factory.CreateIntegerConstant(3)), 3000), KOBWBEqEqual, y);
    Make(factory, 2 | 4 | 8)->Run();
    // Not a linear form: the power is an atom, so nothing is eliminated.
    ASSERT_EQ(factory.GetNbOfEquations(), 1);
    KOBWBEquation* kept = factory.AddEquation(
        factory.CreateProduct(factory.CreatePower(factory.CreateSum(x, factory.CreateIntegerConstant(3)), 3000), y),
        KOBWBEqLessEqual);
    Make(factory, 4)->Run();
    x->SetExprValue(KOBWBValue(-3.0));
    y->SetExprValue(KOBWBValue(2.0));
    EXPECT_EQ(kept->GetRoot()->Eval(), 0.0);
}
