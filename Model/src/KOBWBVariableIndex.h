#ifndef KOBWBVariableIndex_h
#define KOBWBVariableIndex_h

#include "KOBWBModelLists.h"

#include <string>
#include <unordered_map>
#include <vector>

class KOBLVRString;
class KOBWBLocation;

// The variable occurrences of a model, grouped by name. Each name gets an index
// (0, 1, ... in order of first appearance) that its occurrences carry.
class KOBWBVariableIndex {
public:
    // Records an occurrence and gives it the index of its name.
    void Add(KOBWBVarNode* node);
    void Remove(KOBWBVarNode* node);

    KOBWBVarNode* GetFirst(const KOBLVRString& name) const;
    KOBWBVarNode* Find(const KOBLVRString& name, const KOBWBLocation& location) const;
    int AppendOccurrences(const KOBLVRString& name, KOBLVRListPKOBWBVarNode& out) const;
    int AppendOccurrences(int nameIndex, KOBLVRListPKOBWBVarNode& out) const;

    int GetNbOfOccurrences() const { return m_nbOfOccurrences; }
    int GetNbOfLiveNames() const { return m_nbOfLiveNames; }
    int GetNbOfNames() const { return static_cast<int>(m_entries.size()); }

private:
    struct Entry {
        std::vector<KOBWBVarNode*> occurrences;
        // True while the occurrences are in the order of their locations, as
        // the parser creates them; a lookup by location is then a binary search.
        bool sorted = true;
    };

    int IndexOf(const KOBLVRString& name) const;

    std::unordered_map<std::string, int> m_indexByName;
    std::vector<Entry> m_entries;
    int m_nbOfOccurrences = 0;
    int m_nbOfLiveNames = 0;
};

#endif
