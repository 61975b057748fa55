#include "KOBWBNodeArena.h"

#include <cstdlib>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace kobwb {

namespace {
constexpr std::size_t RoundUp(std::size_t size, std::size_t alignment) {
    return (size + alignment - 1) / alignment * alignment;
}

// Room for a block of length bytes. Blocks of whole huge pages are aligned on
// them and asked to be backed by them where the system offers it: a factory of a
// million nodes then takes a few dozen page faults instead of tens of thousands.
void* AllocateBlock(std::size_t length) {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    if (length % NodeArena::hugePage == 0) {
        void* block = std::aligned_alloc(NodeArena::hugePage, length);
        if (block) madvise(block, length, MADV_HUGEPAGE);
        return block;
    }
#endif
    return std::malloc(length);
}
} // namespace

NodeArena::~NodeArena() {
    while (m_last) {
        Block* previous = m_last->previous;
        std::free(m_last);
        m_last = previous;
    }
}

void* NodeArena::Allocate(std::size_t size) noexcept {
    size = RoundUp(size, alignment);
    if (!m_top || static_cast<std::size_t>(m_top - m_bottom) < size) {
        const std::size_t header = RoundUp(sizeof(Block), alignment);
        const std::size_t length = RoundUp(header + size, m_blockSize);
        Block* block = static_cast<Block*>(AllocateBlock(length));
        if (!block) return nullptr;
        block->previous = m_last;
        m_last = block;
        m_bottom = reinterpret_cast<unsigned char*>(block) + header;
        m_top = reinterpret_cast<unsigned char*>(block) + length;
        if (m_blockSize < maxBlockSize) m_blockSize *= 2;
    }
    m_top -= size;
    return m_top;
}

} // namespace kobwb
