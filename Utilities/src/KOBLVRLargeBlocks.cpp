#include "KOBLVRLargeBlocks.h"

#include <cstdint>
#include <cstdlib>

#if defined(__linux__)
#include <sys/mman.h>
#endif

namespace kobwb {

#if defined(__linux__) && defined(MADV_HUGEPAGE)

namespace {

constexpr std::size_t WholeHugePages(std::size_t bytes) { return (bytes + hugePage - 1) / hugePage * hugePage; }

} // namespace

void* AllocateLargeBlock(std::size_t bytes) noexcept {
    if (bytes < hugePage) return std::malloc(bytes);
    // One huge page more than needed is mapped, and what lies outside the aligned
    // block given back.
    const std::size_t length = WholeHugePages(bytes);
    void* mapped = mmap(nullptr, length + hugePage, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED) return nullptr;
    const std::uintptr_t start = reinterpret_cast<std::uintptr_t>(mapped);
    const std::uintptr_t aligned = (start + hugePage - 1) / hugePage * hugePage;
    if (aligned > start) munmap(mapped, aligned - start);
    const std::size_t after = start + length + hugePage - (aligned + length);
    if (after > 0) munmap(reinterpret_cast<void*>(aligned + length), after);
    void* block = reinterpret_cast<void*>(aligned);
    madvise(block, length, MADV_HUGEPAGE);
    return block;
}

void FreeLargeBlock(void* block, std::size_t bytes) noexcept {
    if (bytes < hugePage)
        std::free(block);
    else if (block)
        munmap(block, WholeHugePages(bytes));
}

void AdviseHugePages(void* data, std::size_t bytes) noexcept {
    const std::uintptr_t start = reinterpret_cast<std::uintptr_t>(data);
    const std::uintptr_t first = (start + hugePage - 1) / hugePage * hugePage;
    const std::uintptr_t last = (start + bytes) / hugePage * hugePage;
    if (last > first) madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
}

#else

void* AllocateLargeBlock(std::size_t bytes) noexcept { return std::malloc(bytes); }

void FreeLargeBlock(void* block, std::size_t) noexcept { std::free(block); }

void AdviseHugePages(void*, std::size_t) noexcept {}

#endif

} // namespace kobwb
