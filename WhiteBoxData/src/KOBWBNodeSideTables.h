#ifndef KOBWBNodeSideTables_h
#define KOBWBNodeSideTables_h

#include "KOBWBValue.h"

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <vector>

class KOBWBExpression;

namespace kobwb {

// Per-node values of the factory's registered properties; -1 means "the default".
// Made when a node first stores a value other than the default. The first few
// values are kept in place, without the heap.
struct PropertyTable {
    int count = 0;
    int capacity = 0;
    int* Data() { return heap ? heap.get() : inlineData; }
    const int* Data() const { return heap ? heap.get() : inlineData; }

    static constexpr int inlineCapacity = 4;
    int inlineData[inlineCapacity] = {};
    std::unique_ptr<int[]> heap;
};

// The property tables of a factory's nodes, found by the node's evaluation slot (its
// number in creation order), so that a symbolic pass that marks every node pays no
// hashing; nodes without a slot use a map.
class PropertyTables {
public:
    PropertyTable* Find(int slot, const KOBWBExpression* node) {
        if (slot < 0) {
            const auto found = m_unslotted.find(node);
            return found == m_unslotted.end() ? nullptr : &found->second;
        }
        const size_t index = static_cast<size_t>(slot);
        return index < m_tables.size() && m_tables[index] ? m_tables[index].get() : nullptr;
    }
    PropertyTable& Make(int slot, const KOBWBExpression* node) {
        if (slot < 0) return m_unslotted[node];
        const size_t index = static_cast<size_t>(slot);
        if (index >= m_tables.size()) m_tables.resize(std::max(index + 1, m_tables.size() * 2));
        if (!m_tables[index]) m_tables[index].reset(new PropertyTable);
        return *m_tables[index];
    }
    void Erase(int slot, const KOBWBExpression* node) {
        if (slot < 0)
            m_unslotted.erase(node);
        else if (static_cast<size_t>(slot) < m_tables.size())
            m_tables[static_cast<size_t>(slot)].reset();
    }

private:
    std::vector<std::unique_ptr<PropertyTable>> m_tables;
    std::unordered_map<const KOBWBExpression*, PropertyTable> m_unslotted;
};

// What only a few nodes of a factory carry, kept beside the nodes.
struct NodeSideTables {
    std::unordered_map<const KOBWBExpression*, KOBWBValue> ownValues;
    PropertyTables properties;
};

} // namespace kobwb

#endif
