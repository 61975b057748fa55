#ifndef KOBWBContractor_h
#define KOBWBContractor_h

#include "KOBWBxExport.h"

#include <memory>

class KOBWBEquation;
class KOBWBFactory;
class KOBWBVariable;

// What a contraction found.
enum KOBWBContractionStatus {
    // A domain became empty: the system has no solution in the variables' domains.
    KOBWBContractionNoSolution = 0,
    // No equation narrows a variable by more than the ratio any more.
    KOBWBContractionFixedPoint = 1,
    // The budget of revisions ran out first; the domains are narrowed as far as it went.
    KOBWBContractionBudgetSpent = 2
};

namespace kobwb {
class ContractorTapes;
}

// Narrows the domains of a factory's variables with its equations, and tells when no
// point of them can satisfy the system. It never removes a point that satisfies every
// equation, up to the rounding of double arithmetic (the projections widen what they
// invert by a few units of rounding).
//
// Revising an equation (the HC4-revise scheme): its root is evaluated forward over
// the current domains, every node taking its value as its domain. The contractor lays
// each equation's graph out once (its tape, the tapes of all equations side by side) and
// evaluates it there with the functions of the operator table and their interval forms,
// as the root's evaluation plan does, so that the result is what GetValue gives while
// only the variables are read from the graph (nodes the table does not evaluate, such as
// if-then-else and black boxes, are asked for their GetValue). The root's domain is
// narrowed to the equation's relation to 0 within the environment's tolerance t, the
// tolerance under which evaluation takes the relation as holding (= to [-t, t], <= and <
// to the reals up to t, >= and > to those from -t, strict orders closed; != only empties
// a root within t of 0); every forward bound is widened outwards by one step of double,
// so that a point evaluated alone, whose rounding may fall on the other side of a
// bound, is not cut off;
// then, from the root down, each node whose domain narrowed narrows the domains of its
// children with the projections of its operator (KOBWBArithmeticProjections.h and
// kin; an n-ary sum, product, minimum or maximum narrows each child against the fold of
// the others). A node shared by several parents is narrowed by all of them before it
// narrows its own children. Operators without projections (dim, mod, step, if-then-else,
// black boxes, integrals) leave their children as they are. Finally the
// variables whose domains narrowed get them with SetExprValue, in their own kinds
// (integer domains narrow to integers, enumerations element by element); fixed
// variables are not written, but an empty domain of any node, constants and fixed
// variables included, means no solution. Minimise and maximise equations and equations
// of undefined type are not revised.
//
// Propagation: every equation to revise is queued once; revising one that narrows a
// variable's domain by more than the ratio of its width queues the other equations of
// that variable again; it stops at a fixed point, when a domain becomes empty, or when
// the budget of revisions is spent.
//
// The contractor reads the factory's equations, their graphs and their constants when
// first used, and again when the factory reports a change to them (its system
// version). It owns nothing of the factory.
class KOBWBX_API KOBWBContractor {
public:
    explicit KOBWBContractor(KOBWBFactory& factory);
    ~KOBWBContractor();
    KOBWBContractor(const KOBWBContractor&) = delete;
    KOBWBContractor& operator=(const KOBWBContractor&) = delete;

    // The part of a variable's width that a revision must remove to wake the other
    // equations of the variable (default 0.01).
    double GetRatio() const { return m_ratio; }
    void SetRatio(double ratio) { m_ratio = ratio; }
    // The largest number of revisions of one propagation; 0 (the default) means 100
    // times the number of equations.
    long GetBudget() const { return m_budget; }
    void SetBudget(long revisions) { m_budget = revisions; }

    // Revises one equation of the factory; FixedPoint when something is left.
    KOBWBContractionStatus Revise(KOBWBEquation* equation);
    // Propagates over every equation of the factory.
    KOBWBContractionStatus Run();
    // Propagates from the equations of the given variables, after their domains were
    // narrowed from outside (a solver's split, a value fixed by the user).
    KOBWBContractionStatus Propagate(int count, KOBWBVariable* const* variables);
    // Revisions made by the last Run or Propagate.
    long GetNbOfRevisions() const { return m_revisions; }
    // Forgets what was read of the equations; the next use reads them again.
    void Reset();

private:
    KOBWBContractionStatus PropagateQueued();
    // What was read of the system, read again when the system changed.
    kobwb::ContractorTapes& Tapes();

    KOBWBFactory& m_factory;
    double m_ratio = 0.01;
    long m_budget = 0;
    long m_revisions = 0;
    std::unique_ptr<kobwb::ContractorTapes> m_tapes;
    unsigned long long m_version = 0;
};

#endif
