#ifndef KOBWBMathMLWriter_h
#define KOBWBMathMLWriter_h

#include "KOBWBInfixLayout.h"

#include <string>
#include <vector>

class KOBWBEquation;
class KOBWBExpression;

// Writes expressions and equations as presentation MathML, each as exactly one
// element (the contents of a <math> element), with the brackets that the infix
// layout's precedences ask for. Fractions, powers and roots are drawn with
// mfrac, msup, msqrt and mroot, whose parts need no brackets; a fraction binds
// like a power (KOBWBValueMarkup's FractionBar). Walks with its own stack.
class KOBWBMathMLWriter {
public:
    explicit KOBWBMathMLWriter(std::string& out) : m_out(out) {}

    void WriteExpression(const KOBWBExpression* root);
    // The equation as one mrow: its two sides around the relation, or its root
    // alone when it has no relation. Nothing for a null equation.
    void WriteEquation(const KOBWBEquation* equation);

private:
    // Markup to append as it stands, or (markup null) a layout item.
    struct Piece {
        const char* markup;
        kobwb::LayoutItem item;
    };

    void Run();
    void Add(const char* markup) { m_sequence.push_back({markup, {}}); }
    void Add(const kobwb::LayoutItem& item) { m_sequence.push_back({nullptr, item}); }
    void Add(const kobwb::LayoutItem& item, int minimum);
    // Moves the sequence onto the stack, bracketed when the node binds less
    // tightly than its place requires.
    void Flush(int precedence, int minimum);
    void WriteItem(const kobwb::LayoutItem& item);
    void WriteNode(const kobwb::LayoutItem& item);
    void WriteLeaf(const kobwb::LayoutItem& item);

    std::string& m_out;
    std::vector<Piece> m_stack;
    std::vector<Piece> m_sequence;
    kobwb::KOBWBInfixLayout m_layouts;
    kobwb::Layout m_layout;
};

#endif
