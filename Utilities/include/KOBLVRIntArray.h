#ifndef KOBLVRIntArray_h
#define KOBLVRIntArray_h

#include "KOBLVRArray.h"

// A growable array of ints, indexed from 0. Locate and BinarySearch answer -1
// when the value is absent.
class KOBWBX_API KOBLVRIntArray : public KOBLVRArray {
public:
    KOBLVRIntArray() = default;
    KOBLVRIntArray(const KOBLVRIntArray& other);
    ~KOBLVRIntArray();
    void operator=(const KOBLVRIntArray& other);

    int Size() const { return m_count; }
    int operator[](int i) const { return m_data[i]; }
    int& operator[](int i) { return m_data[i]; }

    // Sets the count to n; new elements are 0.
    void SetDimension(int n);
    // Sets the count to n; new elements are 0 when zero is true, unset otherwise.
    void Resize(int n, bool zero);
    // Sets the count to n with every element equal to value.
    void Fill(int n, int value);
    // Stores value at index, growing the array (new elements 0) when needed.
    void Set(int index, int value);
    void Append(int value);
    void QuickSort();
    int BinarySearch(int value) const;
    int Locate(int value, int start = 0) const;
    // Sorts the array and keeps one copy of each value.
    void RemoveDuplicates();

private:
    bool Reserve(int capacity);

    int* m_data = nullptr;
    int m_count = 0;
    int m_capacity = 0;
};

#endif
