#include "KOBWBShapeTemplates.h"

#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

namespace kobwb {

ShapeTemplates::Template* ShapeTemplates::Find(const EquationShape& shape, KOBWBExpression* root) {
    std::vector<std::size_t>& sameHash = m_byHash[shape.Hash()];
    for (std::size_t index : sameHash)
        if (m_templates[index].key == shape.Key())
            return m_templates[index].usable ? &m_templates[index] : nullptr;
    sameHash.push_back(m_templates.size());
    m_templates.emplace_back();
    Template& made = m_templates.back();
    made.key = shape.Key();

    std::vector<KOBWBExpression*> outputs{root};
    if (root->GetType() == KOBWBSumType)
        for (int k = 0; k < root->GetNbOfChildren(); ++k) outputs.push_back(root->GetChild(k));
    else
        outputs.push_back(root);
    made.termCount = static_cast<int>(outputs.size()) - 1;
    // The system differentiates by the variables that are its unknowns.
    std::vector<KOBWBVariable*> variables = shape.Variables();
    for (std::size_t k = 0; k < variables.size(); ++k) {
        if (!shape.IsUnknown(k)) continue;
        KOBWBExpression* derivative = root->GetFactory().CreateDerivative(root, 1, &variables[k]);
        if (!derivative) return nullptr;
        outputs.push_back(derivative);
    }
    if (!made.pattern.Compile(static_cast<int>(outputs.size()), outputs.data(), static_cast<int>(variables.size()),
                              variables.data()) ||
        made.pattern.UsesNodes())
        return nullptr;
    made.rootSteps = static_cast<std::size_t>(made.pattern.GetNbOfStepsFor(made.termCount + 1));
    made.usable = true;
    return &made;
}

} // namespace kobwb
