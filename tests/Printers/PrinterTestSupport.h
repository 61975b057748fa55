#ifndef PrinterTestSupport_h
#define PrinterTestSupport_h

#include "KOBWBx.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <utility>
#include <vector>

// Parses model text (its messages captured) and converts it into the factory; the number of errors the
// parse reported, or -1 when an equation could not be converted.
inline int FillFromText(const std::string& text, KOBWBFactory& factory) {
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    const int errors = KOBWBParser::Parse(text.c_str(), model, ids, messenger, nullptr);
    testing::internal::GetCapturedStderr();
    testing::internal::GetCapturedStdout();
    if (errors != 0) return errors;
    const int parsed = ids.Size();
    KOBLVRListPKOBWBVarNode variableNodes;
    KOBLVRListPKOBWBVariable factoryVariables;
    return model.FillFactory(factory, ids, -1, variableNodes, factoryVariables) == parsed ? 0 : -1;
}

inline bool Close(double u, double v) {
    if (u != u || v != v) return (u != u) == (v != v);
    return u == v || std::fabs(u - v) <= 1e-9 * std::fmax(1.0, std::fmax(std::fabs(u), std::fabs(v)));
}

// Whether the node is a constant of one known value, which it then gives.
inline bool IsPointConstant(const KOBWBExpression* node, double& value) {
    if (!node || !node->IsConstant()) return false;
    const KOBWBRealInterval x = const_cast<KOBWBExpression*>(node)->GetValue().GetAsRealInterval();
    value = 0.5 * (x.lower + x.upper);
    return Close(x.lower, x.upper);
}

inline bool SameValue(const KOBWBExpression* a, const KOBWBExpression* b) {
    const KOBWBRealInterval x = const_cast<KOBWBExpression*>(a)->GetValue().GetAsRealInterval();
    const KOBWBRealInterval y = const_cast<KOBWBExpression*>(b)->GetValue().GetAsRealInterval();
    return Close(x.lower, y.lower) && Close(x.upper, y.upper);
}

// The operands of a node. Those of a sum or product are read with nested sums
// (products) opened and their constant operands of one value folded into one number, so that
// ((a + b) + 1) and (a + b + 1), or 5*(3*Pi)*x and 15*Pi*x, compare equal.
struct Operands {
    std::vector<const KOBWBExpression*> others;
    double constant = 0;

    explicit Operands(const KOBWBExpression* node) {
        const KOBWBExpressionType type = node->GetType();
        if (type != KOBWBSumType && type != KOBWBProductType) {
            for (int i = 0; i < node->GetNbOfChildren(); ++i) others.push_back(node->GetChild(i));
            return;
        }
        constant = type == KOBWBSumType ? 0.0 : 1.0;
        std::vector<const KOBWBExpression*> pending{node};
        while (!pending.empty()) {
            const KOBWBExpression* next = pending.back();
            pending.pop_back();
            double value = 0;
            if (IsPointConstant(next, value)) {
                constant = type == KOBWBSumType ? constant + value : constant * value;
            } else if (next == node || (next && next->GetType() == type)) {
                for (int i = next->GetNbOfChildren() - 1; i >= 0; --i) pending.push_back(next->GetChild(i));
            } else {
                others.push_back(next);
            }
        }
    }
};

// The same operators over variables of the same names, and constant
// sub-expressions of the same value; sums and products compared with their
// nested sums and products opened. Explains the first difference in why.
inline bool SameStructure(const KOBWBExpression* a, const KOBWBExpression* b, std::string& why) {
    std::vector<std::pair<const KOBWBExpression*, const KOBWBExpression*>> pending{{a, b}};
    while (!pending.empty()) {
        const auto [x, y] = pending.back();
        pending.pop_back();
        if (!x || !y) {
            if (x != y) why = "a null node";
            if (x != y) return false;
            continue;
        }
        if (x->IsConstant() && y->IsConstant()) {
            if (SameValue(x, y)) continue;
            why = "constant values differ: " + KOBWBEquationPrinter::ToText(x) + " and " + KOBWBEquationPrinter::ToText(y);
            return false;
        }
        if (x->GetType() != y->GetType()) {
            why = "operators differ: " + KOBWBEquationPrinter::ToText(x) + " and " + KOBWBEquationPrinter::ToText(y);
            return false;
        }
        if (x->GetType() == KOBWBVariableType) {
            auto* u = const_cast<KOBWBVariable*>(static_cast<const KOBWBVariable*>(x));
            auto* v = const_cast<KOBWBVariable*>(static_cast<const KOBWBVariable*>(y));
            if (std::string(u->GetName().str()) == v->GetName().str()) continue;
            why = std::string("variables differ: ") + u->GetName().str() + " and " + v->GetName().str();
            return false;
        }
        const Operands xo(x);
        const Operands yo(y);
        const std::vector<const KOBWBExpression*>& xs = xo.others;
        const std::vector<const KOBWBExpression*>& ys = yo.others;
        if (!Close(xo.constant, yo.constant)) {
            why = "constant operands differ (" + std::to_string(xo.constant) + " and " + std::to_string(yo.constant) +
                  "): " + KOBWBEquationPrinter::ToText(x) + " and " + KOBWBEquationPrinter::ToText(y);
            return false;
        }
        if (xs.size() != ys.size()) {
            why = "operand counts differ: " + KOBWBEquationPrinter::ToText(x) + " and " + KOBWBEquationPrinter::ToText(y);
            return false;
        }
        for (size_t i = 0; i < xs.size(); ++i) pending.emplace_back(xs[i], ys[i]);
    }
    return true;
}

// An equation's root without the "+ 0" that an equation written "e = 0" gets.
inline const KOBWBExpression* WithoutZeroTerm(const KOBWBExpression* root) {
    if (!root || root->GetType() != KOBWBSumType || root->GetNbOfChildren() != 2) return root;
    const KOBWBExpression* last = root->GetChild(1);
    if (last->GetType() != KOBWBConstantType || last->GetExprValue().GetAsDouble() != 0.0) return root;
    return root->GetChild(0);
}

// Prints the factory, reads the text back into a new factory and compares the
// two systems equation by equation.
inline ::testing::AssertionResult RoundTrips(const KOBWBFactory& original) {
    const std::string text = KOBWBEquationPrinter::ToText(original);
    KOBWBFactory copy;
    if (FillFromText(text, copy) != 0) return ::testing::AssertionFailure() << "the text does not read back:\n" << text;
    if (copy.GetNbOfEquations() != original.GetNbOfEquations())
        return ::testing::AssertionFailure() << "equation counts differ:\n" << text;
    KOBWBEquation* b = copy.GetFirstEquation();
    for (KOBWBEquation* a = original.GetFirstEquation(); a; a = original.GetNextEquation(a), b = copy.GetNextEquation(b)) {
        std::string why;
        if (a->GetType() != b->GetType())
            return ::testing::AssertionFailure() << "relations differ: " << KOBWBEquationPrinter::ToText(a);
        if (!SameStructure(WithoutZeroTerm(a->GetRoot()), WithoutZeroTerm(b->GetRoot()), why))
            return ::testing::AssertionFailure() << why << "\n in " << KOBWBEquationPrinter::ToText(a) << "\n and "
                                                 << KOBWBEquationPrinter::ToText(b);
    }
    return ::testing::AssertionSuccess();
}

// A random expression of the operators the model language writes.
class RandomGraphs {
public:
    RandomGraphs(KOBWBFactory& f, unsigned seed) : m_f(f), m_random(seed) {
        for (const char* name : {"a", "b", "c", "d"}) {
            KOBWBVariable* v = f.CreateVariable();
            v->SetName(name);
            m_variables.push_back(v);
        }
    }

    KOBWBExpression* Make(int depth) {
        if (depth == 0 || Pick(5) == 0) return Leaf();
        KOBWBExpression* a = Make(depth - 1);
        switch (Pick(11)) {
        case 0: return m_f.CreateSum(a, Make(depth - 1));
        case 1: return m_f.CreateSub(a, Make(depth - 1));
        case 2: return m_f.CreateProduct(a, Make(depth - 1));
        case 3: return m_f.CreateQuotient(a, Make(depth - 1));
        case 4: return m_f.CreatePower(a, Make(depth - 1));
        case 5: return m_f.CreateOpposite(a);
        case 6: return m_f.CreateSin(a);
        case 7: return m_f.CreateMod(a, Make(depth - 1));
        case 8: return m_f.CreateMin(a, Make(depth - 1));
        case 9: {
            KOBWBExpression* terms[] = {a, Make(depth - 1), Make(depth - 1)};
            return m_f.CreateSum(3, terms);
        }
        default: {
            KOBWBExpression* factors[] = {Leaf(), a, Make(depth - 1)};
            return m_f.CreateProduct(3, factors);
        }
        }
    }

    KOBWBEquationType Relation() {
        const KOBWBEquationType relations[] = {KOBWBEqEqual, KOBWBEqNotEqual, KOBWBEqLessEqual,
                                               KOBWBEqLess, KOBWBEqGreaterEqual, KOBWBEqGreater};
        return relations[Pick(6)];
    }

private:
    int Pick(int n) { return std::uniform_int_distribution<int>(0, n - 1)(m_random); }

    KOBWBExpression* Leaf() {
        switch (Pick(6)) {
        case 0: return m_f.CreateIntegerConstant(Pick(21) - 10);
        case 1: return m_f.CreateRealConstant((Pick(2001) - 1000) / 64.0 + 0.1);
        case 2: return m_f.CreateConstant(KOBWBValue(KOBWBCreateFraction(Pick(9) - 4, 1 + Pick(6), 1, 1)));
        default: return m_variables[static_cast<size_t>(Pick(4))];
        }
    }

    KOBWBFactory& m_f;
    std::mt19937 m_random;
    std::vector<KOBWBVariable*> m_variables;
};

// How many times piece occurs in text.
inline size_t Count(const std::string& text, const std::string& piece) {
    size_t count = 0;
    for (size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1)) ++count;
    return count;
}

// Two equations sharing sin(x): sin(x) + 1 = 0 and sin(x)*(1/4) <= 0, with x at 0
// and the first root evaluated, so that buffers hold values. Returns sin(x).
inline KOBWBExpression* BuildSharedSine(KOBWBFactory& f) {
    KOBWBVariable* x = f.CreateVariable();
    x->SetName("x");
    KOBWBExpression* shared = f.CreateSin(x);
    KOBWBEquation* first = f.AddEquation(f.CreateSum(shared, f.CreateIntegerConstant(1)), KOBWBEqEqual);
    f.AddEquation(f.CreateProduct(shared, f.CreateConstant(KOBWBValue(KOBWBCreateFraction(1, 4, 1, 1)))),
                  KOBWBEqLessEqual);
    x->SetExprValue(KOBWBValue(KOBWBCreateRealInterval(0, 0)));
    first->GetRoot()->GetValue();
    return shared;
}

#endif
