#ifndef KOBWBSlotTable_h
#define KOBWBSlotTable_h

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kobwb {

// A hash table from 64-bit keys to slot numbers, for tables of millions of entries
// filled once (the nodes of a system's graphs, the steps of a tape): open addressing
// with linear probing, no allocation per entry, no removal. A key is given with its
// hash; Equal tells whether a stored slot holds the key, so keys that do not fit in
// 64 bits (an n-ary step with its arguments) are compared by the caller.
class SlotTable {
public:
    explicit SlotTable(std::size_t expected = 16) { Grow(expected); }

    // The slot stored under hash for which equal(slot) holds; -1 when there is none.
    template <class Equal>
    int Find(std::uint64_t hash, Equal equal) const {
        for (std::size_t i = Home(hash);; i = (i + 1) & m_mask) {
            const Entry& entry = m_entries[i];
            if (entry.slot < 0) return -1;
            if (entry.hash == hash && equal(entry.slot)) return entry.slot;
        }
    }
    // Stores slot under hash; the caller has made sure the key is not there.
    void Insert(std::uint64_t hash, int slot) {
        if (2 * (m_count + 1) > m_entries.size()) Grow(m_entries.size());
        std::size_t i = Home(hash);
        while (m_entries[i].slot >= 0) i = (i + 1) & m_mask;
        m_entries[i] = {hash, slot};
        ++m_count;
    }

    static std::uint64_t Mix(std::uint64_t h, std::uint64_t value) {
        h ^= value + 0x9e3779b97f4a7c15ULL + (h << 6) + (h >> 2);
        return h * 0xff51afd7ed558ccdULL;
    }

private:
    struct Entry {
        std::uint64_t hash = 0;
        int slot = -1;
    };

    std::size_t Home(std::uint64_t hash) const { return static_cast<std::size_t>(hash >> 17) & m_mask; }
    void Grow(std::size_t atLeast) {
        std::size_t size = 16;
        while (size < 2 * atLeast) size *= 2;
        std::vector<Entry> old;
        old.swap(m_entries);
        m_entries.assign(size, Entry{});
        m_mask = size - 1;
        m_count = 0;
        for (const Entry& entry : old)
            if (entry.slot >= 0) Insert(entry.hash, entry.slot);
    }

    std::vector<Entry> m_entries;
    std::size_t m_mask = 0;
    std::size_t m_count = 0;
};

} // namespace kobwb

#endif
