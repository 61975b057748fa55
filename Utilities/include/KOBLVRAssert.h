#ifndef KOBLVRAssert_h
#define KOBLVRAssert_h

#include "KOBWBxExport.h"

// A failed internal assertion is reported through the installed handler and
// execution goes on. The default handler writes one line to standard error.
typedef void (*KOBLVRAssertHandler)(const char* condition, const char* file, unsigned line);

// Installs a handler and returns the previous one; null restores the default.
KOBWBX_API KOBLVRAssertHandler KOBLVRSetAssertHandler(KOBLVRAssertHandler handler);

KOBWBX_API void KOBLVRAssertError(const char* condition, const char* file, unsigned line);

#endif
