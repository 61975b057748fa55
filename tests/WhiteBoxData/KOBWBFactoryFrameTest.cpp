#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

TEST(KOBWBFactoryFrame, NamesAndLookUps) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    KOBWBVariable* z = factory.CreateVariable();
    EXPECT_EQ(x->GetName(), "va0");
    y->SetName("width");
    z->SetName("angle");
    EXPECT_EQ(factory.GetVariable("width"), y);
    EXPECT_EQ(factory.GetVariable("va0"), x);
    EXPECT_EQ(factory.GetVariable("height"), nullptr);
    z->SetName("height");
    EXPECT_EQ(factory.GetVariable("height"), z);
    EXPECT_EQ(factory.GetVariable("angle"), nullptr);
    EXPECT_EQ(factory.GetVariable(2), z);
    EXPECT_EQ(factory.GetVariable(3), nullptr);
    EXPECT_EQ(factory.GetVariable(-1), nullptr);
    EXPECT_EQ(factory.GetNextVariable(nullptr), x);
    EXPECT_EQ(factory.GetNextVariable(x), y);
    EXPECT_EQ(factory.GetNextVariable(z), nullptr);
    EXPECT_EQ(factory.GetNbOfVariables(), 3);

    EXPECT_EQ(factory.CreateConstantPi(), factory.CreateConstantPi());
    EXPECT_NE(factory.CreateRealConstant(3.0), factory.CreateRealConstant(3.0));
    EXPECT_EQ(factory.CreatePredefinedConstant(static_cast<KOBWBFactory::PredefinedConst>(3)), nullptr);
    EXPECT_DOUBLE_EQ(factory.CreateConstantDTOR()->GetExprValue().GetAsDouble(), 3.141592653589793 / 180);
    EXPECT_TRUE(factory.CreateConstantRTOD()->GetExprValue().IsAFraction());
}

TEST(KOBWBFactoryFrame, EquationListAndIds) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    EXPECT_EQ(factory.AddEquation(nullptr, KOBWBEqEqual), nullptr);
    KOBWBEquation* first = factory.AddEquation(x, KOBWBEqEqual);
    KOBWBEquation* second = factory.AddEquation(x, KOBWBEqLessEqual, nullptr);
    KOBWBEquation* third = factory.AddEquation(x, KOBWBEqGreater);
    EXPECT_EQ(first->GetId(), 0);
    EXPECT_EQ(second->GetRoot(), x);
    EXPECT_EQ(factory.GetEquationByName("eq0"), first);
    EXPECT_EQ(first->GetName(), "eq0");
    second->SetName("limit");
    EXPECT_EQ(factory.GetEquationByName("limit"), second);
    EXPECT_EQ(factory.GetEquationById(2), third);
    EXPECT_EQ(factory.GetEquationById(7), nullptr);
    EXPECT_EQ(factory.GetNextEquation(nullptr), first);
    EXPECT_EQ(factory.GetPrevEquation(nullptr), third);

    factory.RemoveEquation(second);
    EXPECT_EQ(second, nullptr);
    EXPECT_EQ(factory.GetNextEquation(first), third);
    EXPECT_EQ(factory.GetPrevEquation(third), first);
    EXPECT_EQ(factory.GetNbOfEquations(), 2);
    EXPECT_EQ(factory.GetEquationById(2), third);
    EXPECT_EQ(factory.AddEquation(x, KOBWBEqEqual)->GetId(), 3);
    EXPECT_STREQ(KOBWBGetEquationTypeText(KOBWBEqMaximize), "<maximize>");

    // Several at once: foreign, repeated and null pointers are passed over.
    KOBWBFactory other(0);
    KOBWBEquation* foreign = other.AddEquation(other.CreateVariable(), KOBWBEqEqual);
    KOBWBEquation* fourth = factory.AddEquation(x, KOBWBEqLess);
    KOBWBEquation* batch[] = {third, nullptr, foreign, fourth, third};
    KOBWBEquation* keptFourth = fourth;
    factory.RemoveEquations(5, batch);
    EXPECT_EQ(batch[0], nullptr);
    EXPECT_EQ(factory.GetNbOfEquations(), 2);
    EXPECT_EQ(factory.GetEquationById(2), nullptr);
    EXPECT_EQ(factory.GetEquationById(keptFourth == nullptr ? 0 : 4), nullptr);
    EXPECT_EQ(factory.GetNextEquation(first), factory.GetEquationById(3));
    EXPECT_EQ(factory.GetLastEquation(), factory.GetEquationById(3));
    EXPECT_EQ(other.GetNbOfEquations(), 1);
    third = nullptr;

    KOBLVRIntArray indices;
    indices.Append(0);
    first->SetTheoreticalVarList(&indices);
    KOBLVRIntArray read;
    read.Append(9);
    first->GetTheoreticalVarList(&read);
    EXPECT_EQ(read.Size(), 1);
    EXPECT_TRUE(first->AreVarConsistent());
    KOBLVRListPKOBWBVariable present;
    EXPECT_EQ(first->FindPresentVariables(present), 1);
    ASSERT_EQ(present.Size(), 1);
    EXPECT_EQ(present[0], x);
}

TEST(KOBWBFactoryFrame, PropertiesStoreOnlyWhatDiffersFromTheDefault) {
    KOBWBFactory factory(0);
    const int temporary = factory.RegisterProperty("temporary", 5);
    EXPECT_EQ(temporary, 0);
    EXPECT_EQ(factory.GetDefaultPropertyValue(temporary), 0);
    const int marked = factory.RegisterProperty("marked", 3);
    EXPECT_EQ(factory.GetDefaultPropertyValue(marked), 3);
    EXPECT_EQ(factory.GetDefaultPropertyValue(9), -1);

    KOBWBConstant* node = factory.CreateRealConstant(1.0);
    node->SetProperty(marked, 3);
    EXPECT_EQ(node->GetPropertyTableSize(), 0);
    node->SetProperty(5, 7);
    EXPECT_EQ(node->GetPropertyTableSize(), 6);
    EXPECT_EQ(node->GetPropertyTableCapacity(), 8);
    EXPECT_EQ(node->GetProperty(marked), 3);
    EXPECT_EQ(node->GetProperty(5), 7);
    node->SetProperty(marked, 4);
    EXPECT_EQ(node->GetProperty(marked), 4);
    node->SetProperty(marked, -1);
    EXPECT_EQ(node->GetProperty(marked), 3);
    EXPECT_EQ(node->GetProperty(40), -1);
}

TEST(KOBWBFactoryFrame, LeavesCompareAndClassify) {
    KOBWBFactory factory(0);
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBConstant* zero = factory.CreateIntegerConstant(0);
    KOBWBConstant* realZero = factory.CreateRealConstant(0.0);
    EXPECT_TRUE(zero->IsEqualTo(realZero));
    EXPECT_FALSE(zero->IsEqualTo(nullptr));
    EXPECT_FALSE(zero->IsEqualTo(x));
    EXPECT_TRUE(x->IsEqualTo(x));
    unsigned char isZero = 9, isOne = 9;
    realZero->IsZeroOrOne(isZero, isOne);
    EXPECT_EQ(isZero, 1);
    EXPECT_EQ(isOne, 0);
    factory.CreateRealConstant(1.0)->IsZeroOrOne(isZero, isOne);
    EXPECT_EQ(isZero, 0);
    EXPECT_EQ(isOne, 1);
    EXPECT_FALSE(x->IsConstant());
    EXPECT_TRUE(zero->IsConstant());
    EXPECT_TRUE(zero->IsFree(x));
    EXPECT_FALSE(x->IsFree(x));
    EXPECT_EQ(x->ReplaceVar(x, zero), 0);

    double preferred = 4.0;
    EXPECT_EQ(x->GetPreferedValue(preferred), 0);
    EXPECT_EQ(preferred, 4.0);
    x->SetPreferedValue(2.5);
    EXPECT_EQ(x->GetPreferedValue(preferred), 1);
    EXPECT_EQ(preferred, 2.5);
    EXPECT_EQ(x->GetDividedFlag(), 1);

    KOBWBVariable** present = nullptr;
    EXPECT_EQ(zero->FindPresentVariables(present), 0);
    EXPECT_EQ(present, nullptr);
    ASSERT_EQ(x->FindPresentVariables(present), 1);
    EXPECT_EQ(present[0], x);
    delete[] present;
}

// Both forms list each variable once, in index order, whatever the order and the
// sharing of their occurrences.
TEST(KOBWBFactoryFrame, PresentVariablesComeOnceInIndexOrder) {
    KOBWBFactory factory(0);
    KOBWBVariable* v[5];
    for (KOBWBVariable*& variable : v) variable = factory.CreateVariable();
    KOBWBExpression* shared = factory.CreateProduct(v[3], v[1]);
    KOBWBExpression* root = factory.CreateSum(factory.CreateSin(shared), factory.CreateSum(v[0], shared));
    KOBWBVariable** found = nullptr;
    ASSERT_EQ(root->FindPresentVariables(found), 3);
    EXPECT_EQ(found[0], v[0]);
    EXPECT_EQ(found[1], v[1]);
    EXPECT_EQ(found[2], v[3]);
    delete[] found;

    KOBWBEquation* equation = factory.AddEquation(root, KOBWBEqEqual);
    KOBLVRListPKOBWBVariable present;
    present.Append(v[4]);
    ASSERT_EQ(equation->FindPresentVariables(present), 1);
    ASSERT_EQ(present.Size(), 3);
    EXPECT_EQ(present[0], v[0]);
    EXPECT_EQ(present[2], v[3]);
    KOBLVRIntArray theoretical;
    for (int index : {0, 1, 4}) theoretical.Append(index);
    equation->SetTheoreticalVarList(&theoretical);
    EXPECT_FALSE(equation->AreVarConsistent());
    theoretical.Append(3);
    equation->SetTheoreticalVarList(&theoretical);
    EXPECT_TRUE(equation->AreVarConsistent());
}
