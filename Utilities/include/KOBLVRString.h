#ifndef KOBLVRString_h
#define KOBLVRString_h

#include "KOBWBxExport.h"

#include <cstddef>

// An owned, NUL-terminated character string with value semantics. Texts of up
// to inlineCapacity characters (names, units) are kept inside the string itself,
// so that most strings cost no allocation; longer ones live on the heap.
class KOBWBX_API KOBLVRString {
public:
    KOBLVRString();
    KOBLVRString(const char* text);
    explicit KOBLVRString(unsigned capacity);
    explicit KOBLVRString(int value);
    KOBLVRString(double value, size_t digits);
    KOBLVRString(const KOBLVRString& other);
    KOBLVRString(KOBLVRString&& other) noexcept;
    ~KOBLVRString();

    KOBLVRString& operator=(const KOBLVRString& other);
    KOBLVRString& operator=(KOBLVRString&& other) noexcept;
    KOBLVRString& operator=(const char* text);

    const char* str() const { return m_heap ? m_heap : m_inline; }
    char* str() { return m_heap ? m_heap : m_inline; }
    int Length() const { return static_cast<int>(m_length); }
    bool IsEmpty() const { return m_length == 0; }
    void clear();

    KOBLVRString& operator+=(const KOBLVRString& other);
    KOBLVRString& operator+=(const char* text);
    KOBLVRString& operator+=(int value);

private:
    void doset(const char* text);
    void link(const KOBLVRString& other);
    void Append(const char* text, size_t length);
    bool Reserve(size_t capacity);

    static constexpr size_t inlineCapacity = 15;

    // Null while the text is inline.
    char* m_heap = nullptr;
    size_t m_length = 0;
    union {
        // The room on the heap, the final NUL aside.
        size_t m_capacity;
        char m_inline[inlineCapacity + 1] = {};
    };
};

KOBWBX_API KOBLVRString operator+(const KOBLVRString& a, const KOBLVRString& b);
KOBWBX_API KOBLVRString operator+(const KOBLVRString& a, const char* b);
KOBWBX_API KOBLVRString operator+(const char* a, const KOBLVRString& b);
KOBWBX_API bool operator==(const KOBLVRString& a, const KOBLVRString& b);
KOBWBX_API bool operator==(const KOBLVRString& a, const char* b);
KOBWBX_API bool operator==(const char* a, const KOBLVRString& b);
KOBWBX_API bool operator!=(const KOBLVRString& a, const KOBLVRString& b);
KOBWBX_API bool operator<(const KOBLVRString& a, const KOBLVRString& b);

#endif
