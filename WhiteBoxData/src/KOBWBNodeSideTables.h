#ifndef KOBWBNodeSideTables_h
#define KOBWBNodeSideTables_h

#include "KOBWBValue.h"

#include <algorithm>
#include <deque>
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
// hashing; nodes without a slot use a map. The tables of slotted nodes come from a
// pool that takes back those of destroyed nodes, so that marking many nodes and
// dropping them costs no allocation per node.
class PropertyTables {
public:
    PropertyTable* Find(int slot, const KOBWBExpression* node) {
        if (slot < 0) {
            const auto found = m_unslotted.find(node);
            return found == m_unslotted.end() ? nullptr : &found->second;
        }
        const size_t index = static_cast<size_t>(slot);
        return index < m_tables.size() ? m_tables[index] : nullptr;
    }
    PropertyTable& Make(int slot, const KOBWBExpression* node) {
        if (slot < 0) return m_unslotted[node];
        const size_t index = static_cast<size_t>(slot);
        if (index >= m_tables.size()) m_tables.resize(std::max(index + 1, m_tables.size() * 2), nullptr);
        if (!m_tables[index]) m_tables[index] = Take();
        return *m_tables[index];
    }
    void Erase(int slot, const KOBWBExpression* node) {
        if (slot < 0) {
            m_unslotted.erase(node);
            return;
        }
        const size_t index = static_cast<size_t>(slot);
        if (index >= m_tables.size() || !m_tables[index]) return;
        m_free.push_back(m_tables[index]);
        m_tables[index] = nullptr;
    }

private:
    // A table taken back is cleared when it is reused, when its memory is about to
    // be written anyway, rather than when its node goes.
    PropertyTable* Take() {
        if (m_free.empty()) {
            m_pool.emplace_back();
            return &m_pool.back();
        }
        PropertyTable* table = m_free.back();
        m_free.pop_back();
        *table = PropertyTable();
        return table;
    }

    std::vector<PropertyTable*> m_tables;
    // Every table made, at addresses that stay put, and those free for reuse.
    std::deque<PropertyTable> m_pool;
    std::vector<PropertyTable*> m_free;
    std::unordered_map<const KOBWBExpression*, PropertyTable> m_unslotted;
};

// What only a few nodes of a factory carry, kept beside the nodes.
struct NodeSideTables {
    std::unordered_map<const KOBWBExpression*, KOBWBValue> ownValues;
    PropertyTables properties;
};

} // namespace kobwb

#endif
