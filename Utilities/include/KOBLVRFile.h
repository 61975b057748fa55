#ifndef KOBLVRFile_h
#define KOBLVRFile_h

#include "KOBLVRString.h"

// The value of an environment variable, or an empty string when it is not set.
KOBWBX_API KOBLVRString KOBLVRGetEnv(const KOBLVRString& name);

// Joins a directory and a file name with one separator.
KOBWBX_API KOBLVRString KOBLVRMakePath(const KOBLVRString& directory, const KOBLVRString& file);

#endif
