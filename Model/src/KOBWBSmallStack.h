#ifndef KOBWBSmallStack_h
#define KOBWBSmallStack_h

#include <cstddef>
#include <vector>

// A stack that holds its first N elements in itself and moves to the heap only
// beyond, for the walks over model trees: most trees are shallow, and a walk
// per equation should not cost an allocation.
template <class T, size_t N> class KOBWBSmallStack {
public:
    bool empty() const { return m_size == 0; }
    size_t size() const { return m_size; }
    T& back() { return At(m_size - 1); }
    T& operator[](size_t i) { return At(i); }
    void push_back(const T& value) {
        if (m_size < N)
            m_local[m_size] = value;
        else if (m_size - N < m_spill.size())
            m_spill[m_size - N] = value;
        else
            m_spill.push_back(value);
        ++m_size;
    }
    void pop_back() { --m_size; }

private:
    T& At(size_t i) { return i < N ? m_local[i] : m_spill[i - N]; }

    T m_local[N];
    std::vector<T> m_spill;
    size_t m_size = 0;
};

#endif
