#include "KOBWBVariableIndex.h"

#include "KOBWBVarNode.h"

#include <algorithm>

namespace {

// Text order of locations: by first line, first column, last line, last column.
bool IsBefore(const KOBWBLocation& a, const KOBWBLocation& b) {
    if (a.GetFirstLine() != b.GetFirstLine()) return a.GetFirstLine() < b.GetFirstLine();
    if (a.GetFirstColumn() != b.GetFirstColumn()) return a.GetFirstColumn() < b.GetFirstColumn();
    if (a.GetLastLine() != b.GetLastLine()) return a.GetLastLine() < b.GetLastLine();
    return a.GetLastColumn() < b.GetLastColumn();
}

} // namespace

int KOBWBVariableIndex::IndexOf(const KOBLVRString& name) const {
    const auto found = m_indexByName.find(std::string(name.str(), name.Length()));
    return found == m_indexByName.end() ? -1 : found->second;
}

void KOBWBVariableIndex::Add(KOBWBVarNode* node) {
    const KOBLVRString& name = node->GetName();
    const auto inserted = m_indexByName.emplace(std::string(name.str(), name.Length()),
                                                static_cast<int>(m_entries.size()));
    if (inserted.second) m_entries.emplace_back();
    Entry& entry = m_entries[inserted.first->second];
    if (entry.occurrences.empty()) ++m_nbOfLiveNames;
    else if (IsBefore(node->GetLocation(), entry.occurrences.back()->GetLocation()))
        entry.sorted = false;
    entry.occurrences.push_back(node);
    node->m_nameIndex = inserted.first->second;
    ++m_nbOfOccurrences;
}

void KOBWBVariableIndex::Remove(KOBWBVarNode* node) {
    const int index = node->m_nameIndex;
    if (index < 0 || index >= GetNbOfNames()) return;
    std::vector<KOBWBVarNode*>& occurrences = m_entries[index].occurrences;
    const auto found = std::find(occurrences.begin(), occurrences.end(), node);
    if (found == occurrences.end()) return;
    occurrences.erase(found);
    node->m_nameIndex = -1;
    --m_nbOfOccurrences;
    if (occurrences.empty()) --m_nbOfLiveNames;
}

KOBWBVarNode* KOBWBVariableIndex::GetFirst(const KOBLVRString& name) const {
    const int index = IndexOf(name);
    if (index < 0 || m_entries[index].occurrences.empty()) return nullptr;
    return m_entries[index].occurrences.front();
}

KOBWBVarNode* KOBWBVariableIndex::Find(const KOBLVRString& name,
                                       const KOBWBLocation& location) const {
    const int index = IndexOf(name);
    if (index < 0) return nullptr;
    const Entry& entry = m_entries[index];
    if (entry.sorted) {
        const auto found = std::lower_bound(
            entry.occurrences.begin(), entry.occurrences.end(), location,
            [](const KOBWBVarNode* node, const KOBWBLocation& wanted) {
                return IsBefore(node->GetLocation(), wanted);
            });
        return found != entry.occurrences.end() && (*found)->GetLocation().Compare(location)
                   ? *found
                   : nullptr;
    }
    for (KOBWBVarNode* node : entry.occurrences)
        if (node->GetLocation().Compare(location)) return node;
    return nullptr;
}

int KOBWBVariableIndex::AppendOccurrences(const KOBLVRString& name,
                                          KOBLVRListPKOBWBVarNode& out) const {
    const int index = IndexOf(name);
    return index < 0 ? 0 : AppendOccurrences(index, out);
}

int KOBWBVariableIndex::AppendOccurrences(int nameIndex, KOBLVRListPKOBWBVarNode& out) const {
    if (nameIndex < 0 || nameIndex >= GetNbOfNames()) return 0;
    const std::vector<KOBWBVarNode*>& occurrences = m_entries[nameIndex].occurrences;
    for (KOBWBVarNode* node : occurrences) out.Append(node);
    return static_cast<int>(occurrences.size());
}
