#include "KOBWBTextStore.h"

#include <cstring>
#include <new>

namespace {

const size_t blockSize = 16384;

} // namespace

const char* KOBWBTextStore::Copy(const char* text, size_t length) {
    const size_t size = length + 1;
    if (size > m_left) {
        // A text longer than a block gets a block of its own size.
        const size_t room = size > blockSize ? size : blockSize;
        char* block = new (std::nothrow) char[room];
        if (!block) return nullptr;
        m_blocks.emplace_back(block);
        m_next = block;
        m_left = room;
    }
    char* copy = m_next;
    std::memcpy(copy, text, length);
    copy[length] = '\0';
    m_next += size;
    m_left -= size;
    return copy;
}
