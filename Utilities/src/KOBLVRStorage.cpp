#include "KOBLVRStorage.h"

bool KOBLVRStorage::AddSection(const KOBLVRString& name, const KOBLVRString& header,
                               const KOBLVRString& content, ReplayPart part, int order) {
    if (name.IsEmpty()) return false;
    for (Section& section : m_sections)
        if (section.part == part && section.name == name) {
            section = {name, header, content, part, order};
            return true;
        }
    m_sections.push_back({name, header, content, part, order});
    return true;
}

std::vector<KOBLVRStorage::Section> KOBLVRStorage::TakeSections(ReplayPart part) {
    std::vector<Section> taken, kept;
    for (Section& section : m_sections) (section.part == part ? taken : kept).push_back(std::move(section));
    m_sections = std::move(kept);
    return taken;
}
