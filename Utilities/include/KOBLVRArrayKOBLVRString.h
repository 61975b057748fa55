#ifndef KOBLVRArrayKOBLVRString_h
#define KOBLVRArrayKOBLVRString_h

#include "KOBLVRString.h"

#include <vector>

// A growable array of strings, indexed from 0.
class KOBWBX_API KOBLVRArrayKOBLVRString {
public:
    void Append(const KOBLVRString& text) { m_items.push_back(text); }
    int Size() const { return static_cast<int>(m_items.size()); }
    const KOBLVRString& operator[](int i) const { return m_items[static_cast<size_t>(i)]; }
    KOBLVRString& operator[](int i) { return m_items[static_cast<size_t>(i)]; }
    void RemoveAll() { m_items.clear(); }

private:
    std::vector<KOBLVRString> m_items;
};

#endif
