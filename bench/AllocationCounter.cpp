#include "AllocationCounter.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::size_t> allocations{0};
std::atomic<std::size_t> bytes{0};
} // namespace

namespace bench {
std::size_t AllocationCount() { return allocations.load(); }
std::size_t AllocatedBytes() { return bytes.load(); }
} // namespace bench

// malloc, calloc, aligned_alloc and realloc are replaced by counting wrappers around
// the C library's own functions, so the library's raw allocations are counted too.
extern "C" {
void* __libc_malloc(std::size_t);
void* __libc_calloc(std::size_t, std::size_t);
void* __libc_realloc(void*, std::size_t);
void* __libc_memalign(std::size_t, std::size_t);

void* malloc(std::size_t size) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    bytes.fetch_add(size, std::memory_order_relaxed);
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    bytes.fetch_add(count * size, std::memory_order_relaxed);
    return __libc_calloc(count, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    bytes.fetch_add(size, std::memory_order_relaxed);
    return __libc_memalign(alignment, size);
}

void* realloc(void* pointer, std::size_t size) {
    allocations.fetch_add(1, std::memory_order_relaxed);
    bytes.fetch_add(size, std::memory_order_relaxed);
    return __libc_realloc(pointer, size);
}
}
