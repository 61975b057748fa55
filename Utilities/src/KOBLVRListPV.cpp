#include "KOBLVRListPV.h"

#include <cstdlib>
#include <cstring>

KOBLVRListPV::KOBLVRListPV(int capacity) {
    if (capacity > 0) Reserve(capacity);
}

KOBLVRListPV::KOBLVRListPV(const KOBLVRListPV& other) { Append(other); }

KOBLVRListPV::~KOBLVRListPV() { std::free(m_elements); }

KOBLVRListPV& KOBLVRListPV::operator=(const KOBLVRListPV& other) {
    if (this != &other) {
        RemoveAll();
        Append(other);
    }
    return *this;
}

bool KOBLVRListPV::Reserve(int capacity) {
    if (capacity <= m_capacity) return true;
    // The first allocation takes what is asked (operators size their child lists
    // exactly); later growth doubles.
    int grown = m_capacity == 0 ? capacity : m_capacity * 2;
    if (grown < capacity) grown = capacity;
    void** elements = static_cast<void**>(std::realloc(m_elements, sizeof(void*) * grown));
    if (!elements) return false;
    m_elements = elements;
    m_capacity = grown;
    return true;
}

int KOBLVRListPV::Append(void* element) {
    if (!Reserve(m_count + 1)) return 0;
    m_elements[m_count++] = element;
    return 1;
}

int KOBLVRListPV::Append(const KOBLVRListPV& other) {
    if (other.m_count == 0) return 1;
    const int count = other.m_count;
    if (!Reserve(m_count + count)) return 0;
    std::memmove(m_elements + m_count, other.m_elements, sizeof(void*) * count);
    m_count += count;
    return 1;
}

int KOBLVRListPV::Insert(void* element, int position) {
    if (position < 0) position = 0;
    if (position >= m_count) return Append(element);
    if (!Reserve(m_count + 1)) return 0;
    std::memmove(m_elements + position + 1, m_elements + position,
                 sizeof(void*) * (m_count - position));
    m_elements[position] = element;
    ++m_count;
    return 1;
}

int KOBLVRListPV::Size(int count) { return Size(count, nullptr); }

int KOBLVRListPV::Size(int count, void* fill) {
    if (count < 0) count = 0;
    if (!Reserve(count)) return 0;
    for (int i = m_count; i < count; ++i) m_elements[i] = fill;
    m_count = count;
    return 1;
}

int KOBLVRListPV::Locate(void* element, int start) const {
    for (int i = start < 0 ? 0 : start; i < m_count; ++i)
        if (m_elements[i] == element) return i;
    return -1;
}

int KOBLVRListPV::RemoveValue(void* element) {
    const int position = Locate(element, 0);
    if (position < 0) return 0;
    RemovePosition(position);
    return 1;
}

int KOBLVRListPV::Remove(const KOBLVRListPV& other) {
    int kept = 0;
    for (int i = 0; i < m_count; ++i)
        if (other.Locate(m_elements[i], 0) < 0) m_elements[kept++] = m_elements[i];
    const int removed = m_count - kept;
    m_count = kept;
    return removed;
}

int KOBLVRListPV::RemovePosition(int position) {
    if (position < 0 || position >= m_count) return 0;
    std::memmove(m_elements + position, m_elements + position + 1,
                 sizeof(void*) * (m_count - position - 1));
    --m_count;
    return 1;
}

void KOBLVRListPV::RemoveAll() { m_count = 0; }

int KOBLVRListPV::RemoveNulls() {
    int kept = 0;
    for (int i = 0; i < m_count; ++i)
        if (m_elements[i]) m_elements[kept++] = m_elements[i];
    const int removed = m_count - kept;
    m_count = kept;
    return removed;
}

int KOBLVRListPV::operator!=(const KOBLVRListPV& other) const {
    if (m_count != other.m_count) return 1;
    for (int i = 0; i < m_count; ++i)
        if (m_elements[i] != other.m_elements[i]) return 1;
    return 0;
}

void KOBLVRListPV::QuickSort(Comparator compare) {
    if (m_count > 1 && compare) std::qsort(m_elements, m_count, sizeof(void*), compare);
}

int KOBLVRListPV::BinarySearch(const void* key, Comparator compare) const {
    if (!compare) return -1;
    int low = 0;
    int high = m_count - 1;
    while (low <= high) {
        const int middle = low + (high - low) / 2;
        const int order = compare(key, &m_elements[middle]);
        if (order == 0) return middle;
        if (order < 0)
            high = middle - 1;
        else
            low = middle + 1;
    }
    return -1;
}
