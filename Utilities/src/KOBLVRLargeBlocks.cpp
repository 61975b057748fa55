#include "KOBLVRLargeBlocks.h"

#include <cstdlib>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace kobwb {

void* AllocateLargeBlock(std::size_t bytes) noexcept {
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    if (bytes >= hugePage) {
        const std::size_t length = (bytes + hugePage - 1) / hugePage * hugePage;
        void* block = std::aligned_alloc(hugePage, length);
        if (block) madvise(block, length, MADV_HUGEPAGE);
        return block;
    }
#endif
    return std::malloc(bytes);
}

void FreeLargeBlock(void* block) noexcept { std::free(block); }

} // namespace kobwb
