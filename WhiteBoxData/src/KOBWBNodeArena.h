#ifndef KOBWBNodeArena_h
#define KOBWBNodeArena_h

#include "KOBLVRLargeBlocks.h"

#include <cstddef>

namespace kobwb {

// The storage of a factory's nodes. Nodes live until their factory ends, so they
// are carved out of large blocks and released all at once. Each block is filled
// from its top down: a node is created after its children, and evaluation reads a
// node before its children, so a downward layout turns evaluation into a forward
// walk through memory.
class NodeArena {
public:
    NodeArena() = default;
    ~NodeArena();
    NodeArena(const NodeArena&) = delete;
    NodeArena& operator=(const NodeArena&) = delete;

    // Null when memory runs out.
    void* Allocate(std::size_t size) noexcept;

private:
    // Each block begins with a link to the block made before it.
    struct Block {
        Block* previous;
    };

    // Blocks double from the first size up to the last, so that a small factory
    // stays small and a large one needs few blocks.
    static constexpr std::size_t firstBlockSize = 16 * 1024;
    static constexpr std::size_t maxBlockSize = hugePage;
    // A node starts a cache line, so that its header and the part of its value
    // buffer that an interval uses share one line.
    static constexpr std::size_t alignment = 64;

    Block* m_last = nullptr;
    unsigned char* m_bottom = nullptr;
    unsigned char* m_top = nullptr;
    std::size_t m_blockSize = firstBlockSize;
};

} // namespace kobwb

#endif
