#include "KOBLVRString.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

KOBLVRString::KOBLVRString() = default;

KOBLVRString::KOBLVRString(const char* text) { doset(text); }

KOBLVRString::KOBLVRString(unsigned capacity) { Reserve(capacity); }

KOBLVRString::KOBLVRString(int value) {
    char buffer[16];
    std::snprintf(buffer, sizeof buffer, "%d", value);
    doset(buffer);
}

KOBLVRString::KOBLVRString(double value, size_t digits) {
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*g", static_cast<int>(digits == 0 ? 1 : digits), value);
    doset(buffer);
}

KOBLVRString::KOBLVRString(const KOBLVRString& other) { link(other); }

KOBLVRString::KOBLVRString(KOBLVRString&& other) noexcept { *this = std::move(other); }

KOBLVRString::~KOBLVRString() { std::free(m_heap); }

KOBLVRString& KOBLVRString::operator=(const KOBLVRString& other) {
    if (this != &other) link(other);
    return *this;
}

KOBLVRString& KOBLVRString::operator=(KOBLVRString&& other) noexcept {
    if (this == &other) return *this;
    if (!other.m_heap) {
        // An inline text is copied; there is no storage to take over.
        clear();
        Append(other.m_inline, other.m_length);
    } else {
        std::free(m_heap);
        m_heap = std::exchange(other.m_heap, nullptr);
        m_capacity = other.m_capacity;
    }
    m_length = std::exchange(other.m_length, 0);
    other.m_inline[0] = '\0';
    return *this;
}

KOBLVRString& KOBLVRString::operator=(const char* text) {
    if (text && text >= str() && text <= str() + m_length) {
        KOBLVRString copy(text);
        *this = std::move(copy);
    } else {
        doset(text);
    }
    return *this;
}

void KOBLVRString::clear() {
    m_length = 0;
    str()[0] = '\0';
}

KOBLVRString& KOBLVRString::operator+=(const KOBLVRString& other) {
    if (&other == this) {
        const KOBLVRString copy(other);
        Append(copy.str(), copy.m_length);
    } else {
        Append(other.str(), other.m_length);
    }
    return *this;
}

KOBLVRString& KOBLVRString::operator+=(const char* text) {
    if (text) *this += KOBLVRString(text);
    return *this;
}

KOBLVRString& KOBLVRString::operator+=(int value) { return *this += KOBLVRString(value); }

void KOBLVRString::doset(const char* text) {
    clear();
    if (text) Append(text, std::strlen(text));
}

// Strings are small and short-lived here, so a copy stands in for shared storage.
void KOBLVRString::link(const KOBLVRString& other) {
    clear();
    Append(other.str(), other.m_length);
}

void KOBLVRString::Append(const char* text, size_t length) {
    if (!Reserve(m_length + length)) return;
    char* end = str() + m_length;
    std::memmove(end, text, length);
    end[length] = '\0';
    m_length += length;
}

bool KOBLVRString::Reserve(size_t capacity) {
    const size_t current = m_heap ? m_capacity : inlineCapacity;
    if (capacity <= current) return true;
    size_t grown = current * 2;
    if (grown < capacity) grown = capacity;
    char* text = static_cast<char*>(std::realloc(m_heap, grown + 1));
    if (!text) return false;
    if (!m_heap) std::memcpy(text, m_inline, m_length + 1);
    m_heap = text;
    m_capacity = grown;
    return true;
}

KOBLVRString operator+(const KOBLVRString& a, const KOBLVRString& b) {
    KOBLVRString result(a);
    result += b;
    return result;
}

KOBLVRString operator+(const KOBLVRString& a, const char* b) {
    KOBLVRString result(a);
    result += b;
    return result;
}

KOBLVRString operator+(const char* a, const KOBLVRString& b) {
    KOBLVRString result(a);
    result += b;
    return result;
}

bool operator==(const KOBLVRString& a, const KOBLVRString& b) {
    return std::strcmp(a.str(), b.str()) == 0;
}

bool operator==(const KOBLVRString& a, const char* b) { return std::strcmp(a.str(), b ? b : "") == 0; }

bool operator==(const char* a, const KOBLVRString& b) { return b == a; }

bool operator!=(const KOBLVRString& a, const KOBLVRString& b) { return !(a == b); }

bool operator<(const KOBLVRString& a, const KOBLVRString& b) {
    return std::strcmp(a.str(), b.str()) < 0;
}
