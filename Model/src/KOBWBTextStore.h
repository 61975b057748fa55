#ifndef KOBWBTextStore_h
#define KOBWBTextStore_h

#include <cstddef>
#include <memory>
#include <vector>

// Copies of short texts that all go at once, such as the identifiers of one
// parse: they are laid one after the other in blocks, so that a copy costs no
// allocation of its own.
class KOBWBTextStore {
public:
    // A NUL-terminated copy of the length characters at text; null when memory
    // runs out.
    const char* Copy(const char* text, size_t length);

private:
    std::vector<std::unique_ptr<char[]>> m_blocks;
    char* m_next = nullptr;
    size_t m_left = 0;
};

#endif
