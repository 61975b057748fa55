#ifndef KOBWBDerivativeRules_h
#define KOBWBDerivativeRules_h

class KOBWBAlgebraicOperator;
class KOBWBBinaryOperator;
class KOBWBExpression;
class KOBWBFactory;
class KOBWBTrigonometricOperator;
class KOBWBUnaryOperator;
class KOBWBVariable;

namespace kobwb {

// A derivative as the rules hand it on: a node, or one of the constants that a rule
// recognises without a node (the derivative of a constant graph, of a variable), which
// is made only when a rule builds on it. Zero terms dropped from sums and products,
// and unit factors left out, then cost nothing.
struct Term {
    enum class Kind : unsigned char { Node, IntegerZero, RealZero, RealOne };

    Kind kind = Kind::Node;
    // For Kind::Node: the derivative, null when there is none.
    KOBWBExpression* node = nullptr;

    bool IsNull() const { return kind == Kind::Node && !node; }
    // A constant equal to 0, resp. to 1.
    bool IsZero() const;
    bool IsOne() const;
};

// What the rules of the node families share, with access to the differentiation the
// factory is making.
class DerivativeRules {
public:
    // The derivative of child by v: the one the current differentiation made, else a
    // new one from CreateDerivative.
    static Term Of(KOBWBExpression* child, KOBWBVariable* v);
    // The node of a term.
    static KOBWBExpression* Node(KOBWBFactory& factory, const Term& term);
    // The constants the rules use. The integers 0 and 2 and the reals 0, 1, -1 and
    // ln 10 are made once per differentiation, or taken from the graph being
    // differentiated when it holds an equal constant; other values are made anew.
    static KOBWBExpression* Integer(KOBWBFactory& factory, int value);
    static KOBWBExpression* Real(KOBWBFactory& factory, double value);
    // The derivative of node by v: its family's rule for the library's own node
    // classes, a variable's or a constant's as a term, else the node's Differentiate.
    static Term Rule(KOBWBExpression& node, KOBWBVariable* v);

private:
    static KOBWBExpression* Shared(KOBWBFactory& factory, bool integer, double value);
};

// The rules of the families, each for a non-null v.
Term AlgebraicDerivative(KOBWBAlgebraicOperator& node, KOBWBVariable* v);
Term BinaryDerivative(KOBWBBinaryOperator& node, KOBWBVariable* v);
Term UnaryDerivative(KOBWBUnaryOperator& node, KOBWBVariable* v);
Term TrigonometricDerivative(KOBWBTrigonometricOperator& node, KOBWBVariable* v);

} // namespace kobwb

#endif
