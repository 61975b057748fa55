#ifndef KOBLVRListPV_h
#define KOBLVRListPV_h

#include "KOBWBxExport.h"

// A growable array of untyped pointers. Elements may be null.
// Locate and BinarySearch answer -1 when nothing is found. Up to two elements are
// held inside the list itself, so the children of most operators need no block of
// their own.
class KOBWBX_API KOBLVRListPV {
public:
    typedef int (*Comparator)(const void*, const void*);

    explicit KOBLVRListPV(int capacity = 0);
    KOBLVRListPV(const KOBLVRListPV& other);
    virtual ~KOBLVRListPV();
    KOBLVRListPV& operator=(const KOBLVRListPV& other);

    int Size() const { return m_count; }
    void* operator[](int i) const { return m_elements[i]; }
    void*& operator[](int i) { return m_elements[i]; }

    int Append(void* element);
    int Append(const KOBLVRListPV& other);
    int Insert(void* element, int position);
    int Size(int count);
    int Size(int count, void* fill);
    int Locate(void* element, int start = 0) const;
    int RemoveValue(void* element);
    int Remove(const KOBLVRListPV& other);
    int RemovePosition(int position);
    void RemoveAll();
    int RemoveNulls();
    int operator!=(const KOBLVRListPV& other) const;
    void QuickSort(Comparator compare);
    int BinarySearch(const void* key, Comparator compare) const;

private:
    static constexpr int inlineCapacity = 2;

    bool Reserve(int capacity);
    bool IsInline() const { return m_elements == m_inline; }

    int m_count = 0;
    int m_capacity = inlineCapacity;
    void** m_elements = m_inline;
    void* m_inline[inlineCapacity] = {nullptr, nullptr};
};

#endif
