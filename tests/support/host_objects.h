// A table, a matrix and a vector of steps that the library does not know.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

#include "zul/clustering.h"

namespace zul::test {

// A table of a host, which has another one's values.
class HostTable : public dax::types::IRectangularArray<double> {
public:
    explicit HostTable(dax::types::IRectangularArray<double>& values) : values_(values) {}
    const double& At(int row, int column) const override { return values_.At(row, column); }
    double& At(int row, int column) override { return values_.At(row, column); }
    double Set(int row, int column, const double& value) override { return values_.Set(row, column, value); }
    int RowCount() const override { return values_.RowCount(); }
    int ColumnCount() const override { return values_.ColumnCount(); }

private:
    dax::types::IRectangularArray<double>& values_;
};

// Distances of a host, which keeps the whole square. Asking for anything but a pair of
// two objects ends the program.
class HostMatrix : public dax::clustering::DistanceMatrix {
public:
    explicit HostMatrix(int n) : rows_(n) { Resize(n, 0); }
    dax::types::StatlibraryErrorCode initStatus = dax::types::Success;

private:
    void Resize(int n, double value) {
        size_ = n;
        values_.assign(static_cast<std::size_t>(n) * static_cast<std::size_t>(n), value);
    }
    std::size_t Index(int i, int j) const {
        if (i < 0 || j < 0 || i == j || std::max(i, j) >= size_) std::abort();
        const auto row = static_cast<std::size_t>(std::max(i, j));
        return row * static_cast<std::size_t>(size_) + static_cast<std::size_t>(std::min(i, j));
    }
    int RowCountImpl() const override { return rows_; }
    double GetImpl(int i, int j) const override { return values_[Index(i, j)]; }
    void SetImpl(int i, int j, double value) override { values_[Index(i, j)] = value; }
    dax::types::StatlibraryErrorCode InitImpl(int n, double value) override {
        Resize(n, value);
        return initStatus;
    }

    int rows_;
    int size_ = 0;
    std::vector<double> values_;
};

// Joins of a host, which has no elements side by side.
class HostSteps : public dax::types::IReadableVector<dax::clustering::ClusterStep> {
public:
    explicit HostSteps(std::vector<dax::clustering::ClusterStep> steps) : steps_(std::move(steps)) {}

private:
    std::size_t SizeImpl() const override { return steps_.size(); }
    const dax::clustering::ClusterStep& AtImpl(std::size_t i) const override { return steps_.at(i); }
    const dax::clustering::ClusterStep* DataImpl() const override { return nullptr; }

    std::vector<dax::clustering::ClusterStep> steps_;
};

}  // namespace zul::test
