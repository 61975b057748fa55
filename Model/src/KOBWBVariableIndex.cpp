#include "KOBWBVariableIndex.h"

#include "KOBWBVarNode.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace {

// Text order of locations: by first line, first column, last line, last column.
bool IsBefore(const KOBWBLocation& a, const KOBWBLocation& b) {
    if (a.GetFirstLine() != b.GetFirstLine()) return a.GetFirstLine() < b.GetFirstLine();
    if (a.GetFirstColumn() != b.GetFirstColumn()) return a.GetFirstColumn() < b.GetFirstColumn();
    if (a.GetLastLine() != b.GetLastLine()) return a.GetLastLine() < b.GetLastLine();
    return a.GetLastColumn() < b.GetLastColumn();
}

} // namespace

unsigned KOBWBVariableIndex::Hash(const char* name, size_t length) {
    unsigned hash = 2166136261u;
    for (size_t i = 0; i < length; ++i) {
        hash ^= static_cast<unsigned char>(name[i]);
        hash *= 16777619u;
    }
    return hash;
}

bool KOBWBVariableIndex::IsNamed(const Entry& entry, const char* name, size_t length) const {
    if (entry.length != length) return false;
    if (length <= inlineLength) return std::memcmp(entry.prefix, name, length) == 0;
    return std::memcmp(entry.name.str(), name, length) == 0;
}

size_t KOBWBVariableIndex::Probe(const char* name, size_t length, unsigned hash) const {
    const size_t mask = m_slots.size() - 1;
    for (size_t slot = hash & mask;; slot = (slot + 1) & mask) {
        const Slot& candidate = m_slots[slot];
        if (candidate.index < 0) return slot;
        if (candidate.hash == hash && IsNamed(m_entries[candidate.index], name, length))
            return slot;
    }
}

void KOBWBVariableIndex::Grow() {
    std::vector<Slot> slots(m_slots.empty() ? 256 : m_slots.size() * 2, Slot{0, -1});
    m_slots.swap(slots);
    const size_t mask = m_slots.size() - 1;
    for (const Slot& old : slots) {
        if (old.index < 0) continue;
        size_t slot = old.hash & mask;
        while (m_slots[slot].index >= 0)
            slot = (slot + 1) & mask;
        m_slots[slot] = old;
    }
}

int KOBWBVariableIndex::IndexOf(const char* name) const {
    if (m_slots.empty() || !name) return -1;
    const size_t length = std::strlen(name);
    return m_slots[Probe(name, length, Hash(name, length))].index;
}

void KOBWBVariableIndex::Foresee(const char* name, size_t length) const {
    if (m_slots.empty() || length == 0) return;
    __builtin_prefetch(&m_slots[Hash(name, length) & (m_slots.size() - 1)]);
}

KOBWBVarNode* KOBWBVariableIndex::Create(const KOBWBLocation& location, const char* name,
                                         void* memory) {
    const size_t length = name ? std::strlen(name) : 0;
    if (length == 0 || !memory) return nullptr;
    // At most half the slots in use keeps the probes short.
    if (2 * (m_entries.size() + 1) > m_slots.size()) Grow();
    const unsigned hash = Hash(name, length);
    const size_t slot = Probe(name, length, hash);
    int index = m_slots[slot].index;
    if (index < 0) {
        index = static_cast<int>(m_entries.size());
        m_entries.emplace_back();
        Entry& entry = m_entries.back();
        entry.name = name;
        entry.length = length;
        std::memcpy(entry.prefix, name, std::min(length, inlineLength));
        m_slots[slot] = Slot{hash, index};
    }
    Entry& entry = m_entries[index];
    KOBWBVarNode* node = new (memory) KOBWBVarNode(location, &entry.name, index);
    if (entry.count == 0)
        ++m_nbOfLiveNames;
    else if (IsBefore(location, entry.lastLocation))
        entry.sorted = false;
    ++entry.count;
    entry.lastLocation = location;
    if (m_nbOfOccurrences > 0 && IsBefore(location, m_lastLocation)) m_sorted = false;
    m_lastLocation = location;
    node->m_occurrenceSlot = static_cast<int>(m_occurrences.size());
    m_occurrences.push_back(Occurrence{node, index});
    ++m_nbOfOccurrences;
    m_isGrouped = false;
    return node;
}

void KOBWBVariableIndex::Remove(const std::vector<KOBWBVarNode*>& nodes) {
    for (KOBWBVarNode* node : nodes) {
        const int slot = node->m_occurrenceSlot;
        if (slot < 0 || slot >= static_cast<int>(m_occurrences.size()) ||
            m_occurrences[slot].node != node)
            continue;
        m_occurrences[slot].node = nullptr;
        node->m_occurrenceSlot = -1;
        --m_nbOfOccurrences;
        if (--m_entries[node->m_nameIndex].count == 0) --m_nbOfLiveNames;
    }
    m_isGrouped = false;
    // Once half the slots are empty, close the gaps.
    if (2 * static_cast<size_t>(m_nbOfOccurrences) < m_occurrences.size()) {
        size_t kept = 0;
        for (const Occurrence& occurrence : m_occurrences) {
            if (!occurrence.node) continue;
            occurrence.node->m_occurrenceSlot = static_cast<int>(kept);
            m_occurrences[kept++] = occurrence;
        }
        m_occurrences.resize(kept);
    }
}

void KOBWBVariableIndex::Group() const {
    if (m_isGrouped) return;
    // A counting sort by name index, which keeps creation order within a name.
    m_groupStart.assign(m_entries.size() + 1, 0);
    for (const Occurrence& occurrence : m_occurrences)
        if (occurrence.node) ++m_groupStart[occurrence.nameIndex + 1];
    for (size_t i = 1; i < m_groupStart.size(); ++i)
        m_groupStart[i] += m_groupStart[i - 1];
    m_grouped.assign(static_cast<size_t>(m_nbOfOccurrences), nullptr);
    std::vector<int> next(m_groupStart.begin(), m_groupStart.end() - 1);
    for (const Occurrence& occurrence : m_occurrences)
        if (occurrence.node) m_grouped[next[occurrence.nameIndex]++] = occurrence.node;
    m_isGrouped = true;
}

KOBWBVarNode* KOBWBVariableIndex::GetFirst(const char* name) const {
    const int index = IndexOf(name);
    if (index < 0 || m_entries[index].count == 0) return nullptr;
    Group();
    return m_grouped[m_groupStart[index]];
}

KOBWBVarNode* KOBWBVariableIndex::Find(const char* name, const KOBWBLocation& location) const {
    if (m_nbOfOccurrences == 0 || (m_sorted && IsBefore(m_lastLocation, location))) return nullptr;
    const int index = IndexOf(name);
    if (index < 0) return nullptr;
    const Entry& entry = m_entries[index];
    // The parser asks for each occurrence as it meets it: past the latest one
    // there is nothing to find.
    if (entry.count == 0 || (entry.sorted && IsBefore(entry.lastLocation, location)))
        return nullptr;
    Group();
    for (int i = m_groupStart[index]; i < m_groupStart[index + 1]; ++i)
        if (m_grouped[i]->GetLocation().Compare(location)) return m_grouped[i];
    return nullptr;
}

int KOBWBVariableIndex::AppendOccurrences(int nameIndex, KOBLVRListPKOBWBVarNode& out) const {
    if (nameIndex < 0 || nameIndex >= GetNbOfNames()) return 0;
    Group();
    for (int i = m_groupStart[nameIndex]; i < m_groupStart[nameIndex + 1]; ++i)
        out.Append(m_grouped[i]);
    return m_groupStart[nameIndex + 1] - m_groupStart[nameIndex];
}

int KOBWBVariableIndex::AppendAll(KOBLVRListPKOBWBVarNode& out) const {
    for (const Occurrence& occurrence : m_occurrences)
        if (occurrence.node) out.Append(occurrence.node);
    return m_nbOfOccurrences;
}

void KOBWBVariableIndex::SetUnitTypes(const std::vector<const KOBLVRString*>& classes) {
    const auto classOf = [&classes](const Occurrence& occurrence) -> const KOBLVRString* {
        const size_t name = static_cast<size_t>(occurrence.nameIndex);
        return occurrence.node && name < classes.size() ? classes[name] : nullptr;
    };
    // The occurrences lie among the other nodes in creation order, long out of
    // the cache: those to change are asked for ahead of the writes.
    const size_t ahead = 32;
    const size_t count = m_occurrences.size();
    for (size_t i = 0; i < count; ++i) {
        if (i + ahead < count && classOf(m_occurrences[i + ahead]))
            __builtin_prefetch(m_occurrences[i + ahead].node, 1);
        if (const KOBLVRString* unitClass = classOf(m_occurrences[i]))
            m_occurrences[i].node->SetUnitType(*unitClass);
    }
}
