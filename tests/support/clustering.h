// What the tests of clustering share: owners for the library's objects, and tables read from tests/data.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "support/host_objects.h"
#include "support/reference_table.h"
#include "zul/clustering.h"

namespace zul::test {

using dax::clustering::DistanceMatrix;

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

// The distances of the rows by a measure, or of the columns without one; option: standardized, or absolute.
inline Matrix Distances(const Table& data, const std::string& measure, bool option) {
    const bool columns = measure == "-" || measure.empty();
    Matrix m = MakeMatrix(columns ? data->ColumnCount() : data->RowCount());
    const auto status =
        columns ? CreateForClusterVariables(*data, option, *m)
                : CreateForClusterObservations(
                      *data, static_cast<dax::clustering::DistanceEnums>(std::stoi(measure)), option, *m);
    EXPECT_EQ(status, dax::types::Success);
    return m;
}

}  // namespace zul::test
