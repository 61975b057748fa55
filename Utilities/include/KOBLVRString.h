#ifndef KOBLVRString_h
#define KOBLVRString_h

#include "KOBWBxExport.h"

#include <cstddef>

// An owned, NUL-terminated character string with value semantics.
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

    const char* str() const { return m_text ? m_text : ""; }
    char* str();
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

    char* m_text = nullptr;
    size_t m_length = 0;
    size_t m_capacity = 0;
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
