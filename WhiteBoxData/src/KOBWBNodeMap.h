#ifndef KOBWBNodeMap_h
#define KOBWBNodeMap_h

#include <cstddef>
#include <unordered_map>
#include <utility>

class KOBWBExpression;

// A map from nodes to values for walks over one graph. Most graphs a walk meets are
// a handful of nodes: those are kept in place and searched in turn, without a hash
// table or any allocation; a larger graph moves them into a hash table.
namespace kobwb {

template <class T>
class NodeMap {
public:
    // The value of node, null when it has none.
    T* Find(const KOBWBExpression* node) {
        if (m_count > inlineCapacity) {
            const auto found = m_large.find(node);
            return found == m_large.end() ? nullptr : &found->second;
        }
        for (std::size_t i = 0; i < m_count; ++i)
            if (m_small[i].first == node) return &m_small[i].second;
        return nullptr;
    }

    // The value of node, made with value when it has none; second tells whether it
    // was made.
    std::pair<T*, bool> Insert(const KOBWBExpression* node, const T& value) {
        if (T* known = Find(node)) return {known, false};
        if (m_count < inlineCapacity) {
            m_small[m_count] = {node, value};
            return {&m_small[m_count++].second, true};
        }
        if (m_count == inlineCapacity)
            for (std::size_t i = 0; i < m_count; ++i) m_large.emplace(m_small[i].first, m_small[i].second);
        ++m_count;
        return {&m_large.emplace(node, value).first->second, true};
    }

private:
    static constexpr std::size_t inlineCapacity = 24;

    std::pair<const KOBWBExpression*, T> m_small[inlineCapacity] = {};
    std::unordered_map<const KOBWBExpression*, T> m_large;
    std::size_t m_count = 0;
};

} // namespace kobwb

#endif
