#include "KOBLVRFile.h"

#include <cstdlib>

KOBLVRString KOBLVRGetEnv(const KOBLVRString& name) {
    const char* value = std::getenv(name.str());
    return KOBLVRString(value ? value : "");
}

KOBLVRString KOBLVRMakePath(const KOBLVRString& directory, const KOBLVRString& file) {
    if (directory.IsEmpty()) return file;
    KOBLVRString path(directory);
    if (directory.str()[directory.Length() - 1] != '/') path += "/";
    path += file;
    return path;
}
