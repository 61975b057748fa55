#include "KOBWBUnknowns.h"

#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <memory>

namespace kobwb {

std::vector<bool> UnfixedVariables(KOBWBFactory& factory, const std::vector<KOBWBVariable*>& fixed) {
    const std::size_t count = static_cast<std::size_t>(factory.GetNbOfVariables());
    std::vector<bool> unfixed(count);
    for (std::size_t index = 0; index < count; ++index)
        unfixed[index] = !factory.GetVariable(static_cast<int>(index))->IsFixed();
    for (KOBWBVariable* variable : fixed)
        if (variable && &variable->GetFactory() == &factory && variable->GetIdx() >= 0 &&
            static_cast<std::size_t>(variable->GetIdx()) < count)
            unfixed[static_cast<std::size_t>(variable->GetIdx())] = false;
    return unfixed;
}

std::vector<KOBWBVariable*> UnknownsAmong(KOBWBFactory& factory, const std::vector<bool>& unfixed,
                                          const std::vector<KOBWBVariable*>& met) {
    std::vector<bool> present(unfixed.size(), false);
    for (KOBWBVariable* variable : met) {
        const std::size_t index = static_cast<std::size_t>(variable->GetIdx());
        if (index < unfixed.size() && unfixed[index]) present[index] = true;
    }
    std::vector<KOBWBVariable*> unknowns;
    for (std::size_t index = 0; index < present.size(); ++index)
        if (present[index]) unknowns.push_back(factory.GetVariable(static_cast<int>(index)));
    return unknowns;
}

std::vector<KOBWBVariable*> EqualityUnknowns(KOBWBFactory& factory, const std::vector<KOBWBExpression*>& roots,
                                             const std::vector<KOBWBVariable*>& fixed) {
    std::vector<KOBWBVariable*> met;
    for (KOBWBExpression* root : roots) {
        KOBWBVariable** variables = nullptr;
        const int found = root->FindPresentVariables(variables);
        const std::unique_ptr<KOBWBVariable*[]> owned(variables);
        met.insert(met.end(), variables, variables + found);
    }
    return UnknownsAmong(factory, UnfixedVariables(factory, fixed), met);
}

} // namespace kobwb
