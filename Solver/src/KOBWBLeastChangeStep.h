#ifndef KOBWBLeastChangeStep_h
#define KOBWBLeastChangeStep_h

#include <memory>
#include <vector>

namespace kobwb {

// The damped least-change step of a Gauss-Newton iteration: for the Jacobian J (m x n,
// compressed columns, pattern fixed at construction) and the residual F, the step
// dx = -J^T (J J^T + mu I)^-1 F, computed on the smaller side: with J J^T when m <= n,
// else as -(J^T J + mu I)^-1 J^T F, which is the same step. For mu -> 0 it is the
// Newton step of a square regular system, the shortest solution of J dx = -F of an
// under-determined one, and the least-squares step of an over-determined one; mu > 0
// keeps the factorisation defined where J loses rank. The symbolic analysis of the
// normal matrix is made once; each step factorises it anew.
class LeastChangeStep {
public:
    LeastChangeStep(int rows, int columns, const std::vector<int>& columnStarts, const std::vector<int>& rowIndices);
    ~LeastChangeStep();
    LeastChangeStep(const LeastChangeStep&) = delete;
    LeastChangeStep& operator=(const LeastChangeStep&) = delete;

    // The entries of J in compressed-column order.
    void SetJacobian(const double* values);
    // The largest diagonal entry of the normal matrix (the scale of mu); 0 for an
    // empty Jacobian.
    double NormalScale();
    // dx for the residual f and the damping mu; false when the factorisation fails.
    // A square Jacobian with mu = 0 gives the Newton step by its LU factorisation;
    // mu = 0 is refused for other shapes.
    bool Step(const double* f, double mu, double* dx);
    // g = J^T f, the gradient of |f|^2 / 2.
    void Gradient(const double* f, double* g) const;

    struct Impl;

private:
    std::unique_ptr<Impl> m_impl;
};

} // namespace kobwb

#endif
