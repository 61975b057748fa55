#ifndef AllocationCounter_h
#define AllocationCounter_h

#include <cstddef>

// Counts the heap allocations of the whole program (global operator new and
// malloc through it), so benchmarks can report allocations per operation.
namespace bench {

std::size_t AllocationCount();
std::size_t AllocatedBytes();

} // namespace bench

#endif
