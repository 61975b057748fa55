#include "KOBWBNodeStore.h"

#include "KOBWBNode.h"

#include <cstdlib>

namespace {

const size_t alignment = alignof(std::max_align_t);
const size_t largestBlock = 1 << 20;

} // namespace

KOBWBNodeStore::~KOBWBNodeStore() {
    const size_t ahead = 16;
    for (size_t i = 0; i < m_nodes.size(); ++i) {
        // Ask for the coming nodes early: the walk is bound by memory.
        if (i + ahead < m_nodes.size()) __builtin_prefetch(m_nodes[i + ahead]);
        if (m_nodes[i]) KOBWBNode::Release(m_nodes[i]);
    }
    for (void* block : m_blocks)
        std::free(block);
}

void* KOBWBNodeStore::Allocate(size_t size) {
    size = (size + alignment - 1) & ~(alignment - 1);
    if (size > m_left) {
        // Blocks double up to a megabyte: small models stay small.
        const size_t blockSize = size > m_blockSize ? size : m_blockSize;
        void* block = std::malloc(blockSize);
        if (!block) return nullptr;
        m_blocks.push_back(block);
        m_next = static_cast<char*>(block);
        m_left = blockSize;
        if (m_blockSize < largestBlock) m_blockSize *= 2;
    }
    void* room = m_next;
    m_next += size;
    m_left -= size;
    return room;
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
    if (slot < 0 || slot >= static_cast<int>(m_nodes.size()) || m_nodes[slot] != node) return;
    m_nodes[slot] = nullptr;
    ++m_nbOfFreed;
    KOBWBNode::Release(node);
}
