#ifndef KOBWBReplayExpressions_h
#define KOBWBReplayExpressions_h

#include <string>
#include <unordered_map>
#include <vector>

class KOBWBExpression;
class KOBWBFactory;

// Equation roots in the prefix form of the replay text (see KOBWBEquations.h).
// Both directions keep their own stacks: graphs may be far deeper than the call
// stack allows.
namespace kobwb {
namespace replay {

class TextCursor;

// Writes the roots of one equation system. A node reached more than once, over
// all the roots together, is written in full the first time with a label
// (@k=...) and as @k afterwards.
class ExpressionWriter {
public:
    explicit ExpressionWriter(const std::vector<KOBWBExpression*>& roots);

    // Appends root's expression, "null" for a null root.
    void Append(std::string& text, KOBWBExpression* root);

private:
    // Writes node, or its label; true when its children are still to be written.
    bool Open(std::string& text, KOBWBExpression* node);

    // How many parents (and roots) reach each node.
    std::unordered_map<const KOBWBExpression*, int> m_references;
    std::unordered_map<const KOBWBExpression*, int> m_labels;
};

// Rebuilds the expressions of one equation system in a factory. Labels are
// shared by every expression read through the same reader.
class ExpressionReader {
public:
    explicit ExpressionReader(KOBWBFactory& factory) : m_factory(factory) {}

    // One expression; false for malformed text, which may leave nodes made so far
    // in the factory. "null" gives a null root.
    bool Read(TextCursor& in, KOBWBExpression*& root);

private:
    struct Frame;

    // A label written before a node: a reference sets node, a definition sets label.
    bool ReadLabel(TextCursor& in, int& label, KOBWBExpression*& node);
    // The head and attributes of an operator, up to its opening parenthesis.
    bool ReadHead(TextCursor& in, Frame& frame);
    KOBWBExpression* Build(Frame& frame);
    KOBWBExpression* BuildAlgebraic(Frame& frame);
    void Define(int label, KOBWBExpression* node);

    KOBWBFactory& m_factory;
    // The labelled nodes; null while a node's definition is still being read.
    std::vector<KOBWBExpression*> m_labelled;
};

} // namespace replay
} // namespace kobwb

#endif
