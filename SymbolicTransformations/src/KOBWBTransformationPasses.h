#ifndef KOBWBTransformationPasses_h
#define KOBWBTransformationPasses_h

#include "KOBWBEquation.h"
#include "KOBWBExpression.h"
#include "KOBWBFactory.h"
#include "KOBWBPolynomial.h"

#include <cstddef>
#include <functional>
#include <string>
#include <utility>
#include <unordered_set>
#include <vector>

class KOBLVRGlobalParameters;
class KOBLVRIntArray;
class KOBWBEnvironment;
class KOBWBPolynomialContext;
class KOBLVRStream;

// The passes of the symbolic transformations over one expression graph. Each walks
// the graph with an explicit stack and visits a shared node once.
namespace kobwb {

// Calls visit on every node below root and on root, children before parents. A
// shared node is visited once: past the first nodes, the walk remembers those it
// has seen, so that small trees are walked without that bookkeeping (their few
// shared nodes may then be visited twice, which the passes do not mind).
template <class Visit>
void PostOrder(KOBWBExpression* root, Visit visit) {
    if (!root) return;
    constexpr std::size_t remembering = 64;
    struct Frame {
        KOBWBExpression* node;
        int next;
    };
    // Room for the depth of most equations, so that the walk allocates once.
    std::vector<Frame> frames;
    frames.reserve(32);
    frames.push_back({root, 0});
    std::unordered_set<const KOBWBExpression*> seen;
    std::size_t walked = 0;
    while (!frames.empty()) {
        const std::size_t top = frames.size() - 1;
        KOBWBExpression* node = frames[top].node;
        if (frames[top].next < node->GetNbOfChildren()) {
            KOBWBExpression* child = node->GetChild(frames[top].next++);
            if (child && (++walked <= remembering || seen.insert(child).second)) frames.push_back({child, 0});
            continue;
        }
        frames.pop_back();
        visit(node);
    }
}

// Sums, products, mins and maxes absorb the children of their children of the same
// kind, which are appended at the end: a+(b+(c+d)) becomes one sum of a, b, c, d.
void FlattenAssociative(KOBWBExpression* root);

// Every sum, product, min and max of three or more children becomes a chain of
// binary nodes from the left: a+b+c+d becomes ((a+b)+c)+d.
void BinarizeOperators(KOBWBFactory& factory, KOBWBExpression* root);

// Exact fractions written with the factory's own constants: Pi/180 and 180/Pi as
// the degree and radian constants, n/d x Pi^k as quotients and products of integer
// constants and Pi. Returns the node to use in place of root.
KOBWBExpression* CanonicalizeConstants(KOBWBFactory& factory, KOBWBExpression* root);

// The polynomials that equations' roots simplify to, with the equations' ids, left
// unwritten because a later pass rewrites those roots anyway: reading the written
// root would give the polynomial back exactly (see
// KOBWBPolynomialContext::ReadsBackExactly), so that pass takes the polynomial and
// writes each root once.
using UnwrittenRoots = std::vector<std::pair<int, KOBWBPolynomial>>;

// The equation's root simplified on the algebra engine; the root itself when it cannot
// be read; null when the equation is an equality whose root is exactly 0. unwritten,
// when not null, receives the polynomial instead when it reads back exactly: the
// root is then left as it is, not simplified, and returned.
KOBWBExpression* SimplifyRoot(KOBWBPolynomialContext& context, KOBWBEquation& equation,
                              UnwrittenRoots* unwritten = nullptr);

// How an implementation of the operator runs the pass over the equations.
struct EquationPass {
    // The mode of the run (bits of KOBWBTransformationMode).
    unsigned mode = 0;
    // Whether the pass leaves the factory's own trees as they are. It then works on a
    // duplicate of each root, except in temporary storage (without marking before
    // simplifying), where it reads a root as it stands and duplicates only a root
    // that stays: one that does not read, reads with opaque atoms, or has a min or
    // max that flattening would merge.
    bool duplicateRoots = false;
    // Whether a root is marked before it is simplified as well as after.
    bool markBeforeSimplifying = false;
    // The trace level of the lines before and after flattening.
    int flattenTraceLevel = 1;
    // When not null, receives the simplified roots that read back exactly, unwritten.
    UnwrittenRoots* unwritten = nullptr;
};

// The pass over the equations of the factory, last to first, that both
// implementations run: each equation covered is flattened (with mode bit 2 or 4)
// and simplified (bit 4), its roots marked by mark; an equality that simplifies to
// exactly 0 is removed. Each equation covered that stays is then handed to done,
// while what the pass made of it is still in the cache.
template <class Covers, class Mark, class Done>
void RunEquationPass(KOBWBFactory& factory, KOBWBPolynomialContext& context, const EquationPass& pass,
                     const KOBLVRGlobalParameters& parameters, Covers covers, Mark mark, Done done);
// The same on one equation, the marking given as a function; false when the
// equation was removed.
bool RunOnEquation(KOBWBFactory& factory, KOBWBPolynomialContext& context, const EquationPass& pass,
                   const KOBLVRGlobalParameters& parameters, KOBWBEquation& equation,
                   const std::function<void(KOBWBExpression*)>& mark);

// The replay sections of a run: the system in input form with the equations to
// simplify (may be null) and the mode; in output form, after the verdict on the
// inequalities when one is given ("FOUND" or "NOTFOUND").
void WriteReplayInput(KOBLVRStream& stream, KOBWBFactory& factory, unsigned mode, const KOBLVRIntArray* equationsToSimplify);
void WriteReplayOutput(KOBLVRStream& stream, KOBWBFactory& factory, const char* inconsistencies);

// Whether a constant inequality's root can stand in its relation to 0: false when
// the comparison of its value with 0 is not certainly true. Equalities, objectives
// and roots that are not constant are not judged (true).
bool CanHold(const KOBWBEnvironment& environment, KOBWBEquation& equation, bool constantRoot);

// The expression in prefix form: "+(x, {1/2 * Pi^1})", "NULL" for null. Long
// traces are cut after a million characters with "...".
std::string TraceExpression(const KOBWBExpression* expression);
// One line "Eq[i] = ..." per equation, then "Var[i] = ..." per variable expression
// when the list has one entry per variable of the factory.
void TraceSystem(KOBLVRStream& stream, KOBWBFactory& factory, const std::vector<KOBWBExpression*>& variableExpressions);

template <class Covers, class Mark, class Done>
void RunEquationPass(KOBWBFactory& factory, KOBWBPolynomialContext& context, const EquationPass& pass,
                     const KOBLVRGlobalParameters& parameters, Covers covers, Mark mark, Done done) {
    for (KOBWBEquation* equation = factory.GetLastEquation(); equation;) {
        KOBWBEquation* previous = factory.GetPrevEquation(equation);
        if (covers(*equation) && RunOnEquation(factory, context, pass, parameters, *equation, mark)) done(*equation);
        equation = previous;
    }
}

} // namespace kobwb

#endif
