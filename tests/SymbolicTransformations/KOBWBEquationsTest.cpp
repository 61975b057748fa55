#include "KOBLVRStream.h"
#include "KOBWBBlackBox.h"
#include "KOBWBBlackBoxOperator.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBEquations.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The replay of factory's system as the stream writes it, with a section of the
// caller's own after the system's.
std::string Replay(KOBWBFactory& factory, int kind, const KOBLVRIntArray* simplify = nullptr) {
    std::ostringstream out;
    KOBLVRStream stream(&out);
    const KOBLVRStorage::ReplayPart part =
        kind == KOBWBEquations::Output ? KOBLVRStorage::Output : KOBLVRStorage::Input;
    KOBWBEquations(factory, kind, simplify).Write(stream);
    stream.GetStorage().AddSection("#!MODE", "", "6", part, 5);
    stream.WriteSections(part);
    return out.str();
}

bool Read(const std::string& text, KOBWBFactory& factory) {
    KOBLVRIntArray simplify;
    KOBLVRArrayKOBLVRString names, contents;
    return KOBWBEquations::Read(text.c_str(), factory, simplify, names, contents);
}

KOBWBValue IntegerEnum(std::vector<int> elements) {
    KOBWBIntegerEnum domain;
    domain.SetSize(static_cast<int>(elements.size()));
    for (size_t i = 0; i < elements.size(); ++i) domain.Set(static_cast<int>(i), elements[i]);
    return KOBWBValue(domain);
}

// A system with every node kind and every value kind, shared nodes, a sum left
// with one child, an equation without root and gaps in the equation ids.
void BuildSystem(KOBWBFactory& factory, KOBWBBlackBox& box) {
    KOBWBVariable* x = factory.CreateVariable();
    KOBWBVariable* y = factory.CreateVariable();
    KOBWBVariable* z = factory.CreateVariable();
    KOBWBVariable* b = factory.CreateVariable();
    x->SetName("x");
    y->SetName("odd \"name\"\\ with\ttabs,\nnewline and \x01");
    z->Fix(1);
    z->SetPreferedValue(-0.1);
    z->SetDividedFlag(-3);
    x->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(-1.5, 0.1)));
    y->SetExprValue(KOBWBValue(KOBWBCreateIntegerInterval(-4, 7)));
    z->SetExprValue(IntegerEnum({-2, 3, 9}));
    b->SetExprValue(KOBWBValue(KOBWBUndef));

    KOBWBRealEnum reals;
    reals.SetAsRealInterval({0.25, 1e-300});
    KOBWBRealEnum realList;
    realList.SetNil();
    realList.Insert(2.5, 0.0);
    realList.Insert(-1e300, 0.0);
    KOBWBIntegerEnum nothing;
    nothing.SetNil();
    KOBWBIntegerEnum range;
    range.SetAsIntegerInterval(KOBWBCreateIntegerInterval(0, 9));
    const KOBWBValue constants[] = {KOBWBValue(0.1),
                                    KOBWBValue(-0.0),
                                    KOBWBValue(std::numeric_limits<double>::denorm_min()),
                                    KOBWBValue(-17),
                                    KOBWBValue(KOBWBCreateFraction(5, 6, 1, 0)),
                                    KOBWBValue(KOBWBCreateFraction(180, 7, -2, 3)),
                                    KOBWBValue(reals),
                                    KOBWBValue(realList),
                                    KOBWBValue(nothing),
                                    KOBWBValue(range),
                                    KOBWBValue(KOBWBIntegerEnum()),
                                    IntegerEnum({}),
                                    KOBWBValue(KOBWBContr),
                                    KOBWBValue()};
    std::vector<KOBWBExpression*> leaves;
    for (const KOBWBValue& value : constants) leaves.push_back(factory.CreateConstant(value));
    KOBWBExpression* shared = factory.CreateSin(x);
    factory.AddEquation(factory.CreateSum(static_cast<int>(leaves.size()), leaves.data()), KOBWBEqLessEqual);

    // Every operator code, over as few children as it takes.
    std::vector<KOBWBExpression*> operators;
    for (int code = KOBWBNotType; code <= KOBWBIfThenElseType; ++code) {
        if (code == KOBWBStepType) continue;
        KOBWBExpression* children[] = {shared, y, z};
        KOBWBExpression* node = nullptr;
        for (int n = 1; !node && n <= 3; ++n)
            node = factory.CreateOperator(static_cast<KOBWBExpressionType>(code), n, children);
        ASSERT_NE(node, nullptr) << code;
        operators.push_back(node);
    }
    KOBWBExpression* step = factory.CreateUnaryOperator(KOBWBStepType, x);
    for (int i = 0; i < 4; ++i) step->SetParameter(i, i * 0.3 - 1.0);
    operators.push_back(step);
    KOBWBExpression* arguments[] = {x, y};
    operators.push_back(factory.DeclareBlackBox(&box, 2, arguments, 0));
    KOBWBExpression* lonely = factory.CreateProduct(x, shared);
    lonely->RemoveChild(0);
    operators.push_back(lonely);

    KOBWBEquation* removed = factory.AddEquation(x, KOBWBEqEqual);
    factory.RemoveEquation(removed);
    KOBWBExpression* maximum =
        factory.CreateOperator(KOBWBMaxType, static_cast<int>(operators.size()), operators.data());
    KOBWBEquation* all = factory.AddEquation(maximum, KOBWBEqMaximize);
    KOBLVRIntArray theoretical;
    theoretical.Append(0);
    theoretical.Append(2);
    all->SetTheoreticalVarList(&theoretical);
    all->SetName("all kinds");
    for (int i = 0; i < 3; ++i) {
        removed = factory.AddEquation(x, KOBWBEqEqual);
        factory.RemoveEquation(removed);
    }
    factory.AddEquation(factory.CreateQuotient(shared, lonely), KOBWBEqNotEqual);
    factory.AddEquation(x, KOBWBEqUndefined)->SetRoot(nullptr);
}

} // namespace

TEST(KOBWBEquations, RoundTripKeepsEveryNodeAndValueKind) {
    KOBWBFactory source(0);
    KOBWBBBx box;
    box.SetName("lookup");
    BuildSystem(source, box);
    KOBLVRIntArray simplify;
    simplify.Append(7);
    simplify.Append(0);
    simplify.Append(7);
    const std::string text = Replay(source, KOBWBEquations::Input, &simplify);

    KOBWBFactory target(0);
    KOBWBBBx targetBox;
    targetBox.SetName("lookup");
    target.DeclareBlackBox(&targetBox, 0, nullptr, 0);
    KOBLVRIntArray readList;
    KOBLVRArrayKOBLVRString names, contents;
    ASSERT_TRUE(KOBWBEquations::Read(text.c_str(), target, readList, names, contents)) << text;
    EXPECT_EQ(Replay(target, KOBWBEquations::Input, &readList), text);

    ASSERT_EQ(readList.Size(), 3);
    EXPECT_EQ(readList[0], 7);
    EXPECT_EQ(readList[1], 0);
    ASSERT_EQ(names.Size(), 1);
    EXPECT_TRUE(names[0] == "#!MODE");
    EXPECT_TRUE(contents[0] == "6");

    ASSERT_EQ(target.GetNbOfEquations(), 4);
    EXPECT_EQ(target.GetEquationById(2)->GetType(), KOBWBEqMaximize);
    EXPECT_TRUE(target.GetEquationById(2)->GetName() == "all kinds");
    EXPECT_EQ(target.GetEquationById(1), nullptr);
    EXPECT_EQ(target.GetEquationById(6)->GetRoot()->GetChild(1)->GetNbOfChildren(), 1);
    EXPECT_EQ(target.GetEquationById(7)->GetRoot(), nullptr);
    KOBWBExpression* sharedSin = target.GetEquationById(6)->GetRoot()->GetChild(0);
    EXPECT_EQ(target.GetEquationById(6)->GetRoot()->GetChild(1)->GetChild(0), sharedSin);
    EXPECT_EQ(target.GetVariable(2)->IsFixed(), 1);
    double preferred = 0.0;
    EXPECT_TRUE(target.GetVariable(2)->GetPreferedValue(preferred));
    EXPECT_EQ(preferred, -0.1);
    EXPECT_TRUE(target.GetVariable(1)->GetName() == source.GetVariable(1)->GetName());
    EXPECT_EQ(targetBox.GetOperator()->GetNbOfChildren(), 2);

    // Reals come back bit for bit: the first equation holds the constants.
    KOBWBExpression* constants = target.GetEquationById(0)->GetRoot();
    EXPECT_EQ(constants->GetChild(0)->GetExprValue().GetAsDouble(), 0.1);
    EXPECT_TRUE(std::signbit(constants->GetChild(1)->GetExprValue().GetAsDouble()));
    EXPECT_EQ(constants->GetChild(2)->GetExprValue().GetAsDouble(), std::numeric_limits<double>::denorm_min());
    EXPECT_TRUE(constants->GetChild(4)->GetExprValue().IsAFraction());
}

TEST(KOBWBEquations, DeepAndSharedGraphsAreWrittenOnceAndReadWithoutRecursion) {
    KOBWBFactory source(0);
    KOBWBVariable* x = source.CreateVariable();
    KOBWBExpression* chain = x;
    for (int i = 0; i < 200000; ++i) chain = source.CreateSin(chain);
    KOBWBExpression* doubled = x;
    for (int i = 0; i < 60; ++i) doubled = source.CreateSum(doubled, doubled);
    source.AddEquation(chain, KOBWBEqEqual);
    source.AddEquation(source.CreateProduct(doubled, chain), KOBWBEqEqual);
    const std::string text = Replay(source, KOBWBEquations::Output);
    EXPECT_LT(text.size(), 2000000u);

    KOBWBFactory target(0);
    ASSERT_TRUE(Read(text, target));
    EXPECT_EQ(Replay(target, KOBWBEquations::Output), text);
    KOBWBExpression* root = target.GetEquationById(1)->GetRoot();
    EXPECT_EQ(root->GetChild(1), target.GetEquationById(0)->GetRoot());
    EXPECT_EQ(root->GetChild(0)->GetChild(0), root->GetChild(0)->GetChild(1));
}

TEST(KOBWBEquations, FormsAndPartsOfTheReplay) {
    KOBWBFactory source(0);
    KOBWBVariable* x = source.CreateVariable();
    x->SetExprValue(KOBWBValue(2));
    source.AddEquation(source.CreateSqrt(x), KOBWBEqGreater);
    KOBLVRIntArray simplify;
    simplify.Append(0);

    // An input part, then an output part after the system changed: the reader takes
    // the input part, with its own sections and none of the output's.
    std::ostringstream out;
    KOBLVRStream stream(&out);
    KOBWBEquations(source, KOBWBEquations::Input, &simplify).Write(stream);
    stream.GetStorage().AddSection("#!MODE", "", "2", KOBLVRStorage::Input, 5);
    stream.WriteSections(KOBLVRStorage::Input);
    x->SetExprValue(KOBWBValue(3.5));
    stream.GetStorage().AddSection("#!INCONSISTENCIES", "", "NOTFOUND", KOBLVRStorage::Output, 0);
    KOBWBEquations(source, KOBWBEquations::Output, &simplify).Write(stream);
    stream.WriteSections(KOBLVRStorage::Output);
    const std::string text = out.str();
    EXPECT_EQ(text.find("#!SIMPLIFY"), text.rfind("#!SIMPLIFY"));

    KOBWBFactory target(0);
    KOBLVRIntArray readList;
    KOBLVRArrayKOBLVRString names, contents;
    ASSERT_TRUE(KOBWBEquations::Read(("preamble\n" + text).c_str(), target, readList, names, contents));
    EXPECT_EQ(target.GetNextVariable(nullptr)->GetExprValue().GetAsInteger(), 2);
    ASSERT_EQ(readList.Size(), 1);
    ASSERT_GE(names.Size(), 1);
    EXPECT_TRUE(names[0] == "#!MODE");
    EXPECT_TRUE(contents[0] == "2");

    const std::string output = text.substr(text.find("#!INCONSISTENCIES"));
    KOBWBFactory fromOutput(0);
    ASSERT_TRUE(KOBWBEquations::Read(output.c_str(), fromOutput, readList, names, contents));
    EXPECT_EQ(readList.Size(), 0);
    EXPECT_EQ(fromOutput.GetNextVariable(nullptr)->GetExprValue().GetAsDouble(), 3.5);
    EXPECT_EQ(fromOutput.GetEquationById(0)->GetType(), KOBWBEqGreater);

    KOBWBFactory empty(0);
    const std::string nothing = Replay(empty, KOBWBEquations::Input, &readList);
    KOBWBFactory fromNothing(0);
    ASSERT_TRUE(Read(nothing, fromNothing)) << nothing;
    EXPECT_EQ(Replay(fromNothing, KOBWBEquations::Input), nothing);
}

TEST(KOBWBEquations, MalformedTextFailsCleanly) {
    const std::string head = "#!VARIABLES\n0 \"x\" fixed=0 divided=1 preferred=none\n#!EQUATIONS\n";
    const std::string tail = "\n#!VALUES\n0 R1\n";
    const char* badEquations[] = {"0 \"e\" = [] foo(v0)",
                                  "0 \"e\" = [] sqrt(v0, v0)",
                                  "0 \"e\" = [] /(v0)",
                                  "0 \"e\" = [] sin(@1)",
                                  "0 \"e\" = [] @1=+(v0, @1)",
                                  "0 \"e\" = [] @2=sin(v0)",
                                  "0 \"e\" = [] v7",
                                  "0 \"e\" = [] RI[1,",
                                  "0 \"e\" = [] IE{1,,2}",
                                  "0 \"e\" = [] Bmaybe",
                                  "0 \"e\" = [] F1/2pi",
                                  "0 \"e = [] v0",
                                  "0 \"\\q\" = [] v0",
                                  "0 \"\\x00\" = [] v0",
                                  "0 \"e\" ~ [] v0",
                                  "0 \"e\" = [1, v0",
                                  "0 \"e\" = [] sin(v0) v0",
                                  "0 \"e\" = [] sin(v0",
                                  "0 \"e\" = [] blackbox[\"unknown\"](v0)",
                                  "0 \"e\" = [] step[1,2,3](v0)",
                                  "1 \"e\" = [] v0\n1 \"f\" = [] v0",
                                  "2000000000 \"e\" = [] v0"};
    for (const char* equations : badEquations) {
        KOBWBFactory factory(0);
        EXPECT_FALSE(Read(head + equations + tail, factory)) << equations;
    }
    const std::string good = head + "3 \"e\" = [] +(v0, R1)" + tail;
    KOBWBFactory reference(0);
    ASSERT_TRUE(Read(good, reference));
    EXPECT_FALSE(Read(good, reference));
    KOBLVRIntArray list;
    KOBLVRArrayKOBLVRString names, contents;
    EXPECT_FALSE(KOBWBEquations::Read(nullptr, reference, list, names, contents));
    const char* badVariables[] = {"1 \"x\" fixed=0 divided=1 preferred=none", "0 \"x\" fixed=0 divided=1",
                                  "0 \"x\" fixed=0 divided=1 preferred=abc"};
    for (const char* variables : badVariables) {
        KOBWBFactory factory(0);
        EXPECT_FALSE(Read(std::string("#!VARIABLES\n") + variables + "\n#!EQUATIONS\n#!VALUES\n", factory));
    }
    for (const char* text : {"#!VARIABLES\n#!EQUATIONS\n", "#!VARIABLES\n#!EQUATIONS\n#!VALUES\n3 R1\n",
                             "#!VARIABLES\n#!EQUATIONS\n#!VALUES\n#!SIMPLIFY\nx\n"}) {
        KOBWBFactory factory(0);
        EXPECT_FALSE(Read(text, factory)) << text;
    }
    // Every cut of a good text reads or fails, and never reads past its end.
    for (size_t length = 0; length < good.size(); ++length) {
        KOBWBFactory factory(0);
        Read(good.substr(0, length), factory);
    }
    // Nor does a rich text with characters changed at random.
    KOBWBFactory source(0);
    KOBWBBBx box;
    box.SetName("lookup");
    BuildSystem(source, box);
    const std::string rich = Replay(source, KOBWBEquations::Input);
    std::mt19937 random(7);
    const char replacements[] = "@=(),[]{}\"v0123456789-.eIRFBU #!\n";
    for (int round = 0; round < 300; ++round) {
        std::string changed = rich;
        for (int edit = 0; edit < 3; ++edit)
            changed[random() % changed.size()] = replacements[random() % (sizeof replacements - 1)];
        KOBWBFactory factory(0);
        KOBWBBBx targetBox;
        targetBox.SetName("lookup");
        factory.DeclareBlackBox(&targetBox, 0, nullptr, 0);
        Read(changed, factory);
    }
}
