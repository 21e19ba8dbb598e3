#include "clustering/distances/panels.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "clustering/containers/rectangular_array.h"

namespace zul::dax::clustering {
namespace {

using Data = types::IRectangularArray<double>;

// Calls take(row, values) for each row of the data. Those of the library's own array are read where they are.
template <class Take>
void ForEachRow(const Data& data, int rows, int columns, Take take) {
    const auto* const own = dynamic_cast<const types::RectangularArray*>(&data);
    std::vector<double> values(own == nullptr ? static_cast<std::size_t>(columns) : 0);
    for (int row = 0; row < rows; ++row) {
        if (own != nullptr) {
            take(static_cast<std::size_t>(row), own->Row(row));
        } else {
            for (int column = 0; column < columns; ++column)
                values[static_cast<std::size_t>(column)] = data.At(row, column);
            take(static_cast<std::size_t>(row), values);
        }
    }
}

}  // namespace

Panels PanelsOfRows(const Data& data, int rows, int columns) {
    Panels panels(static_cast<std::size_t>(std::max(0, rows)), static_cast<std::size_t>(columns));
    const std::size_t whole = panels.rows / kLanes * kLanes * panels.columns;
    std::fill(panels.values.get() + whole, panels.values.get() + panels.size, 0.0);
    ForEachRow(data, rows, columns, [&](std::size_t row, const std::vector<double>& values) {
        double* const out = panels.At(row);
        for (std::size_t column = 0; column < panels.columns; ++column)
            out[column * kLanes] = values[column];
    });
    return panels;
}

Panels PanelsOfColumns(const Data& data, int rows, int columns) {
    Panels panels(static_cast<std::size_t>(columns), static_cast<std::size_t>(std::max(0, rows)));
    const std::size_t left = panels.rows % kLanes;
    const std::size_t whole = panels.rows - left;
    double* const last = panels.values.get() + whole * panels.columns;
    std::fill(last, panels.values.get() + panels.size, 0.0);
    ForEachRow(data, rows, columns, [&](std::size_t row, const std::vector<double>& values) {
        for (std::size_t i = 0; i < whole; i += kLanes)
            std::memcpy(panels.At(i) + row * kLanes, &values[i], kLanes * sizeof(double));
        for (std::size_t i = 0; i < left; ++i)
            last[row * kLanes + i] = values[whole + i];
    });
    return panels;
}

}  // namespace zul::dax::clustering
