#include "KOBWBNodeArena.h"

#include <cstdlib>

namespace kobwb {

namespace {
constexpr std::size_t RoundUp(std::size_t size, std::size_t alignment) {
    return (size + alignment - 1) / alignment * alignment;
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
        const std::size_t length = size > blockSize ? size : blockSize;
        Block* block = static_cast<Block*>(std::malloc(header + length));
        if (!block) return nullptr;
        block->previous = m_last;
        m_last = block;
        m_bottom = reinterpret_cast<unsigned char*>(block) + header;
        m_top = m_bottom + length;
    }
    m_top -= size;
    return m_top;
}

} // namespace kobwb
