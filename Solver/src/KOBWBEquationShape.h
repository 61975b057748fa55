#ifndef KOBWBEquationShape_h
#define KOBWBEquationShape_h

#include <cstdint>
#include <vector>

class KOBWBExpression;
class KOBWBVariable;

namespace kobwb {

// The shape of an equation's graph: the operations of its nodes and how they are
// joined, the values of its constants, and its variables numbered in the order they
// are met (with whether each is an unknown of the system). Two graphs of one shape
// differ only in which variables they read, so they have the same derivatives up to
// that renaming, and the same tape: a system of thousands of distances is
// differentiated and compiled once per shape.
//
// Only small graphs the point tape evaluates in doubles have a shape: every operator
// with a point form (KOBWBTapeBuilder's HasPointForm), variables, and constants that
// are one integer or one real.
class EquationShape {
public:
    static constexpr std::size_t maxNodes = 64;

    // Reads root's graph; false when it has no shape. isUnknown tells, by variable
    // index, which variables are unknowns.
    bool Read(KOBWBExpression* root, const std::vector<bool>& isUnknown);

    // The variables of the graph, in the order met.
    const std::vector<KOBWBVariable*>& Variables() const { return m_variables; }
    bool IsUnknown(std::size_t k) const { return m_unknown[k]; }
    // The shape itself, and its hash: equal for graphs of one shape only.
    const std::vector<std::uint64_t>& Key() const { return m_key; }
    std::uint64_t Hash() const { return m_hash; }

private:
    // Which read last met a node, and the number it has in that read's graph.
    struct Seen {
        unsigned read = 0;
        int id = -1;
    };
    // The mark of node, by its creation number.
    Seen& SeenOf(const KOBWBExpression* node);

    std::vector<Seen> m_seen;
    unsigned m_read = 0;
    std::vector<KOBWBVariable*> m_variables;
    std::vector<bool> m_unknown;
    std::vector<std::uint64_t> m_key;
    std::uint64_t m_hash = 0;
    struct Frame {
        KOBWBExpression* node;
        int nextChild;
    };
    std::vector<Frame> m_frames;
};

} // namespace kobwb

#endif
