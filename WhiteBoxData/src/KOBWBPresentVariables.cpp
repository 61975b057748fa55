#include "KOBWBPresentVariables.h"

#include "KOBWBGraphWalk.h"
#include "KOBWBVariable.h"

#include <algorithm>

namespace kobwb {

std::vector<KOBWBVariable*> PresentVariables(const KOBWBExpression& root) {
    std::vector<KOBWBVariable*> variables;
    WalkGraph(&root, [&variables](const KOBWBExpression* node) {
        if (!node) return WalkStep::Skip;
        if (node->GetType() == KOBWBVariableType)
            variables.push_back(static_cast<KOBWBVariable*>(const_cast<KOBWBExpression*>(node)));
        return WalkStep::Descend;
    });
    std::sort(variables.begin(), variables.end(),
              [](const KOBWBVariable* a, const KOBWBVariable* b) { return a->GetIdx() < b->GetIdx(); });
    variables.erase(std::unique(variables.begin(), variables.end()), variables.end());
    return variables;
}

} // namespace kobwb
