#ifndef KOBLVRArray_h
#define KOBLVRArray_h

#include "KOBWBxExport.h"

#include <cstddef>

// Raw storage for the growable arrays of plain values.
class KOBWBX_API KOBLVRArray {
protected:
    static void* Alloc(int count, size_t elementSize);
    // Grows data to hold at least wanted elements (doubling, from 8); false when
    // memory runs out, data and capacity then unchanged.
    static bool Grow(void*& data, int& capacity, int wanted, size_t elementSize);
    static void Free(void* data);
};

#endif
