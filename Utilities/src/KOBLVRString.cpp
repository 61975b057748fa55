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

KOBLVRString::KOBLVRString(KOBLVRString&& other) noexcept
    : m_text(std::exchange(other.m_text, nullptr)), m_length(std::exchange(other.m_length, 0)),
      m_capacity(std::exchange(other.m_capacity, 0)) {}

KOBLVRString::~KOBLVRString() { std::free(m_text); }

KOBLVRString& KOBLVRString::operator=(const KOBLVRString& other) {
    if (this != &other) link(other);
    return *this;
}

KOBLVRString& KOBLVRString::operator=(KOBLVRString&& other) noexcept {
    if (this != &other) {
        std::free(m_text);
        m_text = std::exchange(other.m_text, nullptr);
        m_length = std::exchange(other.m_length, 0);
        m_capacity = std::exchange(other.m_capacity, 0);
    }
    return *this;
}

KOBLVRString& KOBLVRString::operator=(const char* text) {
    if (text && m_text && text >= m_text && text <= m_text + m_length) {
        KOBLVRString copy(text);
        *this = std::move(copy);
    } else {
        doset(text);
    }
    return *this;
}

char* KOBLVRString::str() {
    if (!m_text) Reserve(0);
    return m_text;
}

void KOBLVRString::clear() {
    m_length = 0;
    if (m_text) m_text[0] = '\0';
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
    std::memcpy(m_text + m_length, text, length);
    m_length += length;
    m_text[m_length] = '\0';
}

bool KOBLVRString::Reserve(size_t capacity) {
    if (m_text && capacity <= m_capacity) return true;
    size_t grown = m_capacity < 8 ? 8 : m_capacity * 2;
    if (grown < capacity) grown = capacity;
    char* text = static_cast<char*>(std::realloc(m_text, grown + 1));
    if (!text) return false;
    if (!m_text) text[0] = '\0';
    m_text = text;
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
