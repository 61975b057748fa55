#ifndef KOBLVRHashTable_h
#define KOBLVRHashTable_h

#include <cstddef>
#include <utility>
#include <vector>

// An open-addressing hash table of entries found by their hash and by a test of
// equality given at each look-up, so that an entry may hold its key or only the
// place of its key in a list that the caller keeps. Linear probing over a power of
// two of slots, at most half of them full.
//
// Every slot carries the generation that filled it and only the slots of the
// current generation are full, so that Clear() is one increment and the storage is
// kept for what comes next. A table costs what it holds, never what it held.
//
// Pointers to entries stay valid until the next Insert.
template <typename Entry>
class KOBLVRHashTable {
public:
    KOBLVRHashTable() = default;

    std::size_t Size() const { return m_size; }

    // Empties the table without touching its slots.
    void Clear() {
        m_size = 0;
        if (++m_generation != 0) return;
        // After 2^32 clears the generations start again from slots all marked empty.
        for (Slot& slot : m_slots) slot.generation = 0;
        m_generation = 1;
    }

    // Makes room for count entries, so that inserting them does not grow the table.
    void Reserve(std::size_t count) {
        while (2 * count > m_slots.size()) Grow();
    }

    // The entry of this hash for which equal(entry) holds; null when there is none.
    template <typename Equal>
    Entry* Find(std::size_t hash, Equal equal) {
        const std::size_t slot = Probe(hash, equal);
        return slot < m_slots.size() && m_slots[slot].generation == m_generation ? &m_slots[slot].entry : nullptr;
    }
    template <typename Equal>
    const Entry* Find(std::size_t hash, Equal equal) const {
        return const_cast<KOBLVRHashTable*>(this)->Find(hash, equal);
    }

    // The entry found as Find finds it, and false; or entry, inserted, and true.
    template <typename Equal>
    std::pair<Entry*, bool> Insert(std::size_t hash, Equal equal, Entry entry) {
        if (2 * (m_size + 1) > m_slots.size()) Grow();
        const std::size_t slot = Probe(hash, equal);
        Slot& found = m_slots[slot];
        if (found.generation == m_generation) return {&found.entry, false};
        found.hash = hash;
        found.generation = m_generation;
        found.entry = std::move(entry);
        ++m_size;
        return {&found.entry, true};
    }

    // Calls visit(entry) on every entry, in no particular order.
    template <typename Visit>
    void ForEach(Visit visit) const {
        for (const Slot& slot : m_slots)
            if (slot.generation == m_generation) visit(slot.entry);
    }

private:
    struct Slot {
        std::size_t hash = 0;
        unsigned generation = 0;
        Entry entry{};
    };

    static std::size_t Spread(std::size_t hash) { return (hash ^ hash >> 31) * 0x9E3779B97F4A7C15ull >> 7; }

    // The slot holding the entry equal to the one sought, or the empty slot where it
    // goes; the size of the slots when there are none.
    template <typename Equal>
    std::size_t Probe(std::size_t hash, Equal& equal) {
        if (m_slots.empty()) return 0;
        const std::size_t mask = m_slots.size() - 1;
        for (std::size_t i = Spread(hash) & mask;; i = (i + 1) & mask) {
            const Slot& slot = m_slots[i];
            if (slot.generation != m_generation) return i;
            if (slot.hash == hash && equal(slot.entry)) return i;
        }
    }

    void Grow() {
        std::vector<Slot> old(m_slots.empty() ? 16 : 2 * m_slots.size());
        old.swap(m_slots);
        const unsigned generation = m_generation;
        m_generation = 1;
        const std::size_t mask = m_slots.size() - 1;
        for (Slot& slot : old) {
            if (slot.generation != generation) continue;
            std::size_t i = Spread(slot.hash) & mask;
            while (m_slots[i].generation == m_generation) i = (i + 1) & mask;
            m_slots[i] = {slot.hash, m_generation, std::move(slot.entry)};
        }
    }

    std::vector<Slot> m_slots;
    std::size_t m_size = 0;
    unsigned m_generation = 1;
};

#endif
