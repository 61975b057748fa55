#ifndef FuzzInput_h
#define FuzzInput_h

#include <cstddef>
#include <cstdint>

// The fuzzer's bytes read one decision at a time; once they run out every read
// answers 0.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    bool Empty() const { return m_at >= m_size; }
    std::uint8_t Byte() { return m_at < m_size ? m_data[m_at++] : 0; }
    // A number in [0, count), count > 0.
    int Below(int count) { return Byte() % count; }
    // A small signed number, often a simple one.
    double Number() {
        const int byte = Byte();
        if (byte < 200) return byte / 8 - 12;
        return (byte - 228) / 4.0;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_at = 0;
};

#endif
