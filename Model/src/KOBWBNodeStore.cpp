#include "KOBWBNodeStore.h"

#include "KOBWBNode.h"

KOBWBNodeStore::~KOBWBNodeStore() {
    for (KOBWBNode* node : m_nodes) KOBWBNode::Free(node);
}

void KOBWBNodeStore::Take(KOBWBNode* node) {
    // Once half the slots hold freed nodes, close the gaps so that a model whose
    // equations are removed one by one does not keep growing.
    if (m_nbOfFreed > 64 && m_nbOfFreed * 2 > static_cast<int>(m_nodes.size())) {
        size_t kept = 0;
        for (KOBWBNode* stored : m_nodes) {
            if (!stored) continue;
            stored->m_storeSlot = static_cast<int>(kept);
            m_nodes[kept++] = stored;
        }
        m_nodes.resize(kept);
        m_nbOfFreed = 0;
    }
    node->m_storeSlot = static_cast<int>(m_nodes.size());
    m_nodes.push_back(node);
}

void KOBWBNodeStore::Free(KOBWBNode* node) {
    if (!node) return;
    const int slot = node->m_storeSlot;
    if (slot >= 0 && slot < static_cast<int>(m_nodes.size()) && m_nodes[slot] == node) {
        m_nodes[slot] = nullptr;
        ++m_nbOfFreed;
    }
    KOBWBNode::Free(node);
}
