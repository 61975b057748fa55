#include "KOBWBSolverSystem.h"

#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <memory>

namespace kobwb {

bool SolverSystem::Holds(KOBWBEquationType type, double value, double tolerance) {
    switch (type) {
    case KOBWBEqLessEqual:
    case KOBWBEqLess: return value <= tolerance;
    case KOBWBEqGreaterEqual:
    case KOBWBEqGreater: return value >= -tolerance;
    default: return true;
    }
}

SolverSystem::SolverSystem(KOBWBFactory& f, const std::vector<KOBWBVariable*>& fixed)
    : factory(f), version(f.GetSystemVersion()) {
    std::vector<KOBWBExpression*> equalityRoots;
    std::vector<KOBWBExpression*> inequalityRoots;
    for (KOBWBEquation* equation = f.GetFirstEquation(); equation; equation = f.GetNextEquation(equation)) {
        KOBWBExpression* root = equation->GetRoot();
        if (!root) continue;
        switch (equation->GetType()) {
        case KOBWBEqEqual:
            equalities.push_back(equation);
            equalityRoots.push_back(root);
            break;
        case KOBWBEqLessEqual:
        case KOBWBEqLess:
        case KOBWBEqGreaterEqual:
        case KOBWBEqGreater:
            inequalities.push_back(equation);
            inequalityRoots.push_back(root);
            break;
        default: break;
        }
    }
    // The unknowns: variables of the equalities, in index order, less the fixed ones.
    columnOf.assign(static_cast<std::size_t>(f.GetNbOfVariables()), -1);
    std::vector<bool> isFixed(columnOf.size(), false);
    for (KOBWBVariable* variable : fixed)
        if (variable && &variable->GetFactory() == &f && variable->GetIdx() >= 0 &&
            variable->GetIdx() < static_cast<int>(isFixed.size()))
            isFixed[static_cast<std::size_t>(variable->GetIdx())] = true;
    std::vector<bool> present(columnOf.size(), false);
    for (std::size_t i = 0; i < equalityRoots.size(); ++i) {
        KOBWBVariable** variables = nullptr;
        const int count = equalityRoots[i]->FindPresentVariables(variables);
        const std::unique_ptr<KOBWBVariable*[]> owned(variables);
        bool any = false;
        for (int k = 0; k < count; ++k) {
            const std::size_t index = static_cast<std::size_t>(variables[k]->GetIdx());
            if (index >= present.size() || variables[k]->IsFixed() || isFixed[index]) continue;
            present[index] = true;
            any = true;
        }
        if (!any) constantRows.push_back(static_cast<int>(i));
    }
    for (std::size_t index = 0; index < present.size(); ++index) {
        if (!present[index]) continue;
        columnOf[index] = static_cast<int>(unknowns.size());
        unknowns.push_back(f.GetVariable(static_cast<int>(index)));
    }
    jacobian.Make(EqualityCount(), equalityRoots.data(), static_cast<int>(unknowns.size()), unknowns.data());
    complete = jacobian.GetRowsWithoutDerivative().empty();
    if (!complete) return;

    std::vector<KOBWBExpression*> outputs(equalityRoots);
    outputs.insert(outputs.end(), inequalityRoots.begin(), inequalityRoots.end());
    outputs.insert(outputs.end(), jacobian.GetEntries().begin(), jacobian.GetEntries().end());
    termStart.push_back(static_cast<int>(outputs.size()));
    for (KOBWBExpression* root : equalityRoots) {
        if (root->GetType() == KOBWBSumType)
            for (int k = 0; k < root->GetNbOfChildren(); ++k) outputs.push_back(root->GetChild(k));
        else
            outputs.push_back(root);
        termStart.push_back(static_cast<int>(outputs.size()));
    }
    evaluator.Compile(static_cast<int>(outputs.size()), outputs.data(), static_cast<int>(unknowns.size()),
                      unknowns.data());
    step = std::make_unique<LeastChangeStep>(EqualityCount(), static_cast<int>(unknowns.size()),
                                             jacobian.GetColumnStarts(), jacobian.GetRows());
}

} // namespace kobwb
