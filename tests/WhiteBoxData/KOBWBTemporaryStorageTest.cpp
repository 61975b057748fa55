#include "KOBWBBlackBox.h"
#include "KOBWBBlackBoxOperator.h"
#include "KOBWBEquation.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <unordered_set>
#include <vector>

namespace {

// Whether every node reached from start, start included, is one of the factory's
// permanent nodes: a node left out was destroyed with the temporary storage.
bool ReachesOnlyPermanentNodes(const KOBWBFactory& factory, KOBWBExpression* start) {
    std::unordered_set<const KOBWBExpression*> permanent;
    for (int i = 0; i < factory.GetNbOfExpressions(); ++i) permanent.insert(factory.GetExpression(i));
    std::unordered_set<const KOBWBExpression*> seen;
    std::vector<KOBWBExpression*> pending{start};
    while (!pending.empty()) {
        KOBWBExpression* node = pending.back();
        pending.pop_back();
        if (!seen.insert(node).second) continue;
        if (!permanent.count(node)) return false;
        for (int i = 0; i < node->GetNbOfChildren(); ++i) pending.push_back(node->GetChild(i));
    }
    return true;
}

// The two ways out of temporary mode: copying what lasts, or keeping it in place.
enum class SwitchOff { Copying, Committing };

void End(KOBWBFactory& factory, SwitchOff way) {
    if (way == SwitchOff::Copying)
        factory.UseTemporaryStorage(0);
    else
        factory.CommitTemporaryStorage();
}

const char* Name(SwitchOff way) { return way == SwitchOff::Copying ? "copying" : "committing"; }

} // namespace

TEST(KOBWBTemporaryStorage, KeepsEachSharedNodeOnce) {
    for (SwitchOff way : {SwitchOff::Copying, SwitchOff::Committing}) {
        SCOPED_TRACE(Name(way));
        KOBWBFactory factory(0);
        KOBWBVariable* x = factory.CreateVariable();
        factory.UseTemporaryStorage(1);
        // 60 levels of t = t + t: 2^60 paths from the root down to x.
        const int levels = 60;
        KOBWBExpression* t = x;
        for (int i = 0; i < levels; ++i) t = factory.CreateSum(t, t);
        KOBWBExpression* half = t->GetChild(0);
        KOBWBEquation* whole = factory.AddEquation(t, KOBWBEqEqual);
        KOBWBEquation* part = factory.AddEquation(factory.CreateSin(half), KOBWBEqEqual);
        const int permanent = factory.GetNbOfExpressions();
        End(factory, way);

        EXPECT_EQ(factory.GetNbOfExpressions(), permanent + levels + 1);
        // Committing keeps the nodes themselves; copying replaces every one of them.
        EXPECT_EQ(whole->GetRoot() == t, way == SwitchOff::Committing);
        KOBWBExpression* node = whole->GetRoot();
        EXPECT_EQ(part->GetRoot()->GetChild(0), node->GetChild(0));
        for (int depth = 0; depth < levels; ++depth) {
            ASSERT_EQ(node->GetChild(0), node->GetChild(1)) << "depth " << depth;
            node = node->GetChild(0);
        }
        EXPECT_EQ(node, x);
        EXPECT_TRUE(ReachesOnlyPermanentNodes(factory, whole->GetRoot()));
        x->SetExprValue(KOBWBValue(1.0));
        EXPECT_EQ(whole->GetRoot()->Eval(), std::ldexp(1.0, levels));
    }
}

TEST(KOBWBTemporaryStorage, DuplicateRootAfterSwitchOffReadsNoDestroyedNode) {
    for (SwitchOff way : {SwitchOff::Copying, SwitchOff::Committing}) {
        SCOPED_TRACE(Name(way));
        KOBWBFactory factory(0);
        KOBWBVariable* x = factory.CreateVariable();
        KOBWBVariable* y = factory.CreateVariable();
        factory.UseTemporaryStorage(1);
        KOBWBExpression* sum = factory.CreateSum(x, y);
        KOBWBEquation* underRoot = factory.AddEquation(factory.CreateSqrt(sum), KOBWBEqEqual);
        KOBWBEquation* sumItself = factory.AddEquation(sum, KOBWBEqEqual);
        ASSERT_TRUE(sum->RemoveChild(0));
        End(factory, way);

        ASSERT_NE(sumItself->GetRoot(), nullptr);
        EXPECT_EQ(sumItself->GetRoot()->GetNbOfChildren(), 1);
        EXPECT_EQ(sumItself->GetRoot()->GetChild(0), y);
        EXPECT_EQ(underRoot->GetRoot()->GetChild(0), sumItself->GetRoot());
        EXPECT_TRUE(ReachesOnlyPermanentNodes(factory, underRoot->GetRoot()));
        underRoot->DuplicateRoot();
        y->SetExprValue(KOBWBValue(9.0));
        EXPECT_EQ(underRoot->GetRoot()->Eval(), 3.0);
        EXPECT_EQ(sumItself->GetRoot()->Eval(), 9.0);
    }
}

TEST(KOBWBTemporaryStorage, KeepsWhatPermanentNodesAndBlackBoxesReach) {
    for (SwitchOff way : {SwitchOff::Copying, SwitchOff::Committing}) {
        SCOPED_TRACE(Name(way));
        KOBWBFactory factory(0);
        KOBWBVariable* x = factory.CreateVariable();
        KOBWBExpression* held = factory.CreateCos(x);
        KOBWBBBx box;
        KOBWBExpression* arguments[] = {x};
        KOBWBExpression* call = factory.DeclareBlackBox(&box, 1, arguments, 0);
        factory.UseTemporaryStorage(1);
        // A permanent node given a temporary child, and a derivative black box whose
        // node no equation uses.
        ASSERT_TRUE(held->ReplaceChild(0, factory.CreateProduct(x, factory.CreateRealConstant(2.0))));
        KOBWBExpression* derivative = call->Differentiate(x);
        ASSERT_NE(derivative, nullptr);
        KOBWBBlackBox* derivativeBox = static_cast<KOBWBBlackBoxOperator*>(derivative)->GetBlackBox();
        End(factory, way);

        EXPECT_TRUE(ReachesOnlyPermanentNodes(factory, held));
        EXPECT_EQ(held->GetChild(0)->GetProperty(0), 0);
        x->SetExprValue(KOBWBValue(0.0));
        EXPECT_EQ(held->Eval(), 1.0);
        KOBWBBlackBoxOperator* derivativeNode = derivativeBox->GetOperator();
        EXPECT_TRUE(ReachesOnlyPermanentNodes(factory, derivativeNode));
        EXPECT_EQ(derivativeNode->GetBlackBox(), derivativeBox);
        EXPECT_EQ(call->Differentiate(x), derivativeNode);
        EXPECT_EQ(box.GetOperator(), call);
    }
}

// Random edits in temporary mode, then switching it off: whatever was done, every
// node an equation or a permanent node reaches is permanent.
TEST(KOBWBTemporaryStorage, RandomEditsLeaveNoDestroyedNodeReachable) {
    std::mt19937 random(20240611);
    for (int round = 0; round < 80; ++round) {
        const SwitchOff way = round % 2 ? SwitchOff::Committing : SwitchOff::Copying;
        KOBWBFactory factory(0);
        std::vector<KOBWBExpression*> nodes;
        for (int i = 0; i < 3; ++i) nodes.push_back(factory.CreateVariable());
        nodes.push_back(factory.CreateSum(nodes[0], nodes[1]));
        nodes.push_back(factory.CreateSqrt(nodes[3]));
        factory.AddEquation(nodes[4], KOBWBEqEqual);
        factory.UseTemporaryStorage(1);
        auto any = [&]() { return nodes[random() % nodes.size()]; };
        for (int step = 0; step < 60; ++step) {
            KOBWBExpression* a = any();
            KOBWBExpression* b = any();
            switch (random() % 7) {
            case 0: nodes.push_back(factory.CreateSum(a, b)); break;
            case 1: nodes.push_back(factory.CreateProduct(a, b)); break;
            case 2: nodes.push_back(factory.CreateSqrt(a)); break;
            case 3: a->RemoveChild(0); break;
            case 4: a->ReplaceChild(0, b); break;
            case 5: factory.AddEquation(a, KOBWBEqEqual); break;
            default:
                if (KOBWBEquation* equation = factory.GetLastEquation()) equation->DuplicateRoot();
                break;
            }
        }
        End(factory, way);
        for (KOBWBEquation* e = factory.GetFirstEquation(); e; e = e->GetNext())
            ASSERT_TRUE(ReachesOnlyPermanentNodes(factory, e->GetRoot())) << "round " << round;
        for (int i = 0; i < factory.GetNbOfExpressions(); ++i)
            ASSERT_TRUE(ReachesOnlyPermanentNodes(factory, factory.GetExpression(i))) << "round " << round;
    }
}
