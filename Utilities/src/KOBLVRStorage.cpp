#include "KOBLVRStorage.h"

bool KOBLVRStorage::AddSection(const KOBLVRString& name, const KOBLVRString& header,
                               const KOBLVRString& content, ReplayPart part, int order) {
    for (const Section& section : m_sections)
        if (section.part == part && section.name == name) return false;
    m_sections.push_back({name, header, content, part, order});
    return true;
}
