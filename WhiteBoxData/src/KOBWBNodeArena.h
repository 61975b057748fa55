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
    // Each block begins with a link to the block made before it, and its size.
    struct Block {
        Block* previous;
        std::size_t length;
    };

    // Blocks double from the first size up to the last, so that a small factory
    // stays small and a large one needs few blocks.
    static constexpr std::size_t firstBlockSize = 16 * 1024;
    static constexpr std::size_t maxBlockSize = hugePage;
    // Nodes are packed at the alignment of their pointers: a node is a few words of
    // header and children, its value buffer kept apart, and padding it to a cache line
    // would double the memory of a graph.
    static constexpr std::size_t alignment = alignof(void*);

    Block* m_last = nullptr;
    unsigned char* m_bottom = nullptr;
    unsigned char* m_top = nullptr;
    std::size_t m_blockSize = firstBlockSize;
};

} // namespace kobwb

#endif
