#include "KOBLVRBoolArray.h"

#include <algorithm>

KOBLVRBoolArray::KOBLVRBoolArray(int n, bool value) { Fill(n, value); }

KOBLVRBoolArray::KOBLVRBoolArray(const KOBLVRBoolArray& other) { *this = other; }

KOBLVRBoolArray::~KOBLVRBoolArray() { Free(m_data); }

KOBLVRBoolArray& KOBLVRBoolArray::operator=(const KOBLVRBoolArray& other) {
    if (this != &other && Reserve(other.m_count)) {
        std::copy(other.m_data, other.m_data + other.m_count, m_data);
        m_count = other.m_count;
    }
    return *this;
}

bool KOBLVRBoolArray::Reserve(int capacity) {
    void* data = m_data;
    const bool grown = Grow(data, m_capacity, capacity, sizeof(bool));
    m_data = static_cast<bool*>(data);
    return grown;
}

void KOBLVRBoolArray::Fill(int n, bool value) {
    if (n < 0 || !Reserve(n)) return;
    std::fill(m_data, m_data + n, value);
    m_count = n;
}

void KOBLVRBoolArray::Set(int index, bool value) {
    if (index < 0 || !Reserve(index + 1)) return;
    if (index >= m_count) {
        std::fill(m_data + m_count, m_data + index + 1, false);
        m_count = index + 1;
    }
    m_data[index] = value;
}

void KOBLVRBoolArray::Append(bool value) { Set(m_count, value); }

bool KOBLVRBoolArray::Check() const { return std::all_of(m_data, m_data + m_count, [](bool b) { return b; }); }
