#ifndef KOBWBSolverSystem_h
#define KOBWBSolverSystem_h

#include "KOBWBEquationType.h"
#include "KOBWBLeastChangeStep.h"
#include "KOBWBPointEvaluator.h"
#include "KOBWBSolver.h"

#include <memory>
#include <vector>

class KOBWBEquation;
class KOBWBExpression;
class KOBWBFactory;
class KOBWBVariable;

namespace kobwb {

// What a solver reads of a factory: its equalities and inequalities, the unknowns
// (variables of the equalities that are not fixed), the pattern of the equalities'
// Jacobian and one point evaluator over every root, Jacobian entry and root term. Made
// again when the factory's system or the set of fixed variables changes.
//
// Equalities of one shape (EquationShape) are differentiated and compiled once, the
// first of them, and that tape copied over the variables of the others
// (ShapeTemplates, TapeBuilder::Copy); the other equalities' entries are the factory's
// derivatives of each.
//
// The evaluator's outputs: the equalities' roots, then the inequalities' roots (so a
// line search evaluates these alone), then the Jacobian entries in compressed-column
// order, then the terms of each equality's root (for the scale of its rounding).
struct SolverSystem {
    // Reads the factory; unknowns exclude the variables fixed there or in fixed.
    SolverSystem(KOBWBFactory& factory, const std::vector<KOBWBVariable*>& fixed);

    // Whether the factory's system and its variables' Fix flags are as they were read.
    bool IsCurrent() const;
    // Whether an inequality of that type holds for a root of that value.
    static bool Holds(KOBWBEquationType type, double value, double tolerance);

    KOBWBFactory& factory;
    unsigned long long version;
    // The variables' own Fix flags when read, by index.
    std::vector<bool> variableFixed;
    std::vector<KOBWBEquation*> equalities;
    std::vector<KOBWBEquation*> inequalities;
    std::vector<KOBWBVariable*> unknowns;
    // The Jacobian's pattern, compressed by columns.
    std::vector<int> columnStarts;
    std::vector<int> rows;
    KOBWBPointEvaluator evaluator;
    // For equality i, its terms are outputs termStart[i] .. termStart[i + 1] - 1.
    std::vector<int> termStart;
    std::unique_ptr<LeastChangeStep> step;
    // Whether every entry of the Jacobian has a derivative.
    bool complete = true;

    int EqualityCount() const { return static_cast<int>(equalities.size()); }
    int InequalityCount() const { return static_cast<int>(inequalities.size()); }
    int EntryCount() const { return static_cast<int>(rows.size()); }
    int JacobianOutput() const { return EqualityCount() + InequalityCount(); }

private:
    // The unknowns, the pattern and the tape.
    void Compile(const std::vector<KOBWBVariable*>& fixed, const std::vector<KOBWBExpression*>& equalityRoots,
                 const std::vector<KOBWBExpression*>& inequalityRoots);
};

} // namespace kobwb

// The solver's own name for what it reads of the factory.
struct KOBWBSolver::System : kobwb::SolverSystem {
    using SolverSystem::SolverSystem;
};

#endif
