#ifndef KOBWBNodeUnit_h
#define KOBWBNodeUnit_h

#include "KOBLVRString.h"
#include "KOBWBLocation.h"

#include <memory>

// The unit of a node: its text (null for "None", a shared text for a known
// unit) and where it was written, with the texts the node holds itself when
// they are not known ones (seldom: they stay apart, and the unit small enough
// to lie next to its node in the model's store).
struct KOBWBNodeUnit {
    const KOBLVRString* text = nullptr;
    KOBWBLocation location;
    std::unique_ptr<KOBLVRString> ownText;
    std::unique_ptr<KOBLVRString> ownClass;
};

#endif
