#ifndef KOBLVRBoolArray_h
#define KOBLVRBoolArray_h

#include "KOBLVRArray.h"

// A growable array of bools, indexed from 0.
class KOBWBX_API KOBLVRBoolArray : public KOBLVRArray {
public:
    KOBLVRBoolArray() = default;
    KOBLVRBoolArray(int n, bool value);
    KOBLVRBoolArray(const KOBLVRBoolArray& other);
    ~KOBLVRBoolArray();
    KOBLVRBoolArray& operator=(const KOBLVRBoolArray& other);

    int Size() const { return m_count; }
    bool operator[](int i) const { return m_data[i]; }
    bool& operator[](int i) { return m_data[i]; }

    // Sets the count to n with every element equal to value.
    void Fill(int n, bool value);
    // Stores value at index, growing the array (new elements false) when needed.
    void Set(int index, bool value);
    void Append(bool value);
    // True when every element is set.
    bool Check() const;

private:
    bool Reserve(int capacity);

    bool* m_data = nullptr;
    int m_count = 0;
    int m_capacity = 0;
};

#endif
