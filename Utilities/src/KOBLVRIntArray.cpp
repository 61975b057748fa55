#include "KOBLVRIntArray.h"

#include <algorithm>
#include <cstring>

KOBLVRIntArray::KOBLVRIntArray(const KOBLVRIntArray& other) { *this = other; }

KOBLVRIntArray::~KOBLVRIntArray() { Free(m_data); }

void KOBLVRIntArray::operator=(const KOBLVRIntArray& other) {
    if (this == &other || !Reserve(other.m_count)) return;
    if (other.m_count > 0) std::memcpy(m_data, other.m_data, sizeof(int) * other.m_count);
    m_count = other.m_count;
}

bool KOBLVRIntArray::Reserve(int capacity) {
    void* data = m_data;
    const bool grown = Grow(data, m_capacity, capacity, sizeof(int));
    m_data = static_cast<int*>(data);
    return grown;
}

void KOBLVRIntArray::SetDimension(int n) { Resize(n, true); }

void KOBLVRIntArray::Resize(int n, bool zero) {
    if (n < 0 || !Reserve(n)) return;
    if (zero && n > m_count) std::fill(m_data + m_count, m_data + n, 0);
    m_count = n;
}

void KOBLVRIntArray::Fill(int n, int value) {
    if (n < 0 || !Reserve(n)) return;
    std::fill(m_data, m_data + n, value);
    m_count = n;
}

void KOBLVRIntArray::Set(int index, int value) {
    if (index < 0) return;
    if (index >= m_count) Resize(index + 1, true);
    if (index < m_count) m_data[index] = value;
}

void KOBLVRIntArray::Append(int value) {
    if (Reserve(m_count + 1)) m_data[m_count++] = value;
}

void KOBLVRIntArray::QuickSort() { std::sort(m_data, m_data + m_count); }

int KOBLVRIntArray::BinarySearch(int value) const {
    const int* begin = m_data;
    const int* end = m_data + m_count;
    const int* found = std::lower_bound(begin, end, value);
    return found != end && *found == value ? static_cast<int>(found - m_data) : -1;
}

int KOBLVRIntArray::Locate(int value, int start) const {
    for (int i = start < 0 ? 0 : start; i < m_count; ++i)
        if (m_data[i] == value) return i;
    return -1;
}

void KOBLVRIntArray::RemoveDuplicates() {
    QuickSort();
    m_count = static_cast<int>(std::unique(m_data, m_data + m_count) - m_data);
}
