#ifndef KOBLVRLargeBlocks_h
#define KOBLVRLargeBlocks_h

#include <cstddef>
#include <new>

// Memory for large arrays that are filled once and then read again and again (the
// nodes of a factory, the plans that evaluate them). Blocks of whole huge pages are
// aligned on them and asked to be backed by them where the system offers it: filling
// a few megabytes then takes a few page faults instead of thousands. Such blocks are
// mapped from the system and given back to it when freed, so that they never leave
// freed pages in the heap, nor change how the heap serves the program's other
// allocations.
namespace kobwb {

constexpr std::size_t hugePage = 2 * 1024 * 1024;

// Null when memory runs out; the block is freed with FreeLargeBlock, given the same size.
void* AllocateLargeBlock(std::size_t bytes) noexcept;
void FreeLargeBlock(void* block, std::size_t bytes) noexcept;
// For memory that comes from elsewhere (a standard container's reserve), not yet
// touched: asks that the whole huge pages inside it be backed by huge pages.
void AdviseHugePages(void* data, std::size_t bytes) noexcept;

// An allocator for standard containers that takes its memory from large blocks.
template <class T>
struct LargeBlockAllocator {
    using value_type = T;

    LargeBlockAllocator() = default;
    template <class U>
    LargeBlockAllocator(const LargeBlockAllocator<U>&) noexcept {}

    T* allocate(std::size_t count) {
        if (count > static_cast<std::size_t>(-1) / sizeof(T)) throw std::bad_array_new_length();
        void* block = AllocateLargeBlock(count * sizeof(T));
        if (!block) throw std::bad_alloc();
        return static_cast<T*>(block);
    }
    void deallocate(T* block, std::size_t count) noexcept { FreeLargeBlock(block, count * sizeof(T)); }

    template <class U>
    bool operator==(const LargeBlockAllocator<U>&) const noexcept {
        return true;
    }
    template <class U>
    bool operator!=(const LargeBlockAllocator<U>&) const noexcept {
        return false;
    }
};

} // namespace kobwb

#endif
