// Printer round trip: bytes read as model text that converts into a factory are
// printed, and the text is read back into a second factory, which must hold the same
// system; printing the second factory must give the same text again.
//
// "The same system" is what the printer promises for a factory's text:
// - the same number of equations, in the same order, each with the same relation;
// - the same operators with the same number of operands, over variables of the same
//   names. Sums and products are compared with their nested sums (products) opened,
//   since the text may bring them back flattened or nested differently;
// - constants of the same value: the same kind (integer, real, exact fraction of a
//   power of Pi) and the same number, bit for bit for reals. A constant that the
//   language has no single literal for (Pi/4, 3*Pi) may come back as a sub-expression
//   over constants only, or as several operands of a product, whose value must then
//   be the constant's. Systems with constants the language cannot write at all are
//   not compared;
// - an equation with a relation whose root is not a sum ending with a constant term
//   is written "root relation 0", so its copy's root may have one more term than the
//   original's: a last 0.
//
// The same system is also written as MathML, which must be one well-formed document
// with MathML's layout elements holding what they must.

#include "KOBWBx.h"
#include "XmlChecker.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace {

// Reads the text into the factory; false when the text has errors or an equation
// does not convert.
bool Fill(const std::string& text, KOBWBFactory& factory) {
    KOBWBModel model;
    KOBLVRIntArray ids;
    KOBWBParserMessenger messenger;
    messenger.SetEchoToStandardError(false);
    if (KOBWBParser::Parse(text.c_str(), model, ids, messenger, nullptr) != 0) return false;
    const int parsed = ids.Size();
    KOBLVRListPKOBWBVarNode names;
    KOBLVRListPKOBWBVariable variables;
    return model.FillFactory(factory, ids, -1, names, variables) == parsed;
}

// Whether the model language writes the value: an integer or a single real within the
// library's range, or an exact fraction of a power of Pi. A real literal beyond that
// range reads as every real, the interval that the printer shows as "[a, b]" and no
// text reads back as; an integer beyond it (a unit's factor can take one there) is the
// "any" or "nil" integer, which reads back as an interval too. Systems holding such
// values are not compared.
bool IsWritable(const KOBWBValue& value) {
    if (value.IsAFraction()) return true;
    switch (value.GetType()) {
    case KOBWBIntegerValue:
        return value.GetAsInteger() >= -KOBWBMaxInteger && value.GetAsInteger() <= KOBWBMaxInteger;
    case KOBWBRealValue:
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval interval = value.GetAsRealInterval();
        return interval.lower == interval.upper && std::fabs(interval.lower) <= KOBWBMaxReal;
    }
    default: return false;
    }
}

bool HasOnlyWritableConstants(const KOBWBFactory& factory) {
    std::vector<const KOBWBExpression*> pending;
    for (const KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = equation->GetNext())
        pending.push_back(equation->GetRoot());
    while (!pending.empty()) {
        const KOBWBExpression* node = pending.back();
        pending.pop_back();
        if (!node) continue;
        if (node->GetType() == KOBWBConstantType && !IsWritable(node->GetExprValue())) return false;
        for (int i = 0; i < node->GetNbOfChildren(); ++i) pending.push_back(node->GetChild(i));
    }
    return true;
}

[[noreturn]] void Fail(const std::string& why, const std::string& first, const std::string& second) {
    std::fprintf(stderr, "printer round trip: %s\n--- printed:\n%s--- printed again:\n%s", why.c_str(),
                 first.c_str(), second.c_str());
    std::abort();
}

bool IsSum(const KOBWBExpression* node) { return node && node->GetType() == KOBWBSumType; }

// The operands of a node; those of a sum or product with nested sums (products) opened.
std::vector<const KOBWBExpression*> Operands(const KOBWBExpression* node) {
    const KOBWBExpressionType type = node->GetType();
    std::vector<const KOBWBExpression*> operands;
    if (type != KOBWBSumType && type != KOBWBProductType) {
        for (int i = 0; i < node->GetNbOfChildren(); ++i) operands.push_back(node->GetChild(i));
        return operands;
    }
    std::vector<const KOBWBExpression*> pending{node};
    while (!pending.empty()) {
        const KOBWBExpression* next = pending.back();
        pending.pop_back();
        if (next == node || (next && next->GetType() == type && next->GetNbOfChildren() > 0)) {
            for (int i = next->GetNbOfChildren() - 1; i >= 0; --i) pending.push_back(next->GetChild(i));
        } else {
            operands.push_back(next);
        }
    }
    return operands;
}

// Exact comparison of two values of the kinds a model's constants take.
bool SameValue(const KOBWBValue& a, const KOBWBValue& b) {
    if (a.GetType() != b.GetType() || a.IsAFraction() != b.IsAFraction()) return false;
    if (a.IsAFraction()) {
        const KOBWBFraction x = a.GetAsFraction();
        const KOBWBFraction y = b.GetAsFraction();
        return x.powerOfPi == y.powerOfPi &&
               static_cast<long long>(x.numerator) * y.denominator ==
                   static_cast<long long>(y.numerator) * x.denominator;
    }
    switch (a.GetType()) {
    case KOBWBIntegerValue: return a.GetAsInteger() == b.GetAsInteger();
    case KOBWBRealValue:
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval x = a.GetAsRealInterval();
        const KOBWBRealInterval y = b.GetAsRealInterval();
        return x.lower == y.lower && x.upper == y.upper;
    }
    default: return false;
    }
}

std::string Text(const KOBWBExpression* node) { return KOBWBEquationPrinter::ToText(node); }

using Pairs = std::vector<std::pair<const KOBWBExpression*, const KOBWBExpression*>>;

// Pairs the original's operands of a sum or product with the copy's. A constant of the
// original may come back as a sub-expression over constants, and as several operands
// when its text is itself a product (x*(3*Pi) is a product of x, 3 and Pi once nested
// products are opened): it takes the shortest run of the copy's constant operands whose
// sum (product) is its value.
bool PairOperands(const std::vector<const KOBWBExpression*>& xs, const std::vector<const KOBWBExpression*>& ys,
                  bool product, Pairs& pending, std::string& why) {
    size_t j = 0;
    for (const KOBWBExpression* x : xs) {
        if (j == ys.size()) {
            why = "the copy has fewer operands, none for " + Text(x);
            return false;
        }
        if (!x || x->GetType() != KOBWBConstantType || !ys[j] || !ys[j]->IsConstant()) {
            pending.emplace_back(x, ys[j++]);
            continue;
        }
        const KOBWBEnvironment& environment = x->GetEnvironment();
        KOBWBValue value = const_cast<KOBWBExpression*>(ys[j])->GetValue();
        size_t end = j + 1;
        while (!SameValue(x->GetExprValue(), value) && end < ys.size() && ys[end] && ys[end]->IsConstant()) {
            const KOBWBValue next = const_cast<KOBWBExpression*>(ys[end++])->GetValue();
            value = product ? KOBWBMul(environment, value, next) : KOBWBSum(environment, value, next);
        }
        if (!SameValue(x->GetExprValue(), value)) {
            why = "constant " + Text(x) + " read back as " + Text(ys[j]);
            return false;
        }
        j = end;
    }
    if (j == ys.size()) return true;
    why = "the copy has more operands, from " + Text(ys[j]);
    return false;
}

// Compares the pairs of the original's and the copy's nodes; explains the first
// difference in why.
bool SameStructure(Pairs pending, std::string& why) {
    while (!pending.empty()) {
        const auto [a, b] = pending.back();
        pending.pop_back();
        if (!a || !b) {
            if (a == b) continue;
            why = "a null node against " + Text(a ? a : b);
            return false;
        }
        if (a->GetType() == KOBWBConstantType) {
            if (b->IsConstant() && SameValue(a->GetExprValue(), const_cast<KOBWBExpression*>(b)->GetValue())) continue;
            why = "constant " + Text(a) + " read back as " + Text(b);
            return false;
        }
        if (a->GetType() != b->GetType()) {
            why = "operators differ: " + Text(a) + " read back as " + Text(b);
            return false;
        }
        const KOBWBExpressionType type = a->GetType();
        if (type == KOBWBVariableType) {
            const std::string x = const_cast<KOBWBVariable*>(static_cast<const KOBWBVariable*>(a))->GetName().str();
            const std::string y = const_cast<KOBWBVariable*>(static_cast<const KOBWBVariable*>(b))->GetName().str();
            if (x == y) continue;
            why = "variable " + x + " read back as " + y;
            return false;
        }
        if (type == KOBWBSumType || type == KOBWBProductType) {
            if (!PairOperands(Operands(a), Operands(b), type == KOBWBProductType, pending, why)) {
                why += " in " + Text(a);
                return false;
            }
            continue;
        }
        if (a->GetNbOfChildren() != b->GetNbOfChildren()) {
            why = "operand counts differ: " + Text(a) + " read back as " + Text(b);
            return false;
        }
        for (int i = 0; i < a->GetNbOfChildren(); ++i) pending.emplace_back(a->GetChild(i), b->GetChild(i));
    }
    return true;
}

bool IsZero(const KOBWBExpression* node) {
    if (!node || node->GetType() != KOBWBConstantType) return false;
    const KOBWBValue& value = node->GetExprValue();
    return value.GetType() == KOBWBIntegerValue && value.GetAsInteger() == 0;
}

// The terms of an equation's root: the operands of a sum, or the root alone.
std::vector<const KOBWBExpression*> Terms(const KOBWBExpression* root) {
    if (IsSum(root)) return Operands(root);
    return {root};
}

bool SameEquation(const KOBWBEquation* original, const KOBWBEquation* copy, std::string& why) {
    if (original->GetType() != copy->GetType()) {
        why = "relations differ: " + KOBWBEquationPrinter::ToText(original);
        return false;
    }
    const std::vector<const KOBWBExpression*> expected = Terms(original->GetRoot());
    std::vector<const KOBWBExpression*> terms = Terms(copy->GetRoot());
    // An equation written "root relation 0" reads back as root - 0.
    if (original->GetType() != KOBWBEqUndefined && !expected.empty() && !terms.empty() && !IsZero(expected.back()) &&
        IsZero(terms.back()))
        terms.pop_back();
    Pairs pending;
    return PairOperands(expected, terms, false, pending, why) && SameStructure(pending, why);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    KOBWBFactory original;
    if (!Fill(std::string(reinterpret_cast<const char*>(data), size), original) ||
        !HasOnlyWritableConstants(original))
        return 0;
    const std::string printed = KOBWBEquationPrinter::ToText(original);
    KOBWBFactory copy;
    if (!Fill(printed, copy)) Fail("the text does not read back", printed, "");
    const std::string again = KOBWBEquationPrinter::ToText(copy);
    if (copy.GetNbOfEquations() != original.GetNbOfEquations()) Fail("equation counts differ", printed, again);
    const KOBWBEquation* b = copy.GetFirstEquation();
    for (const KOBWBEquation* a = original.GetFirstEquation(); a; a = a->GetNext(), b = b->GetNext()) {
        std::string why;
        if (!SameEquation(a, b, why)) Fail(why, printed, again);
    }
    if (again != printed) Fail("the copy prints differently", printed, again);
    const std::string mathML = KOBWBEquationMLPrinter::ToMathML(original);
    std::string why;
    if (!XmlChecker().Check(mathML, why)) Fail("the MathML is not well formed: " + why, printed, mathML);
    return 0;
}
