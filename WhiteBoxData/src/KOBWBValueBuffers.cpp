#include "KOBWBValueBuffers.h"

#include <new>

namespace kobwb {

ValueBuffers::~ValueBuffers() {
    for (unsigned number = 1; number < m_count; ++number) (*this)[number].~ValueBuffer();
    for (ValueBuffer* chunk : m_chunks) ::operator delete(chunk);
}

unsigned ValueBuffers::Make() {
    if (m_count == 0) return 0;
    if ((m_count >> chunkBits) >= m_chunks.size()) {
        void* chunk = ::operator new(sizeof(ValueBuffer) * chunkSize, std::nothrow);
        if (!chunk) return 0;
        m_chunks.push_back(static_cast<ValueBuffer*>(chunk));
    }
    new (&(*this)[m_count]) ValueBuffer;
    // Past the last number, no buffer is made any more.
    return m_count++;
}

} // namespace kobwb
