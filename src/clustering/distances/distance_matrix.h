#pragma once

#include <cstddef>
#include <vector>

#include "zul/clustering.h"

namespace zul::dax::clustering {

// The library's own matrix: the lower triangle with its diagonal, row by row, so that element (i, j), j <= i,
// is at i (i + 1) / 2 + j.
class DistanceMatrixImpl final : public DistanceMatrix {
public:
    // For n >= 0 objects.
    explicit DistanceMatrixImpl(int n);

    // The number of objects of the triangle, which need not be the number of rows.
    int Dimension() const { return dimension_; }
    // Init() for a caller that writes every element: what they are before is not specified.
    StatlibraryErrorCode Resize(int n);
    // Elements (i, 0) to (i, i), unchecked.
    double* Row(std::size_t i) { return storage_.data() + RowStart(i); }

private:
    // In std::size_t: the products pass 32 bits from i = 46341.
    static std::size_t RowStart(std::size_t i) { return i * (i + 1) / 2; }
    bool Contains(int i, int j) const { return i >= 0 && j >= 0 && i < dimension_ && j < dimension_; }
    static std::size_t Index(int i, int j);

    int RowCountImpl() const override;
    double GetImpl(int i, int j) const override;
    void SetImpl(int i, int j, double value) override;
    StatlibraryErrorCode InitImpl(int n, double value) override;

    int dimension_;
    std::vector<double> storage_;
    int rowCount_;
};

}  // namespace zul::dax::clustering
