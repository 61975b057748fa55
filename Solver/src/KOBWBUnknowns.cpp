#include "KOBWBUnknowns.h"

#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <memory>

namespace kobwb {

std::vector<KOBWBVariable*> EqualityUnknowns(KOBWBFactory& factory, const std::vector<KOBWBExpression*>& roots,
                                             const std::vector<KOBWBVariable*>& fixed) {
    const std::size_t count = static_cast<std::size_t>(factory.GetNbOfVariables());
    std::vector<bool> excluded(count, false);
    for (KOBWBVariable* variable : fixed)
        if (variable && &variable->GetFactory() == &factory && variable->GetIdx() >= 0 &&
            static_cast<std::size_t>(variable->GetIdx()) < count)
            excluded[static_cast<std::size_t>(variable->GetIdx())] = true;
    std::vector<bool> present(count, false);
    for (KOBWBExpression* root : roots) {
        KOBWBVariable** variables = nullptr;
        const int found = root->FindPresentVariables(variables);
        const std::unique_ptr<KOBWBVariable*[]> owned(variables);
        for (int k = 0; k < found; ++k) {
            const std::size_t index = static_cast<std::size_t>(variables[k]->GetIdx());
            if (index < count && !variables[k]->IsFixed() && !excluded[index]) present[index] = true;
        }
    }
    std::vector<KOBWBVariable*> unknowns;
    for (std::size_t index = 0; index < count; ++index)
        if (present[index]) unknowns.push_back(factory.GetVariable(static_cast<int>(index)));
    return unknowns;
}

} // namespace kobwb
