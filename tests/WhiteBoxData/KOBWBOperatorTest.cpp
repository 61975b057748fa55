#include "KOBLVRAssert.h"
#include "KOBWBBlackBox.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

double ConstantOf(const KOBWBExpression* node) { return node->GetExprValue().GetAsDouble(); }

std::vector<std::string> assertions;
void Record(const char* condition, const char* file, unsigned line) {
    assertions.push_back(std::string(condition) + " " + file + " " + std::to_string(line));
}

} // namespace

TEST(KOBWBOperators, SubtractionFoldsNegationIntoConstants) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    EXPECT_EQ(factory.CreateSub(x, nullptr), x);

    KOBWBConstant* three = factory.CreateIntegerConstant(3);
    KOBWBExpression* minusThree = factory.CreateSub(x, three);
    ASSERT_EQ(minusThree->GetType(), KOBWBSumType);
    EXPECT_EQ(minusThree->GetChild(0), x);
    EXPECT_EQ(ConstantOf(minusThree->GetChild(1)), -3);
    EXPECT_EQ(ConstantOf(three), 3);

    KOBWBExpression* twoY = factory.CreateProduct(factory.CreateIntegerConstant(2), y);
    KOBWBExpression* minusTwoY = factory.CreateSub(x, twoY)->GetChild(1);
    ASSERT_EQ(minusTwoY->GetType(), KOBWBProductType);
    EXPECT_EQ(ConstantOf(minusTwoY->GetChild(0)), -2);
    EXPECT_EQ(minusTwoY->GetChild(1), y);

    KOBWBExpression* quotient = factory.CreateQuotient(factory.CreateRealConstant(1.5), y);
    KOBWBExpression* negatedQuotient = factory.CreateSub(x, quotient)->GetChild(1);
    ASSERT_EQ(negatedQuotient->GetType(), KOBWBQuotientType);
    EXPECT_EQ(ConstantOf(negatedQuotient->GetChild(0)), -1.5);

    KOBWBExpression* plain = factory.CreateSub(x, y)->GetChild(1);
    EXPECT_EQ(plain->GetType(), KOBWBProductType);
    EXPECT_EQ(ConstantOf(plain->GetChild(0)), -1);

    const int before = factory.GetNbOfExpressions();
    EXPECT_EQ(factory.CreateSub(nullptr, three), nullptr);
    EXPECT_EQ(factory.GetNbOfExpressions(), before);
    EXPECT_EQ(factory.CreateSub(nullptr, y), nullptr);
    EXPECT_EQ(factory.GetNbOfExpressions(), before + 2);

    KOBWBExpression* pi = factory.CreateConstantPi();
    KOBWBExpression* minusPi = factory.CreateSub(x, pi)->GetChild(1);
    EXPECT_TRUE(minusPi->GetExprValue().IsAFraction());
    EXPECT_EQ(minusPi->GetExprValue().GetAsFraction().numerator, -1);
}

TEST(KOBWBOperators, NormalFormsAndNullChildren) {
    KOBWBFactory factory(0);
    KOBWBVariable* a = factory.CreateVariable();
    KOBWBVariable* b = factory.CreateVariable();
    KOBWBExpression* less = factory.CreateLess(a, b);
    ASSERT_EQ(less->GetType(), KOBWBNotType);
    EXPECT_EQ(less->GetChild(0)->GetType(), KOBWBLessEqualType);
    EXPECT_EQ(less->GetChild(0)->GetChild(0), b);
    EXPECT_EQ(factory.CreateGreaterEqual(a, b)->GetChild(0), b);
    EXPECT_EQ(factory.CreateGreater(a, b)->GetChild(0)->GetChild(0), a);

    const int before = factory.GetNbOfExpressions();
    KOBWBExpression* children[] = {a, nullptr};
    EXPECT_EQ(factory.CreateSum(a, nullptr), nullptr);
    EXPECT_EQ(factory.CreateAlgebraicOperator(KOBWBSumType, 1, children), nullptr);
    EXPECT_EQ(factory.CreateAlgebraicOperator(KOBWBSumType, 2, children), nullptr);
    EXPECT_EQ(factory.CreateSin(nullptr), nullptr);
    EXPECT_EQ(factory.CreateAnd(a, nullptr), nullptr);
    EXPECT_EQ(factory.CreateIfThenElse(a, b, nullptr), nullptr);
    EXPECT_EQ(factory.CreateOperator(KOBWBSumType, 0, nullptr), nullptr);
    EXPECT_EQ(factory.CreateOperator(KOBWBIfThenElseType, 2, children), nullptr);
    EXPECT_EQ(factory.CreateOperator(nullptr), nullptr);
    EXPECT_EQ(factory.CreateOperator(KOBWBQuotientType, a), nullptr);
    EXPECT_EQ(factory.CreateOperator(static_cast<KOBWBExpressionType>(45), a), nullptr);
    EXPECT_EQ(factory.GetNbOfExpressions(), before);
    EXPECT_NE(factory.CreatePower(nullptr, 2), factory.CreatePower(a, 2));
    EXPECT_EQ(factory.GetNbOfExpressions(), before + 3);

    KOBWBExpression* step[] = {a, factory.CreateRealConstant(0), factory.CreateRealConstant(1),
                               factory.CreateRealConstant(2), factory.CreateRealConstant(3)};
    KOBWBExpression* stepNode = factory.CreateOperator(KOBWBStepType, 5, step);
    ASSERT_NE(stepNode, nullptr);
    EXPECT_EQ(stepNode->GetNbOfParameters(), 4);
    EXPECT_EQ(stepNode->GetParameter(2), 2);
    stepNode->SetParameter(4, 9);
    EXPECT_EQ(stepNode->GetParameter(3), 3);
    EXPECT_EQ(factory.CreateSqrt(a)->GetNbOfParameters(), 0);
    step[3] = b;
    EXPECT_EQ(factory.CreateOperator(KOBWBStepType, 5, step), nullptr);
    KOBWBExpression* copy = factory.CreateOperator(stepNode);
    EXPECT_EQ(copy->GetParameter(3), 3);

    EXPECT_EQ(factory.CreateOperator(KOBWBAtan2Type, 2, children + 0), nullptr);
    children[1] = b;
    EXPECT_EQ(factory.CreateOperator(KOBWBAtan2Type, 2, children)->GetType(), KOBWBAtan2Type);
    EXPECT_EQ(factory.CreateOperator(KOBWBOrType, 2, children)->GetType(), KOBWBOrType);
    EXPECT_EQ(factory.CreateOperator(KOBWBNotType, 1, children)->GetType(), KOBWBNotType);
    EXPECT_STREQ(KOBWBGetExpressionTypeName(KOBWBAtan2Type), "atan2");
}

TEST(KOBWBOperators, StructuralEqualityAndEditing) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    EXPECT_TRUE(factory.CreateSum(x, y)->IsEqualTo(factory.CreateSum(y, x)));
    EXPECT_FALSE(factory.CreateQuotient(x, y)->IsEqualTo(factory.CreateQuotient(y, x)));
    EXPECT_FALSE(factory.CreateAnd(x, y)->IsEqualTo(factory.CreateAnd(y, x)));
    KOBWBExpression* left = factory.CreateProduct(factory.CreateRealConstant(2), factory.CreateSin(x));
    KOBWBExpression* right = factory.CreateProduct(factory.CreateSin(x), factory.CreateIntegerConstant(2));
    EXPECT_TRUE(left->IsEqualTo(right));
    KOBWBExpression* xx[] = {x, x, y};
    KOBWBExpression* xy[] = {x, y, y};
    EXPECT_FALSE(factory.CreateSum(3, xx)->IsEqualTo(factory.CreateSum(3, xy)));
    EXPECT_FALSE(left->IsEqualTo(nullptr));

    KOBWBExpression* sum = factory.CreateSum(x, y);
    EXPECT_EQ(sum->AddChild(nullptr), 1);
    EXPECT_EQ(sum->GetNbOfChildren(), 2);
    sum->AddChild(factory.CreateRealConstant(1));
    EXPECT_EQ(sum->GetNbOfChildren(), 3);
    EXPECT_EQ(sum->RemoveChild(3), 0);
    EXPECT_EQ(sum->RemoveChild(0), 1);
    EXPECT_EQ(sum->GetChild(0), y);
    EXPECT_EQ(sum->ReplaceChild(0, nullptr), 0);
    EXPECT_EQ(sum->ReplaceChild(5, x), 0);
    EXPECT_EQ(sum->GetChild(-1), nullptr);
    EXPECT_EQ(factory.CreateSin(x)->AddChild(y), 0);

    KOBWBExpression* nested = factory.CreateSum(factory.CreateSin(x), factory.CreateProduct(x, y));
    EXPECT_FALSE(nested->IsFree(x));
    EXPECT_EQ(nested->ReplaceVar(x, y), 1);
    EXPECT_TRUE(nested->IsFree(x));
    EXPECT_FALSE(nested->IsConstant());
    EXPECT_TRUE(factory.CreateSin(factory.CreateRealConstant(1))->IsConstant());
}

TEST(KOBWBOperators, ConstructorsReportNullChildren) {
    KOBWBFactory factory(0);
    KOBWBBBx box;
    assertions.clear();
    const KOBLVRAssertHandler previous = KOBLVRSetAssertHandler(Record);
    KOBWBExpression* children[] = {factory.CreateVariable(), nullptr};
    KOBWBExpression* node = factory.DeclareBlackBox(&box, 2, children, 0);
    factory.DeclareBlackBox(&box, 1, nullptr, 0);
    KOBLVRSetAssertHandler(previous);
    ASSERT_EQ(assertions.size(), 2u);
    EXPECT_EQ(assertions[0], "iapChildren[i] WhiteBoxData/src/KOBWBOperator 38");
    EXPECT_EQ(assertions[1], "iapChildren WhiteBoxData/src/KOBWBOperator 34");
    EXPECT_EQ(node->Eval(), 0.0);
    EXPECT_EQ(factory.DeclareBlackBox(nullptr, 0, nullptr, 1), nullptr);
    EXPECT_EQ(factory.GetBlackBoxByName("BBx1"), &box);
}

TEST(KOBWBFactoryServices, TemporaryStorageKeepsOnlyWhatEquationsReach) {
    KOBWBFactory factory(0);
    const int mark = factory.RegisterProperty("mark", 0);
    KOBWBVariable* x = factory.CreateVariable();
    factory.UseTemporaryStorage(1);
    KOBWBExpression* scratch = factory.CreateSin(x);
    KOBWBExpression* root = factory.CreateSum(x, factory.CreateRealConstant(2));
    root->SetProperty(mark, 7);
    EXPECT_EQ(scratch->GetProperty(0), 1);
    KOBWBEquation* equation = factory.AddEquation(root, KOBWBEqEqual);
    const int permanent = factory.GetNbOfExpressions();
    factory.UseTemporaryStorage(0);
    KOBWBExpression* kept = equation->GetRoot();
    EXPECT_NE(kept, root);
    EXPECT_EQ(kept->GetProperty(mark), 7);
    EXPECT_EQ(kept->GetProperty(0), 0);
    EXPECT_EQ(kept->GetChild(0), x);
    EXPECT_EQ(kept->GetChild(1)->GetProperty(0), 0);
    EXPECT_EQ(factory.GetNbOfExpressions(), permanent + 2);
    x->SetExprValue(KOBWBValue(1.0));
    EXPECT_EQ(kept->Eval(), 3.0);
}

TEST(KOBWBFactoryServices, CloneEquationsRenamesVariables) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    x->SetName("x");
    y->SetName("y");
    KOBWBExpression* shared = factory.CreateSin(x);
    KOBWBEquation* source = factory.AddEquation(factory.CreateSum(shared, factory.CreateProduct(shared, y)), KOBWBEqLess);
    KOBLVRIntArray ids, newIds;
    ids.Append(source->GetId());
    ids.Append(42);
    KOBLVRArrayKOBLVRString oldNames, newNames;
    oldNames.Append("x");
    newNames.Append("x2");
    oldNames.Append("ghost");
    newNames.Append("ghost2");
    EXPECT_EQ(factory.CloneEquations(ids, newIds, oldNames, newNames), 0);
    ASSERT_EQ(newIds.Size(), 2);
    EXPECT_EQ(newIds[1], -1);
    EXPECT_EQ(factory.GetNbOfVariables(), 3);
    KOBWBEquation* clone = factory.GetEquationById(newIds[0]);
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(clone->GetType(), KOBWBEqLess);
    KOBWBVariable* x2 = factory.GetVariable("x2");
    KOBWBExpression* root = clone->GetRoot();
    EXPECT_EQ(root->GetChild(0)->GetChild(0), x2);
    EXPECT_EQ(root->GetChild(0), root->GetChild(1)->GetChild(0));
    EXPECT_EQ(root->GetChild(1)->GetChild(1), y);
    EXPECT_NE(root->GetChild(0), shared);

    KOBLVRArrayKOBLVRString shorter;
    factory.CloneEquations(ids, newIds, shorter, newNames);
    EXPECT_EQ(factory.GetNbOfEquations(), 2);

    KOBWBExpression* before = source->GetRoot();
    source->DuplicateRoot();
    EXPECT_NE(source->GetRoot(), before);
    EXPECT_TRUE(source->GetRoot()->IsEqualTo(before));
}

// Children of order-free operators are matched greedily, each taking the first
// equal child not yet taken, also when equality within the tolerance does not carry
// over from one value to the next; long chains and graphs whose paths multiply are
// compared without recursion and in the time of their nodes.
TEST(KOBWBOperators, StructuralEqualityOfLargeGraphs) {
    KOBWBFactory factory(0);
    factory.SetTolerance(0.1);
    KOBWBExpression* a = factory.CreateRealConstant(1.0);
    KOBWBExpression* b = factory.CreateRealConstant(1.06);
    KOBWBExpression* c = factory.CreateRealConstant(1.12);
    ASSERT_TRUE(a->IsEqualTo(b));
    ASSERT_TRUE(b->IsEqualTo(c));
    ASSERT_FALSE(a->IsEqualTo(c));
    EXPECT_TRUE(factory.CreateSum(a, b)->IsEqualTo(factory.CreateSum(b, c)));
    EXPECT_FALSE(factory.CreateSum(b, a)->IsEqualTo(factory.CreateSum(b, c)));

    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    KOBWBExpression* first = x;
    KOBWBExpression* second = x;
    KOBWBExpression* other = y;
    for (int i = 0; i < 200000; ++i) {
        first = factory.CreateSum(first, i % 2 ? x : y);
        second = factory.CreateSum(i % 2 ? x : y, second);
        other = factory.CreateSum(other, i % 2 ? x : y);
    }
    EXPECT_TRUE(first->IsEqualTo(second));
    EXPECT_FALSE(first->IsEqualTo(other));

    KOBWBExpression* left = x;
    KOBWBExpression* right = x;
    for (int level = 0; level < 60; ++level) {
        left = factory.CreateProduct(left, left);
        right = factory.CreateProduct(right, right);
    }
    EXPECT_TRUE(left->IsEqualTo(right));
    EXPECT_FALSE(left->IsEqualTo(factory.CreateProduct(right, y)));
}
