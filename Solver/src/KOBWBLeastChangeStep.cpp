#include "KOBWBLeastChangeStep.h"

#include "KOBWBSparseLU.h"

#include <Eigen/CholmodSupport>
#include <Eigen/SparseCore>

#include <algorithm>
#include <cmath>

namespace kobwb {

using SparseMatrix = Eigen::SparseMatrix<double, Eigen::ColMajor, int>;
using Vector = Eigen::VectorXd;

struct LeastChangeStep::Impl {
    SparseMatrix jacobian;
    SparseMatrix normal;
    bool normalStale = true;
    SparseMatrix identity;
    Eigen::CholmodSupernodalLLT<SparseMatrix, Eigen::Lower> cholesky;
    bool analysed = false;
    // A square Jacobian's own LU factorisation, for the undamped Newton step: solving
    // the normal equations instead would square its condition number, which grows
    // with the length of a chain of constraints. KLU orders the matrix into block
    // triangular form first: a sketch's Jacobian is mostly chains of small blocks,
    // which it factors with little fill (a general multifrontal LU grew faster than
    // the size of a long strip).
    SparseLU lu;
    // Whether the normal matrix is J J^T (rows) or J^T J (columns).
    bool byRows = true;
};

LeastChangeStep::LeastChangeStep(int rows, int columns, const std::vector<int>& columnStarts,
                                 const std::vector<int>& rowIndices)
    : m_impl(std::make_unique<Impl>()) {
    Impl& impl = *m_impl;
    impl.byRows = rows <= columns;
    // The pattern is already compressed by columns, rows ascending: it is copied as it
    // is, its values set by SetJacobian in the same order.
    const std::vector<double> ones(rowIndices.size(), 1.0);
    impl.jacobian = Eigen::Map<const SparseMatrix>(rows, columns, static_cast<Eigen::Index>(rowIndices.size()),
                                                   columnStarts.data(), rowIndices.data(), ones.data());
    const int side = impl.byRows ? rows : columns;
    impl.identity.resize(side, side);
    impl.identity.setIdentity();
}

LeastChangeStep::~LeastChangeStep() = default;

void LeastChangeStep::SetJacobian(const double* values) {
    // An entry that cannot be computed here (0/0 where two points meet) is taken as 0:
    // the damping and the line search then decide the step.
    double* entries = m_impl->jacobian.valuePtr();
    for (Eigen::Index k = 0; k < m_impl->jacobian.nonZeros(); ++k) entries[k] = std::isfinite(values[k]) ? values[k] : 0.0;
    m_impl->normalStale = true;
}

// The normal matrix of the current Jacobian, made when a damped step or its scale
// first needs it.
static const SparseMatrix& Normal(LeastChangeStep::Impl& impl) {
    if (impl.normalStale) {
        if (impl.byRows)
            impl.normal = impl.jacobian * impl.jacobian.transpose();
        else
            impl.normal = impl.jacobian.transpose() * impl.jacobian;
        impl.normalStale = false;
    }
    return impl.normal;
}

double LeastChangeStep::NormalScale() {
    const SparseMatrix& normal = Normal(*m_impl);
    double scale = 0.0;
    for (int i = 0; i < normal.outerSize(); ++i) scale = std::max(scale, normal.coeff(i, i));
    return scale;
}

bool LeastChangeStep::Step(const double* f, double mu, double* dx) {
    Impl& impl = *m_impl;
    if (impl.jacobian.rows() == 0 || impl.jacobian.cols() == 0) return false;
    if (mu == 0.0) {
        if (impl.jacobian.rows() != impl.jacobian.cols()) return false;
        const SparseMatrix& jacobian = impl.jacobian;
        if (!impl.lu.Factor(static_cast<int>(jacobian.rows()), jacobian.outerIndexPtr(), jacobian.innerIndexPtr(),
                            jacobian.valuePtr()))
            return false;
        Eigen::Map<Vector> step(dx, jacobian.cols());
        step = -Eigen::Map<const Vector>(f, jacobian.rows());
        if (!impl.lu.Solve(dx)) return false;
        return step.allFinite();
    }
    const SparseMatrix damped = Normal(impl) + mu * impl.identity;
    if (!impl.analysed) {
        impl.cholesky.analyzePattern(damped);
        impl.analysed = true;
    }
    impl.cholesky.factorize(damped);
    if (impl.cholesky.info() != Eigen::Success) return false;
    const Eigen::Map<const Vector> residual(f, impl.jacobian.rows());
    Eigen::Map<Vector> step(dx, impl.jacobian.cols());
    if (impl.byRows) {
        const Vector y = impl.cholesky.solve(residual);
        if (impl.cholesky.info() != Eigen::Success) return false;
        step = -(impl.jacobian.transpose() * y);
    } else {
        const Vector g = impl.jacobian.transpose() * residual;
        step = -impl.cholesky.solve(g);
        if (impl.cholesky.info() != Eigen::Success) return false;
    }
    return step.allFinite();
}

void LeastChangeStep::Gradient(const double* f, double* g) const {
    const Eigen::Map<const Vector> residual(f, m_impl->jacobian.rows());
    Eigen::Map<Vector>(g, m_impl->jacobian.cols()) = m_impl->jacobian.transpose() * residual;
}

} // namespace kobwb
