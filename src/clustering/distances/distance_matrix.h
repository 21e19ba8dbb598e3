#pragma once

#include <cstddef>
#include <vector>

#include "zul/clustering.h"

namespace zul::dax::clustering {

// Where row i begins among the rows of the upper triangle of n rows, of which each begins at the diagonal. In
// std::size_t: the products pass 32 bits from i = 46341.
inline std::size_t UpperRowStart(std::size_t i, std::size_t n) {
    return i * n - i * (i + 1) / 2 + i;
}

// The library's own matrix: the upper triangle with its diagonal, row by row, so that the distances of an object to
// those with higher numbers, among which a cluster's neighbour is searched for, lie side by side.
class DistanceMatrixImpl final : public DistanceMatrix {
public:
    // For n >= 0 objects.
    explicit DistanceMatrixImpl(int n);

    // The number of objects of the triangle, which need not be the number of rows.
    int Dimension() const { return dimension_; }
    // Init() for a caller that writes every element off the diagonal: what they are before is not specified.
    StatlibraryErrorCode Resize(int n);
    // Element (i, i), which those to (i, Dimension() - 1) follow; unchecked.
    const double* UpperRow(std::size_t i) const {
        return storage_.data() + UpperRowStart(i, static_cast<std::size_t>(dimension_));
    }
    double* UpperRow(std::size_t i) {
        return storage_.data() + UpperRowStart(i, static_cast<std::size_t>(dimension_));
    }

private:
    bool Contains(int i, int j) const { return i >= 0 && j >= 0 && i < dimension_ && j < dimension_; }
    std::size_t Index(int i, int j) const;

    int RowCountImpl() const override;
    double GetImpl(int i, int j) const override;
    void SetImpl(int i, int j, double value) override;
    StatlibraryErrorCode InitImpl(int n, double value) override;

    int dimension_;
    std::vector<double> storage_;
    int rowCount_;
};

}  // namespace zul::dax::clustering
