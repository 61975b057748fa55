#ifndef KOBWBGraphComparison_h
#define KOBWBGraphComparison_h

class KOBWBExpression;

namespace kobwb {

// The structural equality of operators: the same code and children equal one by one;
// sums, products, minima and maxima match their children in any order, greedily (each
// child of the first takes the first child of the second not yet taken that equals
// it). Below the library's own operator classes the comparison goes on with an
// explicit stack, so that long chains cannot exhaust the call stack, and a pair of
// nodes met again along other paths is not compared again.
bool OperatorsEqual(const KOBWBExpression& mine, const KOBWBExpression* theirs);

} // namespace kobwb

#endif
