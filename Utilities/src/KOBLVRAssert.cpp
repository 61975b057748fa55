#include "KOBLVRAssert.h"

#include <cstdio>

namespace {

void WriteToStandardError(const char* condition, const char* file, unsigned line) {
    std::fprintf(stderr, "Assertion failed: %s, module %s, line %u\n", condition ? condition : "",
                 file ? file : "", line);
}

KOBLVRAssertHandler currentHandler = WriteToStandardError;

} // namespace

KOBLVRAssertHandler KOBLVRSetAssertHandler(KOBLVRAssertHandler handler) {
    const KOBLVRAssertHandler previous = currentHandler;
    currentHandler = handler ? handler : WriteToStandardError;
    return previous;
}

void KOBLVRAssertError(const char* condition, const char* file, unsigned line) {
    currentHandler(condition, file, line);
}
