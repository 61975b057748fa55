#ifndef KOBWBTransformationPasses_h
#define KOBWBTransformationPasses_h

#include <string>
#include <vector>

class KOBWBEnvironment;
class KOBWBEquation;
class KOBWBExpression;
class KOBWBFactory;
class KOBLVRStream;

// The passes of the symbolic transformations over one expression graph. Each walks
// the graph with an explicit stack and visits a shared node once.
namespace kobwb {

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

} // namespace kobwb

#endif
