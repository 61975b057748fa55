#ifndef KOBWBValueBuffers_h
#define KOBWBValueBuffers_h

#include "KOBWBValue.h"

#include <memory>
#include <vector>

namespace kobwb {

// A node's value buffer, with the buffer generation it was filled in: a buffer filled
// in an earlier generation is stale.
struct ValueBuffer {
    KOBWBValue value;
    unsigned generation = 0;
};

// The value buffers of a factory's nodes. A node gets its buffer when its own value is
// first asked for or computed; a node that only evaluation plans compute, as most nodes
// below a root or a Jacobian entry are, never needs one, so that a node is the few
// words of its header and children. Buffers are made in chunks that never move, and
// live until the factory ends.
class ValueBuffers {
public:
    ValueBuffers() = default;
    ~ValueBuffers();
    ValueBuffers(const ValueBuffers&) = delete;
    ValueBuffers& operator=(const ValueBuffers&) = delete;

    // The number of a new buffer, never 0; 0 when memory runs out.
    unsigned Make();
    ValueBuffer& operator[](unsigned number) { return m_chunks[number >> chunkBits][number & chunkMask]; }

private:
    static constexpr unsigned chunkBits = 10;
    static constexpr unsigned chunkSize = 1u << chunkBits;
    static constexpr unsigned chunkMask = chunkSize - 1;

    // Raw storage: a buffer is constructed when it is made, not when its chunk is.
    std::vector<ValueBuffer*> m_chunks;
    // Number 0 means "no buffer" and is never made.
    unsigned m_count = 1;
};

} // namespace kobwb

#endif
