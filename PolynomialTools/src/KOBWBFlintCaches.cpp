#include "KOBWBFlintValues.h"

#include <flint/flint.h>

namespace KOBWBFlint {

namespace {

struct ThreadCaches {
    ~ThreadCaches() { flint_cleanup(); }
};

} // namespace

void ReleaseCachesAtThreadExit() {
    thread_local ThreadCaches caches;
    (void)caches;
}

} // namespace KOBWBFlint
