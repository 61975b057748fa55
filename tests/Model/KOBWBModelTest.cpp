#include "ModelTestSupport.h"

namespace {

KOBWBLocation At(int line, int column, int length = 1) {
    return KOBWBLocation(line, column, line, column + length);
}

// Counts the nodes it visits and fails at the variable of a given name.
class CountingVisitor : public KOBWBVisitor {
public:
    explicit CountingVisitor(const char* failAt = "") : m_failAt(failAt) {}
    long VisitModel(KOBWBModel& model) override {
        long result = KOBWBVisitContinue;
        for (KOBWBEqNode* eq = model.GetFirstEquation(); eq && result == KOBWBVisitContinue;
             eq = model.GetNextEquation(eq))
            result = eq->Accept(*this);
        return result;
    }
    long VisitConstant(KOBWBConstNode& node) override {
        ++visited;
        return KOBWBVisitor::VisitConstant(node);
    }
    long VisitVariable(KOBWBVarNode& node) override {
        ++visited;
        names += node.GetName().str();
        return node.GetName() == m_failAt ? KOBWBModelFailure : KOBWBVisitContinue;
    }
    long VisitOperator(KOBWBOpNode& node) override {
        ++visited;
        return KOBWBVisitor::VisitOperator(node);
    }
    int visited = 0;
    std::string names;

private:
    const char* m_failAt;
};

} // namespace

TEST(KOBWBLocation, MovesAlongTheTextAndWritesItself) {
    KOBWBLocation location;
    EXPECT_EQ(std::string(location.Write().str()), "(1,0,1,0)");
    location.IncrementLastColumn(3);
    location.Step();
    location.IncrementLastColumn(2);
    EXPECT_EQ(std::string(location.Write().str()), "(1,3,1,5)");
    location.NextLine();
    location.Step();
    location.IncrementLastColumn(3);
    EXPECT_EQ(std::string(location.Write().str()), "(2,0,2,3)");
    int l1 = 0, c1 = 0, l2 = 0, c2 = 0;
    location.GetLocation(&l1, &c1, &l2, &c2);
    EXPECT_TRUE(location.Compare(KOBWBLocation(l1, c1, l2, c2)));
    EXPECT_FALSE(location.Compare(KOBWBLocation(l1, c1, l2, c2 + 1)));
    location.Reset();
    EXPECT_TRUE(location.Compare(KOBWBLocation()));
}

TEST(KOBWBModel, BuildsEquationsWithIdsAndLinks) {
    KOBWBModel model(3);
    EXPECT_EQ(model.GetLevel(), 3);
    KOBWBVarNode* x = model.CreateVariable(At(1, 0), "x");
    KOBWBConstNode* ten = model.CreateConstant(At(1, 4, 5), KOBWBValue(10), At(1, 7, 2), "mm");
    KOBWBEqNode* first = model.AddEquation(At(1, 0, 9), x, KOBWBEqEqual, ten);
    KOBWBConstNode* one = model.CreateConstant(At(2, 0), KOBWBValue(1.5));
    KOBWBEqNode* second = model.AddEquation(one);
    ASSERT_TRUE(first && second);
    EXPECT_EQ(first->GetId(), 1);
    EXPECT_EQ(second->GetId(), 2);
    EXPECT_EQ(second->GetWBEqType(), KOBWBEqUndefined);
    EXPECT_EQ(second->GetRightTerm(), nullptr);
    EXPECT_TRUE(second->GetLocation().Compare(one->GetLocation()));
    EXPECT_EQ(model.GetFirstEquation(), first);
    EXPECT_EQ(model.GetLastEquation(), second);
    EXPECT_EQ(model.GetNextEquation(first), second);
    EXPECT_EQ(model.GetPrevEquation(second), first);
    EXPECT_EQ(model.GetEquationById(2), second);
    EXPECT_EQ(model.GetEquationById(7), nullptr);
    EXPECT_EQ(model.GetNbOfEquations(), 2);
    // Terms of an equation have no parent; a unit decides a constant's class.
    EXPECT_EQ(x->GetParentNode(), nullptr);
    EXPECT_EQ(x->GetItsIndexAsChild(), -1);
    EXPECT_TRUE(ten->IsADimensionalConstant());
    EXPECT_EQ(ten->GetUnitType(), "Distance");
    EXPECT_EQ(one->GetUnit(), "None");
    EXPECT_EQ(one->GetUnitType(), "None");
    EXPECT_FALSE(first->IsConstant());
    EXPECT_TRUE(second->IsConstant());
    // Equations need a left term.
    EXPECT_EQ(model.AddEquation(nullptr), nullptr);
    EXPECT_EQ(model.AddEquation(At(3, 0), nullptr, KOBWBEqEqual, x), nullptr);
}

TEST(KOBWBModel, OperatorsAdoptTheirChildrenAndRejectBadInput) {
    KOBWBModel model;
    KOBWBNode* a = model.CreateVariable(At(1, 0), "a");
    KOBWBNode* two = model.CreateConstant(At(1, 4), KOBWBValue(2));
    KOBWBNode* three = model.CreateConstant(At(1, 6), KOBWBValue(3));
    KOBLVRListPKOBWBNode children;
    children.Append(a);
    children.Append(two);
    KOBWBOpNode* sum = model.CreateOperator(At(1, 0, 5), KOBWBSumType, children);
    ASSERT_NE(sum, nullptr);
    EXPECT_EQ(sum->GetNbOfChildren(), 2);
    EXPECT_EQ(sum->GetChild(1), a);
    EXPECT_EQ(sum->GetChild(2), two);
    EXPECT_EQ(sum->GetChild(0), nullptr);
    EXPECT_EQ(sum->GetChild(3), nullptr);
    EXPECT_EQ(a->GetParentNode(), sum);
    EXPECT_EQ(two->GetItsIndexAsChild(), 1);
    EXPECT_FALSE(sum->IsConstant());
    KOBWBNode* const pair[2] = {two, three};
    KOBWBOpNode* product =
        model.CreateOperator(At(1, 4, 3), KOBWBProductType, KOBWBNoComparison, 2, pair);
    ASSERT_NE(product, nullptr);
    EXPECT_TRUE(product->IsConstant());
    // A null child or a code that is no operator builds nothing.
    children.Append(nullptr);
    EXPECT_EQ(model.CreateOperator(At(1, 0), KOBWBSumType, children), nullptr);
    KOBLVRListPKOBWBNode none;
    EXPECT_EQ(model.CreateOperator(At(1, 0), KOBWBConstantType, none), nullptr);
    EXPECT_EQ(model.CreateOperator(At(1, 0), static_cast<KOBWBExpressionType>(48), none), nullptr);
    EXPECT_EQ(model.CreateVariable(At(1, 0), ""), nullptr);
}

TEST(KOBWBModel, FindsVariablesByNameAndPlace) {
    KOBWBModel model;
    KOBWBVarNode* x1 = model.CreateVariable(At(1, 0), "x");
    KOBWBVarNode* y = model.CreateVariable(At(1, 4), "y");
    KOBWBVarNode* x2 = model.CreateVariable(At(2, 0), "x");
    // Created out of text order: found all the same.
    KOBWBVarNode* x0 = model.CreateVariable(At(0, 9), "x");
    EXPECT_EQ(model.GetNbOfVariables(), 4);
    EXPECT_EQ(model.GetNbOfDifferentVariables(), 2);
    EXPECT_EQ(model.GetVariable("x"), x1);
    EXPECT_EQ(model.GetVariable("z"), nullptr);
    EXPECT_EQ(model.GetVariable("x", At(2, 0)), x2);
    EXPECT_EQ(model.GetVariable("x", At(0, 9)), x0);
    EXPECT_EQ(model.GetVariable("x", At(1, 4)), nullptr);
    EXPECT_EQ(model.GetVariable("y", At(1, 4)), y);
    KOBLVRListPKOBWBVarNode occurrences;
    EXPECT_EQ(model.GetVariable("x", occurrences), 3);
    EXPECT_EQ(occurrences[0], x1);
    EXPECT_EQ(x1->GetNameIndex(), x2->GetNameIndex());
    EXPECT_NE(x1->GetNameIndex(), y->GetNameIndex());
    EXPECT_EQ(model.GetNbOfVariableNames(), 2);
    occurrences.RemoveAll();
    EXPECT_EQ(model.GetOccurrences(y->GetNameIndex(), occurrences), 1);
    EXPECT_EQ(model.GetOccurrences(5, occurrences), 0);
}

TEST(KOBWBModel, RemovesEquationsWithTheirNodes) {
    ParsedModel parsed("a = b + 1; c = a * 2; d = 3;");
    KOBWBModel& model = parsed.model;
    ASSERT_EQ(model.GetNbOfEquations(), 3);
    KOBWBEqNode* middle = model.GetEquationById(2);
    EXPECT_EQ(model.RemoveEquation(middle), KOBWBModelOk);
    EXPECT_EQ(middle, nullptr);
    EXPECT_EQ(model.GetNbOfEquations(), 2);
    EXPECT_EQ(model.GetEquationById(2), nullptr);
    EXPECT_EQ(model.GetNextEquation(model.GetFirstEquation()), model.GetEquationById(3));
    EXPECT_EQ(model.GetNbOfVariables(), 3);
    EXPECT_EQ(model.GetNbOfDifferentVariables(), 3);
    EXPECT_EQ(model.GetVariable("c"), nullptr);
    KOBWBEqNode* last = model.GetLastEquation();
    EXPECT_EQ(model.RemoveEquation(last), KOBWBModelOk);
    KOBWBEqNode* first = model.GetFirstEquation();
    EXPECT_EQ(model.RemoveEquation(first), KOBWBModelOk);
    EXPECT_EQ(model.GetFirstEquation(), nullptr);
    EXPECT_EQ(model.GetLastEquation(), nullptr);
    EXPECT_EQ(model.GetNbOfVariables(), 0);
    // An equation of another model, or none, is refused.
    KOBWBModel other;
    KOBWBEqNode* foreign = other.AddEquation(other.CreateVariable(At(1, 0), "x"));
    EXPECT_EQ(model.RemoveEquation(foreign), KOBWBModelFailure);
    EXPECT_NE(foreign, nullptr);
    KOBWBEqNode* none = nullptr;
    EXPECT_EQ(model.RemoveEquation(none), KOBWBModelFailure);
}

TEST(KOBWBModel, RemovingManyEquationsKeepsTheRestIntact) {
    std::string text;
    for (int i = 0; i < 500; ++i)
        text += "x" + std::to_string(i) + " = y + " + std::to_string(i) + ";\n";
    ParsedModel parsed(text.c_str());
    KOBWBModel& model = parsed.model;
    for (int id = 1; id <= 500; id += 2) {
        KOBWBEqNode* equation = model.GetEquationById(id);
        ASSERT_EQ(model.RemoveEquation(equation), KOBWBModelOk);
    }
    // New nodes after the removals live alongside the old ones.
    model.AddEquation(model.CreateVariable(At(600, 0), "z"));
    EXPECT_EQ(model.GetNbOfEquations(), 251);
    KOBLVRListPKOBWBVarNode ys;
    EXPECT_EQ(model.GetVariable("y", ys), 250);
    EXPECT_EQ(ParsedModel::Text(model.GetEquationById(500)->GetRightTerm()), "10(y,499)");
}

TEST(KOBWBModel, DeclaresAndFindsBlackBoxes) {
    KOBWBModel model;
    TestBlackBox f("f");
    KOBLVRListPKOBWBNode arguments;
    arguments.Append(model.CreateVariable(At(1, 2), "x"));
    KOBWBOpNode* call = model.DeclareBlackBox(At(1, 0, 4), &f, arguments);
    ASSERT_NE(call, nullptr);
    EXPECT_EQ(call->GetType(), KOBWBBlackBoxType);
    EXPECT_EQ(call->GetBlackBox(), &f);
    EXPECT_FALSE(call->IsConstant());
    KOBLVRListPKOBWBNode none;
    KOBWBOpNode* again = model.GetBBxOp(At(2, 0, 3), "f", none);
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->GetBlackBox(), &f);
    EXPECT_EQ(again->GetNbOfChildren(), 0);
    KOBWBOpNode* unknown = model.GetBBxOp(At(3, 0, 3), "g", none);
    ASSERT_NE(unknown, nullptr);
    EXPECT_EQ(unknown->GetBlackBox(), nullptr);
    EXPECT_EQ(unknown->GetCalledName(), "g");
    model.DeclareBlackBox(At(4, 0), &f, none);
    EXPECT_EQ(model.DeclareBlackBox(At(4, 0), nullptr, none), nullptr);
    KOBLVRListPKOBWBBlackBox declared;
    model.GetBlackBoxes(declared);
    ASSERT_EQ(declared.Size(), 1);
    EXPECT_EQ(declared[0], &f);
}

TEST(KOBWBNode, ComparesTreesAndListsTheirVariables) {
    ParsedModel parsed("a + sin(b) * 2 mm = c; a + sin(b) * 2 mm = c; a + sin(b) * 2 cm = c;"
                       "a + sin(b) * 2.0 mm = c; b + a;");
    EXPECT_TRUE(parsed.Equation(0)->IsEqual(parsed.Equation(1)));
    EXPECT_TRUE(parsed.Equation(0)->GetLeftTerm()->IsEqual(parsed.Equation(1)->GetLeftTerm()));
    EXPECT_FALSE(parsed.Equation(0)->IsEqual(parsed.Equation(2)));
    EXPECT_FALSE(parsed.Equation(0)->IsEqual(parsed.Equation(3)));
    EXPECT_FALSE(parsed.Equation(0)->IsEqual(parsed.Equation(4)));
    EXPECT_FALSE(parsed.Equation(0)->IsEqual(nullptr));
    KOBLVRListPKOBLVRString names;
    parsed.Equation(4)->FillPresentVariables(names);
    parsed.Equation(0)->FillPresentVariables(names);
    ASSERT_EQ(names.Size(), 3);
    EXPECT_EQ(*names[0], "b");
    EXPECT_EQ(*names[1], "a");
    EXPECT_EQ(*names[2], "c");
}

TEST(KOBWBVisitor, WalksChildrenFromOneAndStopsAtFailure) {
    ParsedModel parsed("a + sin(b) = c * 2; d = e; 5;");
    CountingVisitor all;
    EXPECT_EQ(parsed.Equation(0)->Accept(all), KOBWBVisitContinue);
    EXPECT_EQ(all.visited, 7);
    EXPECT_EQ(all.names, "abc");
    // A failure stops the walk: c and 2 are never visited.
    CountingVisitor failing("b");
    EXPECT_EQ(parsed.Equation(0)->Accept(failing), KOBWBModelFailure);
    EXPECT_EQ(failing.names, "ab");
    EXPECT_EQ(failing.visited, 4);
    // An equation of a single term lacks the right term the base walk needs.
    CountingVisitor single;
    EXPECT_EQ(parsed.Equation(2)->Accept(single), KOBWBModelFailure);
    EXPECT_EQ(single.visited, 0);
    // The model's own walk is for concrete visitors to give.
    KOBWBVisitor base;
    EXPECT_EQ(parsed.model.Accept(base), KOBWBModelFailure);
    CountingVisitor whole;
    EXPECT_EQ(parsed.model.Accept(whole), KOBWBModelFailure);
    EXPECT_EQ(whole.names, "abcde");
}
