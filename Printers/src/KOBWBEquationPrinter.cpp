#include "KOBWBEquationPrinter.h"

#include "KOBWBBlackBoxOperator.h"
#include "KOBWBConstant.h"
#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBValueText.h"
#include "KOBWBVariable.h"

#include <deque>
#include <vector>

using namespace kobwb;

namespace {

// Comparisons and their connectives bind loosest of all; they print only at the
// top of a condition or of a branch of a conditional equation.
constexpr int conditionText = 0;

// One piece of pending output: a fixed text, or a node with the precedence that
// its place requires and how it is to be written there.
struct Piece {
    enum Mode : unsigned char {
        Text,
        Plain,
        // The node's opposite: a term after " - " in a sum.
        Negated,
        // A comparison of a conditional equation's branch, written with "=".
        Branch
    };
    const KOBWBExpression* node;
    const char* text;
    int minimum;
    Mode mode;
};

bool IsNegativeConstant(const KOBWBExpression* node) {
    return node && node->GetType() == KOBWBConstantType &&
           IsNegativeNumber(static_cast<const KOBWBConstant*>(node)->GetExprValue());
}

bool IsMinusOne(const KOBWBExpression* node) {
    if (!IsNegativeConstant(node)) return false;
    const KOBWBValue& value = node->GetExprValue();
    return !value.IsAFraction() && value.GetType() == KOBWBIntegerValue && value.GetAsInteger() == -1;
}

// How the reader takes a minus sign before a node's text: CreateOpposite of what the
// text reads as, which folds the sign into a constant, and into the leading constant of
// a product or quotient, instead of making the product of -1 and the node. Where it
// folds, -1*x cannot be written -x (nor x after " - "): the -1 would not come back.

// The parts of an exact fraction's text (see KOBWBValueText.cpp): a head, the number or
// Pi with its power or their product, then "/..." when there is a denominator.
struct FractionText {
    bool constantHead; // a number, Pi or -Pi
    bool chainHead;    // n*Pi^k, a product that further factors join
    bool productHead;  // n*Pi^k, or -Pi^k read as -1 times Pi^k
    bool division;
};

FractionText ReadFraction(const KOBWBFraction& fraction) {
    long long numerator = fraction.numerator;
    long long denominator = fraction.denominator;
    if (denominator < 0) {
        numerator = -numerator;
        denominator = -denominator;
    }
    const int above = fraction.powerOfPi > 0 ? fraction.powerOfPi : 0;
    const bool unit = numerator == 1 || numerator == -1;
    FractionText text;
    text.constantHead = numerator == 0 || above == 0 || (unit && above == 1);
    text.chainHead = !text.constantHead && !unit;
    text.productHead = text.chainHead || (!text.constantHead && numerator < 0);
    text.division = numerator != 0 && (denominator != 1 || fraction.powerOfPi < 0);
    return text;
}

bool IsSignOnly(const KOBWBExpression* node, bool negated);

// Whether the text of a constant reads as a constant, or as a product or quotient led
// by one.
bool ConstantTakesSign(const KOBWBExpression* node) {
    const KOBWBValue& value = node->GetExprValue();
    if (!value.IsAFraction()) return true;
    const FractionText text = ReadFraction(value.GetAsFraction());
    return text.constantHead || (text.productHead && !text.division);
}

// Whether a node written as the first factor of a product (its own factors then join
// the product's) makes the product read back led by a constant.
bool LeadsWithConstant(const KOBWBExpression* node) {
    while (node && node->GetType() == KOBWBProductType) {
        if (node->GetNbOfChildren() >= 2 && IsSignOnly(node, false)) return false;
        node = node->GetNbOfChildren() > 0 ? node->GetChild(0) : nullptr;
    }
    if (!node || node->GetType() != KOBWBConstantType) return false;
    const KOBWBValue& value = node->GetExprValue();
    if (!value.IsAFraction()) return true;
    const FractionText text = ReadFraction(value.GetAsFraction());
    return !text.division && (text.constantHead || text.chainHead);
}

// Whether the reader folds a minus sign before the node's text into the node.
bool TakesSign(const KOBWBExpression* node) {
    if (!node) return false;
    switch (node->GetType()) {
    case KOBWBConstantType: return ConstantTakesSign(node);
    case KOBWBProductType:
        if (node->GetNbOfChildren() == 1) return TakesSign(node->GetChild(0));
        if (node->GetNbOfChildren() < 2) return false;
        // Written "-a": read back as the product of -1 and a, led by a constant.
        if (IsSignOnly(node, false)) return node->GetNbOfChildren() == 2;
        return LeadsWithConstant(node->GetChild(0));
    case KOBWBQuotientType: {
        if (node->GetNbOfChildren() != 2) return false;
        const KOBWBExpression* numerator = node->GetChild(0);
        if (!numerator || numerator->GetType() != KOBWBConstantType) return false;
        const KOBWBValue& value = numerator->GetExprValue();
        if (!value.IsAFraction()) return true;
        const FractionText text = ReadFraction(value.GetAsFraction());
        return text.constantHead && !text.division;
    }
    default: return false;
    }
}

// Whether the product -1*x*... is written with its -1 as a sign: "-x*..." in its place,
// "x*..." after " - " (negated). After " - " the factors join one product, so with more
// than one left the first factor's own first factor counts.
bool IsSignOnly(const KOBWBExpression* node, bool negated) {
    if (node->GetNbOfChildren() < 2 || !IsMinusOne(node->GetChild(0))) return false;
    const KOBWBExpression* next = node->GetChild(1);
    if (negated && node->GetNbOfChildren() > 2) return !LeadsWithConstant(next);
    return !TakesSign(next);
}

// A constant of one number: an integer, a single real or an exact fraction.
bool IsNumberConstant(const KOBWBExpression* node) {
    if (!node || node->GetType() != KOBWBConstantType) return false;
    const KOBWBValue& value = node->GetExprValue();
    if (value.IsAFraction()) return true;
    switch (value.GetType()) {
    case KOBWBIntegerValue: return true;
    case KOBWBRealValue:
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval interval = value.GetAsRealInterval();
        return interval.lower == interval.upper;
    }
    default: return false;
    }
}

// A constant whose opposite is written as one token: a number, or Pi with either
// sign. Reading "- c/x" back negates the numerator, which gives the quotient back
// only when c is such a token: "- Pi/3/x" would read as the product of -1 and a
// quotient.
bool HasTokenOpposite(const KOBWBExpression* node) {
    if (!IsNumberConstant(node)) return false;
    const KOBWBValue& value = node->GetExprValue();
    if (value.IsAFraction()) {
        const KOBWBFraction fraction = value.GetAsFraction();
        const bool whole = fraction.denominator == 1 || fraction.denominator == -1;
        const bool unit = fraction.numerator == 1 || fraction.numerator == -1;
        return whole && (fraction.powerOfPi == 0 || (fraction.powerOfPi == 1 && unit));
    }
    return true;
}

// The first operand of a product or quotient; for a product, looking into the nested
// products written first, whose factors join the product when read back.
const KOBWBExpression* LeadingOperand(const KOBWBExpression* node) {
    while (node->GetType() == KOBWBProductType && node->GetChild(0)->GetType() == KOBWBProductType &&
           node->GetChild(0)->GetNbOfChildren() >= 2)
        node = node->GetChild(0);
    return node->GetChild(0);
}

// A product led by a number, or a quotient whose numerator is a constant written as
// one token: the reader makes it, or for a product one that reads and prints the same
// once nested products are opened, of the text of its opposite after a minus sign.
bool HasFoldedSign(const KOBWBExpression* node) {
    const KOBWBExpressionType type = node->GetType();
    if (type == KOBWBProductType) return node->GetNbOfChildren() >= 2 && IsNumberConstant(LeadingOperand(node));
    return type == KOBWBQuotientType && node->GetNbOfChildren() == 2 && HasTokenOpposite(node->GetChild(0));
}

// A term that a sum writes after " - ": a negative constant, or a product or
// quotient of a folded sign whose leading operand is negative.
bool IsNegativeTerm(const KOBWBExpression* node) {
    if (!node) return false;
    if (node->GetType() == KOBWBConstantType) return IsNegativeConstant(node);
    return HasFoldedSign(node) && IsNegativeConstant(LeadingOperand(node));
}

// The last term of an equation's root that is written, negated, as the right side:
// a constant, or a constant sub-expression that the reader makes of the text of a
// negated constant (-Pi/6 of "x = Pi/6", -3*Pi of "x = 3*Pi"), so that the text of
// a system read back prints the same.
bool IsRightSide(const KOBWBExpression* node) {
    return node->GetType() == KOBWBConstantType || (node->IsConstant() && HasFoldedSign(node));
}

bool IsConnective(const KOBWBExpression* node) {
    return node && (node->GetType() == KOBWBAndType || node->GetType() == KOBWBOrType);
}

const char* CallName(const KOBWBExpression* node, std::string& scratch) {
    if (node->GetType() == KOBWBIntegrateType) return "Int";
    if (node->GetType() == KOBWBBlackBoxType) {
        scratch = static_cast<const KOBWBBlackBoxOperator*>(node)->GetBlackBoxName().str();
        if (!scratch.empty()) return scratch.c_str();
        return "blackbox";
    }
    if (node->GetType() == KOBWBImplicationType) return "implies";
    return KOBWBGetExpressionTypeName(node->GetType());
}

class TextWriter {
public:
    explicit TextWriter(std::string& out) : m_out(out) {}

    void Write(const KOBWBExpression* root, int minimum, Piece::Mode mode) {
        m_stack.push_back({root, nullptr, minimum, mode});
        while (!m_stack.empty()) {
            const Piece piece = m_stack.back();
            m_stack.pop_back();
            if (piece.mode == Piece::Text)
                m_out += piece.text;
            else
                WriteNode(piece);
        }
    }

private:
    void Emit(const char* text) { m_sequence.push_back({nullptr, text, 0, Piece::Text}); }
    void Emit(const KOBWBExpression* node, int minimum, Piece::Mode mode = Piece::Plain) {
        m_sequence.push_back({node, nullptr, minimum, mode});
    }

    // Moves the pieces gathered for one node onto the stack, bracketed when the
    // node binds less tightly than its place requires.
    void Flush(int precedence, int minimum) {
        const bool bracket = precedence < minimum;
        if (bracket) m_stack.push_back({nullptr, ")", 0, Piece::Text});
        for (auto it = m_sequence.rbegin(); it != m_sequence.rend(); ++it) m_stack.push_back(*it);
        if (bracket) m_stack.push_back({nullptr, "(", 0, Piece::Text});
        m_sequence.clear();
    }

    void WriteConstant(const KOBWBExpression* node, const Piece& piece) {
        m_scratch.clear();
        const KOBWBValue& value = node->GetExprValue();
        const TextPrecedence precedence = piece.mode == Piece::Negated ? AppendNegatedValue(value, m_scratch)
                                                                       : AppendValue(value, m_scratch);
        const bool bracket = precedence < piece.minimum;
        if (bracket) m_out += '(';
        m_out += m_scratch;
        if (bracket) m_out += ')';
    }

    void WriteVariable(const KOBWBExpression* node) {
        auto* variable = const_cast<KOBWBVariable*>(static_cast<const KOBWBVariable*>(node));
        const KOBLVRString& name = variable->GetName();
        if (name.Length() > 0) {
            m_out.append(name.str(), static_cast<size_t>(name.Length()));
            return;
        }
        m_out += 'v';
        AppendInteger(variable->GetIdx(), m_out);
    }

    // Factors from the first-th on, joined by "*"; the first of them is a left
    // operand, the others right operands.
    void Factors(const KOBWBExpression* node, int first) {
        for (int i = first; i < node->GetNbOfChildren(); ++i) {
            if (i > first) Emit("*");
            Emit(node->GetChild(i), i == first ? ProductText : UnaryText);
        }
    }

    // A sum or product of one child is that child, in the same place.
    bool WriteSingle(const KOBWBExpression* node, const Piece& piece) {
        if (node->GetNbOfChildren() != 1) return false;
        Emit(node->GetChild(0), piece.minimum);
        Flush(AtomText, 0);
        return true;
    }

    void WriteProduct(const KOBWBExpression* node, const Piece& piece) {
        if (WriteSingle(node, piece)) return;
        const int count = node->GetNbOfChildren();
        if (piece.mode == Piece::Negated && HasFoldedSign(node)) {
            // The opposite: the first factor negated, or -1 left out.
            if (IsSignOnly(node, true)) {
                if (count == 2) {
                    Emit(node->GetChild(1), piece.minimum);
                    Flush(AtomText, 0);
                    return;
                }
                Factors(node, 1);
            } else {
                Emit(node->GetChild(0), ProductText, Piece::Negated);
                Emit("*");
                Factors(node, 1);
                m_sequence[2].minimum = UnaryText;
            }
            Flush(ProductText, piece.minimum);
            return;
        }
        if (IsSignOnly(node, false)) {
            Emit("-");
            Factors(node, 1);
            m_sequence[1].minimum = UnaryText;
            Flush(count == 2 ? UnaryText : ProductText, piece.minimum);
            return;
        }
        Factors(node, 0);
        Flush(ProductText, piece.minimum);
    }

    void WriteSum(const KOBWBExpression* node, const Piece& piece) {
        if (WriteSingle(node, piece)) return;
        const int count = node->GetNbOfChildren();
        for (int i = 0; i < count; ++i) {
            const KOBWBExpression* term = node->GetChild(i);
            if (i == 0) {
                Emit(term, SumText);
            } else if (IsNegativeTerm(term)) {
                Emit(" - ");
                Emit(term, ProductText, Piece::Negated);
            } else {
                Emit(" + ");
                Emit(term, ProductText);
            }
        }
        Flush(SumText, piece.minimum);
    }

    void WriteCall(const KOBWBExpression* node, const Piece& piece) {
        m_names.emplace_back();
        const char* name = CallName(node, m_names.back());
        if (name != m_names.back().c_str()) m_names.pop_back();
        Emit(name);
        Emit("(");
        for (int i = 0; i < node->GetNbOfChildren(); ++i) {
            if (i > 0) Emit(", ");
            Emit(node->GetChild(i), conditionText);
        }
        Emit(")");
        Flush(AtomText, piece.minimum);
    }

    void WriteComparison(const KOBWBExpression* node, const Piece& piece, const char* relation, bool swap) {
        const KOBWBExpression* left = node->GetChild(swap ? 1 : 0);
        const KOBWBExpression* right = node->GetChild(swap ? 0 : 1);
        Emit(left, SumText);
        Emit(relation);
        Emit(right, SumText);
        Flush(conditionText, piece.minimum);
    }

    void WriteBoolean(const KOBWBExpression* node, const Piece& piece) {
        const bool branch = piece.mode == Piece::Branch;
        const KOBWBExpression* first = node->GetChild(0);
        switch (node->GetType()) {
        case KOBWBEqualType: WriteComparison(node, piece, branch ? " = " : " == ", false); return;
        case KOBWBNotEqualType: WriteComparison(node, piece, " != ", false); return;
        case KOBWBLessEqualType: WriteComparison(node, piece, " <= ", false); return;
        case KOBWBNotType:
            if (first && first->GetType() == KOBWBLessEqualType && first->GetNbOfChildren() == 2) {
                WriteComparison(first, piece, " > ", false);
                return;
            }
            Emit("!(");
            Emit(first, conditionText);
            Emit(")");
            Flush(AtomText, piece.minimum);
            return;
        default:
            // and, or: the language groups conditions to the left only.
            Emit(first, conditionText);
            Emit(node->GetType() == KOBWBAndType ? " and " : " or ");
            Emit(node->GetChild(1), IsConnective(node->GetChild(1)) ? conditionText + 1 : conditionText);
            Flush(conditionText, piece.minimum);
        }
    }

    void WriteIfThenElse(const KOBWBExpression* node, const Piece& piece) {
        const Piece::Mode branches = piece.mode == Piece::Branch ? Piece::Branch : Piece::Plain;
        Emit("if (");
        Emit(node->GetChild(0), conditionText);
        Emit(") then (");
        Emit(node->GetChild(1), conditionText, branches);
        Emit(") else (");
        Emit(node->GetChild(2), conditionText, branches);
        Emit(")");
        Flush(AtomText, piece.minimum);
    }

    void WriteNode(const Piece& piece) {
        const KOBWBExpression* node = piece.node;
        if (!node) {
            m_out += "null";
            return;
        }
        const KOBWBExpressionType type = node->GetType();
        const int count = node->GetNbOfChildren();
        switch (type) {
        case KOBWBConstantType: WriteConstant(node, piece); return;
        case KOBWBVariableType: WriteVariable(node); return;
        case KOBWBSumType:
            if (count > 0) return WriteSum(node, piece);
            break;
        case KOBWBProductType:
            if (count > 0) return WriteProduct(node, piece);
            break;
        case KOBWBQuotientType:
        case KOBWBPowerType:
            if (count != 2) break;
            // A quotient written after " - " has its numerator's sign dropped.
            Emit(node->GetChild(0), type == KOBWBPowerType ? AtomText : ProductText,
                 piece.mode == Piece::Negated ? Piece::Negated : Piece::Plain);
            Emit(type == KOBWBPowerType ? "^" : "/");
            Emit(node->GetChild(1), type == KOBWBPowerType ? PowerText : UnaryText);
            Flush(type == KOBWBPowerType ? PowerText : ProductText, piece.minimum);
            return;
        case KOBWBIfThenElseType:
            if (count == 3) return WriteIfThenElse(node, piece);
            break;
        case KOBWBEqualType:
        case KOBWBNotEqualType:
        case KOBWBLessEqualType:
        case KOBWBAndType:
        case KOBWBOrType:
            if (count == 2) return WriteBoolean(node, piece);
            break;
        case KOBWBNotType:
            if (count == 1) return WriteBoolean(node, piece);
            break;
        default: break;
        }
        WriteCall(node, piece);
    }

    std::string& m_out;
    std::vector<Piece> m_stack;
    std::vector<Piece> m_sequence;
    std::string m_scratch;
    // Names of black boxes, kept while their pieces wait on the stack (a deque
    // keeps the texts in place as it grows).
    std::deque<std::string> m_names;
};

const char* RelationText(KOBWBEquationType type) {
    switch (type) {
    case KOBWBEqEqual: return " = ";
    case KOBWBEqNotEqual: return " != ";
    case KOBWBEqLessEqual: return " <= ";
    case KOBWBEqLess: return " < ";
    case KOBWBEqGreaterEqual: return " >= ";
    case KOBWBEqGreater: return " > ";
    default: return nullptr;
    }
}

} // namespace

void KOBWBEquationPrinter::PrintExpression(const KOBWBExpression* expression, std::string& out) {
    TextWriter(out).Write(expression, conditionText, Piece::Plain);
}

void KOBWBEquationPrinter::PrintEquation(const KOBWBEquation* equation, std::string& out) {
    if (!equation) return;
    const KOBWBExpression* root = equation->GetRoot();
    const char* relation = RelationText(equation->GetType());
    TextWriter writer(out);
    if (!relation || !root) {
        const bool conditional = root && root->GetType() == KOBWBIfThenElseType;
        writer.Write(root, conditionText, conditional ? Piece::Branch : Piece::Plain);
        out += ";";
        return;
    }
    // left - right was stored as the sum left + (-right): a sum ending with a
    // constant term gives that term back, negated, to the right side.
    const int count = root->GetNbOfChildren();
    if (root->GetType() == KOBWBSumType && count >= 2 && IsRightSide(root->GetChild(count - 1))) {
        if (count == 2) {
            writer.Write(root->GetChild(0), conditionText, Piece::Plain);
        } else {
            // The other terms, written as a sum of one term fewer.
            for (int i = 0; i + 1 < count; ++i) {
                const KOBWBExpression* term = root->GetChild(i);
                if (i == 0) {
                    writer.Write(term, SumText, Piece::Plain);
                } else if (IsNegativeTerm(term)) {
                    out += " - ";
                    writer.Write(term, ProductText, Piece::Negated);
                } else {
                    out += " + ";
                    writer.Write(term, ProductText, Piece::Plain);
                }
            }
        }
        out += relation;
        writer.Write(root->GetChild(count - 1), conditionText, Piece::Negated);
    } else {
        writer.Write(root, conditionText, Piece::Plain);
        out += relation;
        out += '0';
    }
    out += ';';
}

void KOBWBEquationPrinter::PrintFactory(const KOBWBFactory& factory, std::string& out) {
    for (KOBWBEquation* equation = factory.GetFirstEquation(); equation; equation = factory.GetNextEquation(equation)) {
        PrintEquation(equation, out);
        out += '\n';
    }
}

void KOBWBEquationPrinter::PrintValue(const KOBWBValue& value, std::string& out) { AppendValue(value, out); }

std::string KOBWBEquationPrinter::ToText(const KOBWBExpression* expression) {
    std::string text;
    PrintExpression(expression, text);
    return text;
}

std::string KOBWBEquationPrinter::ToText(const KOBWBEquation* equation) {
    std::string text;
    PrintEquation(equation, text);
    return text;
}

std::string KOBWBEquationPrinter::ToText(const KOBWBFactory& factory) {
    std::string text;
    PrintFactory(factory, text);
    return text;
}
