#ifndef KOBWBSparseLU_h
#define KOBWBSparseLU_h

#include <klu.h>

namespace kobwb {

// The LU factorisation of a square sparse matrix in compressed columns, for Newton
// steps: the pattern is ordered once (KLU: block triangular form, then a fill-reducing
// order of each block), the first factorisation chooses its pivots, and later ones
// (the next Jacobians of one solve, same pattern) reuse them, which is much cheaper;
// the pivots are chosen again when the reused ones have become poor (the reciprocal
// condition estimate fell below a hundredth of what it was when they were chosen).
class SparseLU {
public:
    SparseLU();
    ~SparseLU();
    SparseLU(const SparseLU&) = delete;
    SparseLU& operator=(const SparseLU&) = delete;

    // Factors the n x n matrix; false when it is singular. The pattern (starts and
    // rows) must be the same at every call.
    bool Factor(int n, const int* columnStarts, const int* rows, const double* values);
    // Solves the factored system in place.
    bool Solve(double* rightHandSide);

private:
    void FreeNumeric();

    klu_common m_common;
    klu_symbolic* m_symbolic = nullptr;
    klu_numeric* m_numeric = nullptr;
    int m_size = 0;
    // The reciprocal condition estimate when the pivots were chosen.
    double m_pivotedCondition = 0.0;
};

} // namespace kobwb

#endif
