#ifndef KOBWBVariableIndex_h
#define KOBWBVariableIndex_h

#include "KOBLVRString.h"
#include "KOBWBLocation.h"
#include "KOBWBModelLists.h"

#include <cstddef>
#include <deque>
#include <vector>

// The variable occurrences of a model, grouped by name. Each name is kept once,
// shared by its occurrences, and gets an index (0, 1, ... in order of first
// appearance) that they carry. Names are found through an open-addressing hash
// table. The occurrences are kept in creation order; their grouping by name is
// built when a query needs it, so that parsing touches only the hash table and
// the name's entry for each identifier. Names are NUL-terminated texts.
class KOBWBVariableIndex {
public:
    // A new occurrence of the name, built in memory (room for a KOBWBVarNode);
    // null when it cannot be built.
    KOBWBVarNode* Create(const KOBWBLocation& location, const char* name, void* memory);
    // Forgets the occurrences (before they are freed).
    void Remove(const std::vector<KOBWBVarNode*>& nodes);

    KOBWBVarNode* GetFirst(const char* name) const;
    KOBWBVarNode* Find(const char* name, const KOBWBLocation& location) const;
    // Appends the occurrences of one name, or of all in creation order.
    int AppendOccurrences(int nameIndex, KOBLVRListPKOBWBVarNode& out) const;
    int AppendAll(KOBLVRListPKOBWBVarNode& out) const;
    // The index of the name, -1 when absent.
    int IndexOf(const char* name) const;
    // Starts loading the part of the table where the name is looked up, for a
    // lookup to come; changes nothing.
    void Foresee(const char* name, size_t length) const;
    // Sets on every occurrence the unit class classes[i] of its name i, where
    // that is not null.
    void SetUnitTypes(const std::vector<const KOBLVRString*>& classes);

    int GetNbOfOccurrences() const { return m_nbOfOccurrences; }
    int GetNbOfLiveNames() const { return m_nbOfLiveNames; }
    int GetNbOfNames() const { return static_cast<int>(m_entries.size()); }

private:
    static constexpr size_t inlineLength = 15;

    struct Entry {
        // The shared text, and its first characters kept here so that a lookup
        // compares most names without leaving the entry.
        KOBLVRString name;
        size_t length = 0;
        char prefix[inlineLength] = {};
        // Where the latest occurrence was created, and whether they all came in
        // the order of their locations (as the parser creates them).
        KOBWBLocation lastLocation;
        bool sorted = true;
        int count = 0;
    };
    struct Slot {
        unsigned hash;
        int index; // -1 for an empty slot
    };
    // An occurrence with its name index, so that a walk by name need not read
    // the node; the node is null once removed.
    struct Occurrence {
        KOBWBVarNode* node;
        int nameIndex;
    };

    static unsigned Hash(const char* name, size_t length);
    bool IsNamed(const Entry& entry, const char* name, size_t length) const;
    // The slot holding the name, or the empty slot where it would go.
    size_t Probe(const char* name, size_t length, unsigned hash) const;
    void Grow();
    // Groups the occurrences by name, in creation order within each name.
    void Group() const;

    // A deque keeps the names where they are as it grows.
    std::deque<Entry> m_entries;
    std::vector<Slot> m_slots;
    // Every occurrence in creation order.
    std::vector<Occurrence> m_occurrences;
    int m_nbOfOccurrences = 0;
    int m_nbOfLiveNames = 0;
    // Where the latest occurrence of any name was created, and whether they all
    // came in the order of their locations: then a place past the latest one
    // holds no occurrence, which the parser's question for each identifier
    // answers without looking the name up.
    KOBWBLocation m_lastLocation;
    bool m_sorted = true;
    // The occurrences grouped by name: those of name i are at
    // m_grouped[m_groupStart[i]] up to m_grouped[m_groupStart[i + 1]].
    mutable std::vector<KOBWBVarNode*> m_grouped;
    mutable std::vector<int> m_groupStart;
    mutable bool m_isGrouped = false;
};

#endif
