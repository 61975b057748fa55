#ifndef ResidentMemory_h
#define ResidentMemory_h

#include <cstddef>
#include <cstdio>
#include <malloc.h>
#include <unistd.h>

// The resident memory of the process, which counts what the kernel gave in pages,
// blocks mapped directly included, unlike what malloc reports.
namespace bench {

inline std::size_t ResidentBytes() {
    long pages = 0;
    long resident = 0;
    if (std::FILE* statm = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(statm, "%ld %ld", &pages, &resident) != 2) resident = 0;
        std::fclose(statm);
    }
    return static_cast<std::size_t>(resident) * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// Gives the memory freed so far back to the system, so that what is measured next
// comes from fresh pages rather than from blocks freed before.
inline void ReleaseFreedMemory() { malloc_trim(0); }

} // namespace bench

#endif
