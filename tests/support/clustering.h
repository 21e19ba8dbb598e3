// What the tests of clustering share: owners for the library's objects, tables read from tests/data, and a
// matrix that the library does not know.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "support/reference_table.h"
#include "zul/clustering.h"

namespace zul::test {

using dax::clustering::DistanceMatrix;
using dax::types::StatlibraryErrorCode;

using Matrix = std::unique_ptr<DistanceMatrix>;
using Table = std::unique_ptr<dax::types::IRectangularArray<double>>;

inline Matrix MakeMatrix(int n) {
    return Matrix(dax::clustering::MakeDistanceMatrix(n));
}

inline Table MakeTable(const std::vector<std::vector<double>>& rows) {
    const int columns = rows.empty() ? 0 : static_cast<int>(rows.front().size());
    Table table(dax::types::MakeIRectangularArrayDouble(static_cast<int>(rows.size()), columns));
    for (int row = 0; row < table->RowCount(); ++row)
        for (int column = 0; column < columns; ++column)
            table->Set(row, column, rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)]);
    return table;
}

// The first rows of clustering/<name>.csv.
inline Table ReadDataTable(const std::string& name, std::size_t count) {
    std::vector<std::vector<double>> rows;
    for (const Row& row : ReadTable("clustering/" + name + ".csv", ',')) {
        rows.emplace_back();
        for (const std::string& cell : row)
            rows.back().push_back(Number(cell));
    }
    rows.resize(std::min(count, rows.size()));
    return MakeTable(rows);
}

// Distances of a host, which keeps the whole square and what it was asked for. Reading the diagonal, and all
// else that is not a pair of two objects, fails.
class HostMatrix : public DistanceMatrix {
public:
    struct Call {
        char operation;  // 'n' row count, 'g' get, 's' set, 'i' init
        int i;
        int j;
        bool operator==(const Call&) const = default;
    };

    explicit HostMatrix(int n, bool recording = false) : rows_(n), recording_(recording) { Resize(n, 0); }
    std::vector<Call> TakeCalls() { return std::exchange(calls_, {}); }
    StatlibraryErrorCode initStatus = dax::types::Success;

private:
    void Resize(int n, double value) {
        size_ = static_cast<std::size_t>(n);
        values_.assign(size_ * size_, value);
    }
    std::size_t Index(int i, int j) const {
        return static_cast<std::size_t>(std::max(i, j)) * size_ + static_cast<std::size_t>(std::min(i, j));
    }
    void Record(Call call) const {
        if (recording_) calls_.push_back(call);
    }

    int RowCountImpl() const override {
        Record({'n', 0, 0});
        return rows_;
    }
    double GetImpl(int i, int j) const override {
        Record({'g', i, j});
        EXPECT_NE(i, j);
        return values_.at(Index(i, j));
    }
    void SetImpl(int i, int j, double value) override {
        Record({'s', i, j});
        values_.at(Index(i, j)) = value;
    }
    StatlibraryErrorCode InitImpl(int n, double value) override {
        Record({'i', n, static_cast<int>(value)});
        Resize(n, value);
        return initStatus;
    }

    int rows_;
    bool recording_;
    std::size_t size_ = 0;
    std::vector<double> values_;
    mutable std::vector<Call> calls_;
};

}  // namespace zul::test
