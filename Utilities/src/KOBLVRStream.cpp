#include "KOBLVRStream.h"

#include <fstream>
#include <ostream>

KOBLVRStream::KOBLVRStream(const KOBLVRString& name, KOBLVRStreamType type, bool append)
    : m_type(type) {
    auto file = std::make_unique<std::ofstream>(
        name.str(), append ? std::ios::out | std::ios::app : std::ios::out | std::ios::trunc);
    if (file->is_open()) {
        m_out = file.get();
        m_file = std::move(file);
    }
}

KOBLVRStream::KOBLVRStream(std::ostream* stream) : m_out(stream) {}

KOBLVRStream::~KOBLVRStream() { Flush(); }

KOBLVRStream& KOBLVRStream::operator<<(const KOBLVRString& text) {
    if (m_out) *m_out << text.str();
    return *this;
}

KOBLVRStream& KOBLVRStream::operator<<(const char* text) {
    if (m_out && text) *m_out << text;
    return *this;
}

KOBLVRStream& KOBLVRStream::operator<<(int value) {
    if (m_out) *m_out << value;
    return *this;
}

KOBLVRStream& KOBLVRStream::operator<<(double value) {
    if (m_out) *m_out << value;
    return *this;
}

KOBLVRStream& KOBLVRStream::operator<<(KOBLVRStream& (*manipulator)(KOBLVRStream&)) {
    return manipulator ? manipulator(*this) : *this;
}

void KOBLVRStream::WriteString(const KOBLVRString& text) { *this << text; }

void KOBLVRStream::Flush() {
    if (m_out) m_out->flush();
}

void KOBLVRStream::WriteSections(KOBLVRStorage::ReplayPart part) {
    for (const KOBLVRStorage::Section& section : m_storage.TakeSections(part)) {
        *this << section.name << lvrendl;
        if (!section.content.IsEmpty()) *this << section.content << lvrendl;
    }
}

KOBLVRStream& lvrendl(KOBLVRStream& stream) { return stream << "\n"; }
