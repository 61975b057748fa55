#include "KOBWBNodeArena.h"

#include "KOBLVRLargeBlocks.h"

#include <cstdint>

namespace kobwb {

namespace {
constexpr std::size_t RoundUp(std::size_t size, std::size_t alignment) {
    return (size + alignment - 1) / alignment * alignment;
}
} // namespace

NodeArena::~NodeArena() {
    while (m_last) {
        Block* previous = m_last->previous;
        FreeLargeBlock(m_last, m_last->length);
        m_last = previous;
    }
}

void* NodeArena::Allocate(std::size_t size) noexcept {
    size = RoundUp(size, alignment);
    if (!m_top || static_cast<std::size_t>(m_top - m_bottom) < size) {
        const std::size_t header = RoundUp(sizeof(Block), alignment);
        const std::size_t length = RoundUp(header + size + alignment, m_blockSize);
        Block* block = static_cast<Block*>(AllocateLargeBlock(length));
        if (!block) return nullptr;
        block->previous = m_last;
        block->length = length;
        m_last = block;
        m_bottom = reinterpret_cast<unsigned char*>(block) + header;
        // The top of the block, down to the alignment whatever the block's own.
        const std::uintptr_t end = reinterpret_cast<std::uintptr_t>(block) + length;
        m_top = reinterpret_cast<unsigned char*>(end / alignment * alignment);
        if (m_blockSize < maxBlockSize) m_blockSize *= 2;
    }
    m_top -= size;
    return m_top;
}

} // namespace kobwb
