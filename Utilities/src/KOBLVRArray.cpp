#include "KOBLVRArray.h"

#include <cstdlib>

void* KOBLVRArray::Alloc(int count, size_t elementSize) {
    return count > 0 ? std::malloc(elementSize * static_cast<size_t>(count)) : nullptr;
}

bool KOBLVRArray::Grow(void*& data, int& capacity, int wanted, size_t elementSize) {
    if (wanted <= capacity) return true;
    int grown = capacity < 8 ? 8 : capacity * 2;
    if (grown < wanted) grown = wanted;
    void* grownData = std::realloc(data, elementSize * static_cast<size_t>(grown));
    if (!grownData) return false;
    data = grownData;
    capacity = grown;
    return true;
}

void KOBLVRArray::Free(void* data) { std::free(data); }
