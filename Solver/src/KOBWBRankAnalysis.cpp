#include "KOBWBRankAnalysis.h"

#include <Eigen/SPQRSupport>
#include <Eigen/SparseCore>

#include <cmath>

namespace kobwb {

namespace {

using QR = Eigen::SPQR<Eigen::SparseMatrix<double>>;

// The rank of a, and the rows of a's left null space (w^T a = 0) that have a part in
// it: the last columns of Q in a = Q R P^T span that space.
int LeftNullRows(const Eigen::SparseMatrix<double>& a, double tolerance, std::vector<int>& rows, bool& complete) {
    QR qr;
    qr.compute(a);
    if (qr.info() != Eigen::Success) {
        complete = false;
        return 0;
    }
    const int rank = static_cast<int>(qr.rank());
    const int m = static_cast<int>(a.rows());
    const int nullity = m - rank;
    if (nullity <= 0) return rank;
    if (nullity > RankAnalysis::nullLimit) {
        complete = false;
        return rank;
    }
    Eigen::MatrixXd unit = Eigen::MatrixXd::Zero(m, nullity);
    for (int k = 0; k < nullity; ++k) unit(rank + k, k) = 1.0;
    const Eigen::MatrixXd basis = qr.matrixQ() * unit;
    for (int i = 0; i < m; ++i)
        if (basis.row(i).norm() > tolerance) rows.push_back(i);
    return rank;
}

} // namespace

void RankAnalysis::Run(int rows, int columns, const std::vector<int>& columnStarts, const std::vector<int>& rowIndices,
                       const double* values, double tolerance) {
    *this = RankAnalysis();
    if (rows == 0 || columns == 0) {
        for (int j = 0; j < columns; ++j) freeColumns.push_back(j);
        for (int i = 0; i < rows; ++i) dependentRows.push_back(i);
        return;
    }
    Eigen::SparseMatrix<double> a(rows, columns);
    std::vector<Eigen::Triplet<double>> entries;
    for (int j = 0; j < columns; ++j)
        for (int k = columnStarts[static_cast<std::size_t>(j)]; k < columnStarts[static_cast<std::size_t>(j) + 1]; ++k) {
            const double value = values[k];
            entries.emplace_back(rowIndices[static_cast<std::size_t>(k)], j, std::isfinite(value) ? value : 0.0);
        }
    a.setFromTriplets(entries.begin(), entries.end());
    rank = LeftNullRows(a, tolerance, dependentRows, complete);
    const Eigen::SparseMatrix<double> transposed = a.transpose();
    LeftNullRows(transposed, tolerance, freeColumns, complete);
}

} // namespace kobwb
