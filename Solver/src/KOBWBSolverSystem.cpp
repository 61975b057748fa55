#include "KOBWBSolverSystem.h"

#include "KOBWBEquationShape.h"
#include "KOBWBShapeTemplates.h"
#include "KOBWBTapeBuilder.h"
#include "KOBWBUnknowns.h"

#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <limits>
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
    Compile(fixed, equalityRoots, inequalityRoots);
}

void SolverSystem::Compile(const std::vector<KOBWBVariable*>& fixed, const std::vector<KOBWBExpression*>& equalityRoots,
                           const std::vector<KOBWBExpression*>& inequalityRoots) {
    const std::vector<bool> free = UnfixedVariables(factory, fixed);
    // Each equality's variables, and the template of its shape where it has one.
    const int m = EqualityCount();
    std::vector<ShapeTemplates::Template*> templateOf(static_cast<std::size_t>(m), nullptr);
    std::vector<int> variablesStart{0};
    std::vector<KOBWBVariable*> rowVariables;
    ShapeTemplates templates;
    EquationShape shape;
    for (int i = 0; i < m; ++i) {
        KOBWBExpression* root = equalityRoots[static_cast<std::size_t>(i)];
        if (shape.Read(root, free)) {
            templateOf[static_cast<std::size_t>(i)] = templates.Find(shape, root);
            rowVariables.insert(rowVariables.end(), shape.Variables().begin(), shape.Variables().end());
        } else {
            KOBWBVariable** present = nullptr;
            const int count = root->FindPresentVariables(present);
            const std::unique_ptr<KOBWBVariable*[]> owned(present);
            rowVariables.insert(rowVariables.end(), present, present + count);
        }
        variablesStart.push_back(static_cast<int>(rowVariables.size()));
    }
    unknowns = UnknownsAmong(factory, free, rowVariables);
    const std::size_t variableCount = free.size();
    std::vector<int> columnOf(variableCount, -1);
    for (std::size_t j = 0; j < unknowns.size(); ++j)
        columnOf[static_cast<std::size_t>(unknowns[j]->GetIdx())] = static_cast<int>(j);
    const auto column = [&](const KOBWBVariable* variable) {
        const std::size_t index = static_cast<std::size_t>(variable->GetIdx());
        return index < variableCount ? columnOf[index] : -1;
    };

    // The tape: the roots of the equalities and inequalities first (a line search
    // evaluates these alone), then the Jacobian's entries, then the terms.
    TapeBuilder tape(evaluator, static_cast<int>(unknowns.size()), unknowns.data());
    std::vector<int> inputSlots;
    std::vector<int> stepSlots;
    std::vector<int> copied;
    // The slots of the steps each templated equation's root needs, kept from the
    // copy of those steps to the copy of the rest.
    std::vector<int> rootStepSlots;
    std::vector<std::size_t> rootStepsStart(static_cast<std::size_t>(m) + 1, 0);
    const auto copy = [&](ShapeTemplates::Template& shaped, int i, std::size_t first, std::size_t last) {
        inputSlots.clear();
        for (int k = variablesStart[static_cast<std::size_t>(i)]; k < variablesStart[static_cast<std::size_t>(i) + 1]; ++k) {
            KOBWBVariable* variable = rowVariables[static_cast<std::size_t>(k)];
            const int j = column(variable);
            inputSlots.push_back(j >= 0 ? j : tape.Leaf(variable));
        }
        tape.Copy(shaped.pattern, first, last, inputSlots.data(), shaped.leafSlots, stepSlots, copied);
    };
    std::vector<int> rootSlots;
    std::vector<int> termSlots;
    termStart.clear();
    for (int i = 0; i < m; ++i) {
        KOBWBExpression* root = equalityRoots[static_cast<std::size_t>(i)];
        termStart.push_back(static_cast<int>(termSlots.size()));
        rootStepsStart[static_cast<std::size_t>(i)] = rootStepSlots.size();
        if (ShapeTemplates::Template* shaped = templateOf[static_cast<std::size_t>(i)]) {
            stepSlots.clear();
            copy(*shaped, i, 0, shaped->rootSteps);
            rootStepSlots.insert(rootStepSlots.end(), stepSlots.begin(), stepSlots.end());
            rootSlots.push_back(copied[0]);
            termSlots.insert(termSlots.end(), copied.begin() + 1, copied.begin() + 1 + shaped->termCount);
            continue;
        }
        rootSlots.push_back(tape.Graph(root));
        if (root->GetType() == KOBWBSumType)
            for (int k = 0; k < root->GetNbOfChildren(); ++k) termSlots.push_back(tape.Graph(root->GetChild(k)));
        else
            termSlots.push_back(rootSlots.back());
    }
    termStart.push_back(static_cast<int>(termSlots.size()));
    for (KOBWBExpression* root : inequalityRoots) rootSlots.push_back(tape.Graph(root));

    struct Entry {
        int column;
        int row;
        int slot;
    };
    // Every entry of the pattern, row by row; its slot is -1 where it has no derivative.
    std::vector<Entry> entries;
    for (int i = 0; i < m; ++i) {
        const int first = variablesStart[static_cast<std::size_t>(i)];
        const int last = variablesStart[static_cast<std::size_t>(i) + 1];
        ShapeTemplates::Template* shaped = templateOf[static_cast<std::size_t>(i)];
        if (shaped) {
            stepSlots.assign(rootStepSlots.begin() + static_cast<std::ptrdiff_t>(rootStepsStart[static_cast<std::size_t>(i)]),
                             rootStepSlots.begin() + static_cast<std::ptrdiff_t>(rootStepsStart[static_cast<std::size_t>(i)] + shaped->rootSteps));
            copy(*shaped, i, shaped->rootSteps, std::numeric_limits<std::size_t>::max());
        }
        std::size_t output = shaped ? 1 + static_cast<std::size_t>(shaped->termCount) : 0;
        for (int k = first; k < last; ++k) {
            KOBWBVariable* variable = rowVariables[static_cast<std::size_t>(k)];
            const int j = column(variable);
            if (j < 0) continue;
            if (shaped) {
                entries.push_back({j, i, copied[output++]});
                continue;
            }
            KOBWBExpression* derivative = factory.CreateDerivative(equalityRoots[static_cast<std::size_t>(i)], 1, &variable);
            entries.push_back({j, i, derivative ? tape.Graph(derivative) : -1});
        }
    }
    // Compressed by columns, rows ascending within a column as they were listed.
    columnStarts.assign(unknowns.size() + 1, 0);
    for (const Entry& entry : entries) ++columnStarts[static_cast<std::size_t>(entry.column) + 1];
    for (std::size_t j = 0; j < unknowns.size(); ++j) columnStarts[j + 1] += columnStarts[j];
    std::vector<int> entrySlots(entries.size());
    rows.assign(entries.size(), 0);
    std::vector<int> next(columnStarts.begin(), columnStarts.end() - 1);
    for (const Entry& entry : entries) {
        const std::size_t k = static_cast<std::size_t>(next[static_cast<std::size_t>(entry.column)]++);
        rows[k] = entry.row;
        entrySlots[k] = entry.slot;
    }
    for (int slot : rootSlots) complete = complete && slot >= 0;
    for (int slot : termSlots) complete = complete && slot >= 0;
    for (const Entry& entry : entries) complete = complete && entry.slot >= 0;
    if (!complete) {
        evaluator = KOBWBPointEvaluator();
        return;
    }
    for (int slot : rootSlots) tape.Output(slot);
    for (int slot : entrySlots) tape.Output(slot);
    const int firstTerm = static_cast<int>(rootSlots.size() + entries.size());
    for (int& start : termStart) start += firstTerm;
    for (int slot : termSlots) tape.Output(slot);
    tape.Finish();
    step = std::make_unique<LeastChangeStep>(m, static_cast<int>(unknowns.size()), columnStarts, rows);
}

} // namespace kobwb
