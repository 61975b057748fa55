#ifndef KOBWBNodeUnit_h
#define KOBWBNodeUnit_h

#include "KOBLVRString.h"
#include "KOBWBLocation.h"

// The unit of a node: its text (null for "None", a shared text for a known
// unit) and where it was written, with the texts the node holds itself when
// they are not known ones.
struct KOBWBNodeUnit {
    const KOBLVRString* text = nullptr;
    KOBWBLocation location;
    KOBLVRString ownText;
    KOBLVRString ownClass;
};

#endif
