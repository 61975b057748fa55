#ifndef KOBWBRankAnalysis_h
#define KOBWBRankAnalysis_h

#include <vector>

namespace kobwb {

// The numeric rank of a sparse matrix (m x n, compressed columns) by a rank-revealing
// sparse QR (SPQR), and the rows of its null spaces: which columns have a part in a
// vector v with A v = 0, and which rows in a vector w with w^T A = 0. A part counts
// when it is above tolerance in an orthonormal basis of the null space. A null space of
// more than nullLimit dimensions is not spelt out (the sets are left empty and
// complete is false).
struct RankAnalysis {
    static constexpr int nullLimit = 400;

    int rank = 0;
    bool complete = true;
    std::vector<int> freeColumns;
    std::vector<int> dependentRows;

    void Run(int rows, int columns, const std::vector<int>& columnStarts, const std::vector<int>& rowIndices,
             const double* values, double tolerance = 1e-8);
};

} // namespace kobwb

#endif
