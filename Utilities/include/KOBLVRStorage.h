#ifndef KOBLVRStorage_h
#define KOBLVRStorage_h

#include "KOBLVRString.h"

#include <vector>

// Named sections of a replay file, kept until the stream writes them.
class KOBWBX_API KOBLVRStorage {
public:
    // Which part of an operator's replay a section belongs to.
    enum ReplayPart { Input = 0, Output = 1 };

    struct Section {
        KOBLVRString name;
        KOBLVRString header;
        KOBLVRString content;
        ReplayPart part;
        int order;
    };

    // Registers a section; one of the same name in the same part is replaced, so that
    // an operator run again on one stream records its latest input. False for an
    // empty name.
    bool AddSection(const KOBLVRString& name, const KOBLVRString& header,
                    const KOBLVRString& content, ReplayPart part, int order);
    const std::vector<Section>& GetSections() const { return m_sections; }
    // Hands over the sections of a part, in the order they were added, and forgets them.
    std::vector<Section> TakeSections(ReplayPart part);
    void Clear() { m_sections.clear(); }

private:
    std::vector<Section> m_sections;
};

#endif
