#include "KOBWBSolverSystem.h"

#include "KOBWBUnknowns.h"

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

bool SolverSystem::IsCurrent() const {
    if (factory.GetSystemVersion() != version || factory.GetNbOfVariables() != static_cast<int>(variableFixed.size()))
        return false;
    for (int i = 0; i < factory.GetNbOfVariables(); ++i)
        if ((factory.GetVariable(i)->IsFixed() != 0) != variableFixed[static_cast<std::size_t>(i)]) return false;
    return true;
}

SolverSystem::SolverSystem(KOBWBFactory& f, const std::vector<KOBWBVariable*>& fixed)
    : factory(f), version(f.GetSystemVersion()) {
    for (int i = 0; i < f.GetNbOfVariables(); ++i) variableFixed.push_back(f.GetVariable(i)->IsFixed() != 0);
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
    unknowns = EqualityUnknowns(f, equalityRoots, fixed);
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
