#ifndef KOBWBInfixLayout_h
#define KOBWBInfixLayout_h

#include "KOBWBEquationType.h"
#include "KOBWBValueText.h"

#include <deque>
#include <string>
#include <vector>

class KOBWBEquation;
class KOBWBExpression;

namespace kobwb {

// The operator signs, keywords and brackets of infix output; each printer
// renders them in its own form (MarkText, MarkMathML).
enum class Mark : unsigned char {
    Plus,
    Minus,
    Times,
    Divide,
    Power,
    Negate,
    Open,
    Close,
    Comma,
    // The relations of an equation and of a conditional equation's branches.
    Equal,
    NotEqual,
    LessEqual,
    Less,
    GreaterEqual,
    Greater,
    // A comparison for equality inside a condition.
    TestEqual,
    And,
    Or,
    // "!(" and the parts of "if (c) then (a) else (b)" around c, a and b.
    NotOpen,
    IfOpen,
    ThenOpen,
    ElseOpen,
    // The right side of an equation whose root is compared with 0.
    Zero
};

const char* MarkText(Mark mark);
// Presentation MathML of the mark, one or more complete elements.
const char* MarkMathML(Mark mark);

// How a node is written at its place.
enum class Placing : unsigned char {
    Plain,
    // The node's opposite: a term after a minus sign in a sum.
    Negated,
    // A comparison of a conditional equation's branch, written with "=".
    Branch
};

// One piece of a node's infix form: a mark, a name (of a called function), or a
// child with the precedence its place requires and how it is placed there.
struct LayoutItem {
    enum Kind : unsigned char { MarkItem, NameItem, NodeItem };
    Kind kind;
    Mark mark;
    const char* name;
    const KOBWBExpression* node;
    int minimum;
    Placing placing;
};

// What a node's items stand for, so that a printer with a two-dimensional form
// of some of them (a fraction bar, a superscript) can recognise them.
enum class Shape : unsigned char {
    // A constant, a variable or a missing node: the printer writes it itself.
    Leaf,
    // A sum or product of one operand, which stands in its place.
    Single,
    // Operands joined by marks.
    Infix,
    // Items: the name, Open, arguments separated by Comma, Close.
    Call,
    // Items: numerator, Divide, denominator.
    Quotient,
    // Items: base, Power, exponent.
    Power
};

struct Layout {
    Shape shape = Shape::Leaf;
    // How tightly the written node binds: it is bracketed where this is below
    // the minimum of its place.
    int precedence = AtomText;
    std::vector<LayoutItem> items;
};

// The precedence decisions of infix output, shared by the printers: which
// operands of a node need which precedence, where a sum writes a subtraction,
// how a product led by -1 becomes a negation, how an equation splits into its
// two sides. Precedences are those of TextPrecedence.
class KOBWBInfixLayout {
public:
    // Replaces layout's contents by the form of node at a place of the given
    // placing and minimum precedence.
    void LayOut(const KOBWBExpression* node, Placing placing, int minimum, Layout& layout);
    // The form of a whole equation: its left side, the relation and the right
    // side; only the root, placed to be written alone, for an equation without
    // a relation or without a root. A null equation gives no items.
    void LayOutEquation(const KOBWBEquation* equation, Layout& layout);

    // The mark of an equation's relation; false for an equation without one
    // (undefined, minimise, maximise).
    static bool RelationMark(KOBWBEquationType type, Mark& mark);

private:
    void LayOutSum(const KOBWBExpression* node, int count, Layout& layout) const;
    void LayOutProduct(const KOBWBExpression* node, Placing placing, int minimum, Layout& layout) const;
    void LayOutCall(const KOBWBExpression* node, Layout& layout);
    void LayOutComparison(const KOBWBExpression* node, Mark relation, Layout& layout) const;
    void LayOutBoolean(const KOBWBExpression* node, Placing placing, Layout& layout) const;
    void LayOutIfThenElse(const KOBWBExpression* node, Placing placing, Layout& layout) const;

    // Names of black boxes, kept while the printer still needs them (a deque
    // keeps the texts in place as it grows).
    std::deque<std::string> m_names;
};

} // namespace kobwb

#endif
