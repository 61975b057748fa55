#ifndef KOBWBEnumStorage_h
#define KOBWBEnumStorage_h

#include "KOBWBEnumRepresentation.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>

// The representation and element storage shared by the integer and the real
// enumerations, with the operations that do not depend on the element type. The
// array is allocated when the first element is stored; its capacity starts at 50.
namespace kobwb {

constexpr int enumInitialCapacity = 50;
// The capacity shares a word with the representation: up to 2^27 - 1 elements.
constexpr int enumMaxCapacity = (1 << 27) - 1;

// The representation a domain constructed without elements takes: an empty list is
// nil and an interval without bounds is any.
inline KOBWBEnumRepresentation WithoutElements(KOBWBEnumRepresentation representation) {
    if (representation == KOBWBEnumList) return KOBWBEnumNil;
    if (representation == KOBWBEnumInterval) return KOBWBEnumAny;
    return representation;
}

template <class T>
struct EnumStorage {
    T* elements = nullptr;
    int count = 0;
    int capacity : 28;
    KOBWBEnumRepresentation representation : 4;

    EnumStorage() : capacity(enumInitialCapacity), representation(KOBWBEnumAny) {}
    EnumStorage(const EnumStorage& other) : capacity(enumInitialCapacity), representation(KOBWBEnumAny) {
        CopyFrom(other);
    }
    EnumStorage(EnumStorage&& other) noexcept
        : elements(other.elements), count(other.count), capacity(other.capacity),
          representation(other.representation) {
        other.elements = nullptr;
        other.count = 0;
        other.capacity = enumInitialCapacity;
    }
    ~EnumStorage() {
        if (elements) std::free(elements);
    }

    EnumStorage& operator=(const EnumStorage& other) {
        if (this != &other) CopyFrom(other);
        return *this;
    }
    EnumStorage& operator=(EnumStorage&& other) noexcept {
        if (this != &other) {
            std::swap(elements, other.elements);
            const int ownCapacity = capacity;
            capacity = other.capacity;
            other.capacity = ownCapacity;
            count = other.count;
            representation = other.representation;
            other.count = 0;
        }
        return *this;
    }

    void CopyFrom(const EnumStorage& other) {
        count = 0;
        representation = other.representation;
        if (other.count > 0 && Reserve(other.count)) {
            std::memcpy(elements, other.elements, sizeof(T) * other.count);
            count = other.count;
        }
    }

    bool Reserve(int wanted) {
        if (elements && wanted <= capacity) return true;
        if (wanted > enumMaxCapacity) return false;
        int grown = capacity;
        while (grown < wanted) grown = grown > enumMaxCapacity / 2 ? enumMaxCapacity : grown * 2;
        T* data = static_cast<T*>(std::realloc(elements, sizeof(T) * static_cast<size_t>(grown)));
        if (!data) return false;
        elements = data;
        capacity = grown;
        return true;
    }

    void SetCount(int n) {
        if (n >= 0 && Reserve(n)) count = n;
    }

    void Push(T value) {
        if (Reserve(count + 1)) elements[count++] = value;
    }

    void InsertAt(int position, T value) {
        if (!Reserve(count + 1)) return;
        std::memmove(elements + position + 1, elements + position,
                     sizeof(T) * static_cast<size_t>(count - position));
        elements[position] = value;
        ++count;
    }

    void RemoveAt(int position, int n) {
        std::memmove(elements + position, elements + position + n,
                     sizeof(T) * static_cast<size_t>(count - position - n));
        count -= n;
    }

    void SetPair(T lower, T upper) {
        SetCount(2);
        if (count == 2) {
            elements[0] = lower;
            elements[1] = upper;
        }
    }

    void SetState(KOBWBEnumRepresentation state) {
        representation = state;
        count = 0;
    }

    void MakeList(int n) {
        if (n < 0) return;
        SetCount(n);
        representation = KOBWBEnumList;
    }

    void MakeInterval(T lower, T upper) {
        SetPair(lower, upper);
        representation = KOBWBEnumInterval;
    }

    // An interval widens to the value; a list or nil takes it at the end, unsorted.
    void Append(T value) {
        switch (representation) {
        case KOBWBEnumInterval:
            if (value < elements[0]) elements[0] = value;
            if (value > elements[1]) elements[1] = value;
            return;
        case KOBWBEnumAny: return;
        case KOBWBEnumNil: count = 0; [[fallthrough]];
        case KOBWBEnumList:
            representation = KOBWBEnumList;
            Push(value);
            return;
        }
    }

    // A list takes the value at its sorted place unless an element lies within
    // tolerance; nil becomes the one-element list; an interval widens.
    void Insert(T value, T tolerance) {
        if (representation == KOBWBEnumList) {
            int position = 0;
            if (!Find(value, position, tolerance)) InsertAt(position, value);
        } else {
            Append(value);
        }
    }

    void RemovePosition(int position, int n) {
        if (position < 0 || position >= count || n <= 0) return;
        const int available = count - position;
        RemoveAt(position, n < available ? n : available);
        if (count == 0) representation = KOBWBEnumNil;
    }

    // Removes the list element within tolerance of the value, if any.
    void RemoveListElement(T value, T tolerance) {
        int position = 0;
        if (Find(value, position, tolerance)) RemovePosition(position, 1);
    }

    template <class Interval>
    Interval Hull(const Interval& any, const Interval& nil) const {
        if (representation == KOBWBEnumAny) return any;
        if (representation == KOBWBEnumNil || count == 0) return nil;
        return {elements[0], elements[count - 1]};
    }

    // Restores the list invariant; true when the list is left non-empty and within
    // maxSize, false when it was turned into nil or into the interval of its hull.
    bool CorrectList(T tolerance, int maxSize) {
        SortUnique(tolerance);
        if (count == 0) {
            SetState(KOBWBEnumNil);
            return false;
        }
        if (count <= maxSize) return true;
        MakeInterval(elements[0], elements[count - 1]);
        return false;
    }

    // Binary search with a match within tolerance: true when found; position is
    // the match, or where the value would be inserted.
    bool Find(T value, int& position, T tolerance) const {
        int low = 0;
        int high = count - 1;
        while (low <= high) {
            const int middle = low + (high - low) / 2;
            const T element = elements[middle];
            if (std::abs(value - element) <= tolerance) {
                position = middle;
                return true;
            }
            if (value < element)
                high = middle - 1;
            else
                low = middle + 1;
        }
        position = low;
        return false;
    }

    int FindGT(T value) const {
        return static_cast<int>(std::upper_bound(elements, elements + count, value) - elements);
    }

    int FindLT(T value) const {
        return static_cast<int>(std::lower_bound(elements, elements + count, value) - elements) - 1;
    }

    // Sorts ascending and keeps one element of each run within tolerance.
    void SortUnique(T tolerance) {
        if (count < 2) return;
        std::sort(elements, elements + count);
        int kept = 1;
        for (int i = 1; i < count; ++i)
            if (elements[i] - elements[kept - 1] > tolerance) elements[kept++] = elements[i];
        count = kept;
    }
};

} // namespace kobwb

#endif
