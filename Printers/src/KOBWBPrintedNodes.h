#ifndef KOBWBPrintedNodes_h
#define KOBWBPrintedNodes_h

#include <unordered_map>
#include <vector>

class KOBWBExpression;
class KOBWBFactory;

// The nodes under some roots, each once however many parents share it, children
// before their parents, with their positions in that order as ids. Walks with its
// own stack, so graphs of any depth are listed.
class KOBWBPrintedNodes {
public:
    // The nodes under the factory's equation roots.
    explicit KOBWBPrintedNodes(const KOBWBFactory& factory);
    // The nodes under root; none for null.
    explicit KOBWBPrintedNodes(const KOBWBExpression* root);

    const std::vector<const KOBWBExpression*>& Nodes() const { return m_nodes; }
    // The node's position, or -1 when it is not listed (a null node).
    int Id(const KOBWBExpression* node) const;

private:
    void Add(const KOBWBExpression* root);

    std::vector<const KOBWBExpression*> m_nodes;
    std::unordered_map<const KOBWBExpression*, int> m_ids;
};

#endif
