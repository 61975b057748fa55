#ifndef KOBWBExpression_h
#define KOBWBExpression_h

#include "KOBWBExpressionType.h"
#include "KOBWBFactory.h"
#include "KOBWBValue.h"

#include <cstddef>

class KOBWBEnvironment;
class KOBWBVariable;

namespace kobwb {
class EvaluationPlans;
struct PropertyTable;
struct ValueBuffer;
}

// A node of an expression graph. The factory that made it owns it. Its value is
// computed on demand and kept in the value buffer until the factory resets it.
class KOBWBX_API KOBWBExpression {
public:
    virtual ~KOBWBExpression();
    KOBWBExpression(const KOBWBExpression&) = delete;
    // Nodes are made in their factory's storage and released with it; deleting a
    // node only runs its destructor.
    static void* operator new(std::size_t size, KOBWBFactory& factory) noexcept;
    static void operator delete(void*) noexcept {}
    static void operator delete(void*, KOBWBFactory&) noexcept {}
    KOBWBExpression& operator=(const KOBWBExpression&) = delete;

    // Structural equality; the base compares identity.
    virtual unsigned char IsEqualTo(const KOBWBExpression* other) const;
    virtual int GetNbOfChildren() const = 0;
    virtual KOBWBExpression* GetChild(int i) = 0;
    virtual const KOBWBExpression* GetChild(int i) const = 0;
    virtual unsigned char AddChild(KOBWBExpression* child);
    virtual unsigned char RemoveChild(int i);
    virtual unsigned char ReplaceChild(int i, KOBWBExpression* child) = 0;
    virtual void SetParameter(int i, double value);
    virtual double GetParameter(int i);
    virtual int GetNbOfParameters() const;
    // d/dv as a new graph of the same factory; null when there is none.
    virtual KOBWBExpression* Differentiate(KOBWBVariable* v) = 0;
    // A primitive by v from a table of known integrals, integrable telling whether
    // one was found. No table is offered yet: every node answers null and 0.
    virtual KOBWBExpression* IntegrateTable(KOBWBVariable* v, unsigned char& integrable) = 0;
    // 1 when v does not occur in the subgraph.
    virtual unsigned char IsFree(KOBWBVariable* v) const = 0;
    // Sets mask[index] for every variable of the subgraph.
    virtual void FillPresentVariables(unsigned char* mask) const = 0;
    // Invalidates the buffer; operators clear their whole subgraph when recursive.
    virtual void ResetBuffer(unsigned char recursive);
    virtual const KOBWBValue& GetExprValue() const;
    virtual void SetExprValue(const KOBWBValue& value);

    KOBWBExpressionType GetType() const { return m_type; }
    // The node's number in the order its factory made nodes, unique within the factory
    // (tables indexed by node rather than hashed); -1 for nodes made past the largest int.
    int GetNumber() const { return m_slot; }
    KOBWBFactory& GetFactory() const { return m_factory; }
    // Made while the factory kept temporary storage, and not yet made lasting.
    bool IsTemporary() const { return (m_flags & temporaryNode) != 0; }
    const KOBWBEnvironment& GetEnvironment() const { return m_factory.GetEnvironment(); }

    // Evaluates through the buffer after initialising the environment's error
    // flags, and returns the result as a double.
    double Eval() { return DoEval(); }
    // Evaluates through the buffer after initialising the environment's error flags.
    void Eval(KOBWBValue& result);
    // Evaluates through the buffer; a valid buffer is returned as it is.
    const KOBWBValue& GetValue();
    // Whether GetValue answers without computing.
    bool IsBufferValid() const;

    // 0 for a variable, 1 for a constant; an operator is constant when every
    // child is.
    unsigned char IsConstant() const;
    // The variables of the subgraph in index order, in a new array the caller
    // frees with delete[]; returns their number (0 leaves out untouched).
    int FindPresentVariables(KOBWBVariable**& out);
    // The value of a registered property; the factory's default when none is stored.
    int GetProperty(int property) const;
    void SetProperty(int property, int value);
    int GetPropertyTableSize() const;
    int GetPropertyTableCapacity() const;
    // Replaces every occurrence of var below this node by by; 0 when this node is
    // var itself.
    unsigned char ReplaceVar(KOBWBVariable* var, KOBWBExpression* by);

    // Algebraic shape. These tests read the tree as built: they expand, factor and
    // evaluate nothing (the integer exponent of a power excepted), so a product of
    // two sums is not linear even when it is mathematically. A null child fails
    // every test but the first step of IsPolynomial(x).
    // Degree at most 1 in all variables together; a power is linear only when constant.
    unsigned char IsLinear() const;
    // Degree at most 2 in all variables together; a power counts only with a linear
    // base and an integer constant exponent of 0, 1 or 2.
    unsigned char IsQuadratic() const;
    // A polynomial in x, coefficients possibly depending on other variables. A
    // quotient needs a denominator free of x; a power with a constant exponent, any
    // exponent included (x^-1 and x^0.5 pass, deliberately), is judged by its base.
    unsigned char IsPolynomial(KOBWBVariable* x) const;
    // The coefficients of the expression in x, extracted by the factory's algebra
    // (the rewriting context of KOBWBPolynomialContext): coefficients[k] is the
    // coefficient of x^k, written canonically, and degree the highest k. An array
    // already in coefficients is freed first; the new one is the caller's to free
    // with delete[]. Answers 0, degree unchanged and coefficients null, when the
    // expression is not exactly a polynomial in x (x under a function, in a
    // denominator, or to a negative or non-integer power) or x is null or of
    // another factory.
    unsigned char IsPolynomial(KOBWBVariable* x, int& degree, KOBWBExpression**& coefficients) const;
    // Free of x, or a quotient of two polynomials in x. A polynomial in x that is
    // not written as a quotient is deliberately not a rational function.
    unsigned char IsRationalFunction(KOBWBVariable* x) const;
    // The expression with value put in place of every child identical to x (by
    // algebra: a child whose difference with x simplifies to 0), then simplified.
    // It works on a duplicate of the tree owned by a new equation "= 0" of the
    // factory, which stays in the factory. Null when x or value is null or of
    // another factory, or no equation can be made.
    KOBWBExpression* PartialEval(KOBWBVariable* x, KOBWBExpression* value);
    // The same for several variables, pairs taken in order. Every value must be
    // constant: at the first that is not, the answer is null (substitutions made so
    // far stay in the duplicate). When the duplicate root is a pair's variable, that
    // pair's value is the answer. A count of 0 or less gives the simplified duplicate.
    KOBWBExpression* PartialEval(KOBWBVariable** variables, KOBWBExpression** values, int count);

protected:
    KOBWBExpression(KOBWBFactory& factory, KOBWBExpressionType type);

    // Replaces in place every child pointer below this node that is x itself (by
    // pointer) by by, without descending into by; this node is never replaced.
    // Nothing happens when either argument is null.
    void Replace(KOBWBVariable* x, KOBWBExpression* by);

    virtual void DoEval(KOBWBValue& result) = 0;
    virtual double DoEval();

    // Records that a children list changed, which outdates every evaluation plan
    // of the factory.
    void NoteStructureChange();
    // Whether an evaluation plan computed the node's value in the current generation
    // and kept it beside the node, leaving the buffer to be written when asked for.
    bool HasPendingValue() const;
    // Writes a pending value into the buffer, as the node's own evaluation would
    // have left it; false when the plan kept no value the buffer can take (the node
    // then evaluates itself).
    bool WritePendingValue();
    // A leaf tells that its value changed, so that plans read it again.
    void LeafValueChanged();

    // The flag bit that marks a valid value buffer.
    static constexpr unsigned bufferValid = 8;

private:
    friend class KOBWBEquation;
    friend class KOBWBFactory;
    friend class kobwb::EvaluationPlans;

    // The other bits of the flag word.
    static constexpr unsigned exprValueIsBuffer = 16;
    static constexpr unsigned hasOwnValue = 32;
    static constexpr unsigned hasProperties = 64;
    static constexpr unsigned equationRoot = 128;
    // An evaluation plan lists the node and its slot holds what the plan knows of it.
    static constexpr unsigned slotted = 256;
    // Made in temporary mode: a mark of the factory's that callers cannot change.
    static constexpr unsigned temporaryNode = 512;
    // A permanent node whose children changed in temporary mode, and which the
    // factory has listed.
    static constexpr unsigned changedInTemporaryMode = 1024;
    // A temporary node that something lasting reaches, while temporary mode ends.
    static constexpr unsigned reachedFromLastingNodes = 2048;

    bool IsBufferFilled() const;
    // The node's buffer, which it has once it was filled.
    kobwb::ValueBuffer& Buffer() const;
    // The value of the node's buffer, made when the node has none yet.
    KOBWBValue& BufferValue();
    // Computes the value of a node whose buffer is not filled in this generation.
    const KOBWBValue& Evaluate(bool initialiseEnvironment);
    // Marks the buffer, just computed, valid in the current generation.
    void MarkBufferComputed() {
        MarkBufferFilled();
        if ((m_flags & slotted) && m_buffer) UpdateSlot();
    }
    // The same for a buffer filled from the node's slot, which the slot agrees with.
    void MarkBufferFilled();
    // Keeps the slot of the node's evaluation plans in step with the buffer.
    void UpdateSlot();
    // Operators at the root of an equation evaluate through a plan of their graph.
    void MarkAsEquationRoot();
    // Brings the buffers of the subgraph up to date bottom-up, without recursion.
    void EvaluateBelowWithoutRecursion();
    // The node's stored property values; null while it has none.
    const kobwb::PropertyTable* Properties() const;

    KOBWBExpressionType m_type;
    // The node's place among the factory's evaluation slots: its number in the order
    // nodes were made, so that slots lie in the order of the graph; -1 for nodes made
    // past the largest int, which evaluate without plans.
    int m_slot;
    KOBWBFactory& m_factory;
    // The expression value is the buffer itself since the last evaluation, rather
    // than a copy of it (flag exprValueIsBuffer). A value given to SetExprValue, and
    // the node's property values, are rare: the factory keeps them beside the nodes
    // that have them (flags hasOwnValue and hasProperties), so that a node is only
    // what evaluation reads.
    unsigned m_flags = 0;
    // The number of the node's value buffer among the factory's, 0 while it has none.
    // The buffer keeps the buffer generation it was filled in: a buffer filled in an
    // earlier generation is stale, so resetting every buffer is one increment.
    unsigned m_buffer = 0;
};

#endif
