#ifndef KOBLVRListP_h
#define KOBLVRListP_h

#include "KOBLVRListPV.h"

// A typed pointer list: holds one untyped list and casts the element type in and
// out. The concrete names (KOBLVRListPKOBWBExpression and so on) are aliases of it.
template <class T>
class KOBLVRListP {
public:
    typedef int (*Comparator)(const void*, const void*);

    explicit KOBLVRListP(int capacity = 0) : m_list(capacity) {}
    KOBLVRListP(const KOBLVRListP& other) = default;
    KOBLVRListP& operator=(const KOBLVRListP& other) = default;
    virtual ~KOBLVRListP() = default;

    int Size() const { return m_list.Size(); }
    T* operator[](int i) const { return static_cast<T*>(m_list[i]); }
    T*& operator[](int i) { return reinterpret_cast<T*&>(m_list[i]); }

    int Append(T* element) { return m_list.Append(element); }
    int Append(const KOBLVRListP& other) { return m_list.Append(other.m_list); }
    int Insert(T* element, int position) { return m_list.Insert(element, position); }
    int Size(int count) { return m_list.Size(count); }
    int Size(int count, T* fill) { return m_list.Size(count, fill); }
    int Locate(const T* element, int start = 0) const {
        return m_list.Locate(const_cast<T*>(element), start);
    }
    int RemoveValue(const T* element) { return m_list.RemoveValue(const_cast<T*>(element)); }
    int Remove(const KOBLVRListP& other) { return m_list.Remove(other.m_list); }
    int RemovePosition(int position) { return m_list.RemovePosition(position); }
    void RemoveAll() { m_list.RemoveAll(); }
    int RemoveNulls() { return m_list.RemoveNulls(); }
    int operator!=(const KOBLVRListP& other) const { return m_list != other.m_list; }
    bool operator==(const KOBLVRListP& other) const { return (m_list != other.m_list) == 0; }
    void QuickSort(Comparator compare) { m_list.QuickSort(compare); }
    // key points at a slot holding the wanted element, as the comparator expects.
    int BinarySearch(const void* key, Comparator compare) const {
        return m_list.BinarySearch(key, compare);
    }

    // Destroys every non-null element, last to first, then empties the list.
    void DeleteAll() {
        for (int i = m_list.Size() - 1; i >= 0; --i) delete static_cast<T*>(m_list[i]);
        m_list.RemoveAll();
    }

    const KOBLVRListPV& Untyped() const { return m_list; }

private:
    KOBLVRListPV m_list;
};

class KOBLVRString;
typedef KOBLVRListP<KOBLVRString> KOBLVRListPKOBLVRString;

#endif
