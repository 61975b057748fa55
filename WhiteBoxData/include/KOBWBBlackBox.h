#ifndef KOBWBBlackBox_h
#define KOBWBBlackBox_h

#include "KOBLVRListP.h"
#include "KOBLVRString.h"

// A function that the library can only evaluate, known by its name. Callers
// derive from it.
class KOBWBX_API KOBWBBlackBox {
public:
    explicit KOBWBBlackBox(const KOBLVRString& name = KOBLVRString()) : m_name(name) {}
    virtual ~KOBWBBlackBox() = default;

    const KOBLVRString& GetName() const { return m_name; }

private:
    KOBLVRString m_name;
};

typedef KOBLVRListP<KOBWBBlackBox> KOBLVRListPKOBWBBlackBox;

#endif
