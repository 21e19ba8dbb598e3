#include "clustering/distances/panels.h"

#include <algorithm>

#include "clustering/containers/rectangular_array.h"

namespace zul::dax::clustering {

DataRows::DataRows(const types::IRectangularArray<double>& data, int rows, int columns)
    : columns_(static_cast<std::size_t>(columns)), rows_(static_cast<std::size_t>(std::max(0, rows))) {
    const auto* const own = dynamic_cast<const types::RectangularArray*>(&data);
    if (own != nullptr && columns_ >= kLanes) {
        for (int row = 0; row < rows; ++row)
            rows_[static_cast<std::size_t>(row)] = own->Row(row).data();
        return;
    }
    const std::size_t width = std::max(columns_, kLanes);
    copies_.resize(rows_.size() * width);
    for (int row = 0; row < rows; ++row) {
        double* const values = &copies_[static_cast<std::size_t>(row) * width];
        for (int column = 0; column < columns; ++column)
            values[column] = data.At(row, column);
        rows_[static_cast<std::size_t>(row)] = values;
    }
}

Panels PanelsOf(const DataRows& rows) {
    Panels panels(rows.Count(), rows.Columns());
    const std::size_t whole = panels.rows / kLanes * kLanes * panels.columns;
    std::fill(panels.values.get() + whole, panels.values.get() + panels.size, 0.0);
    for (std::size_t row = 0; row < panels.rows; ++row) {
        const double* const values = *rows.From(row);
        double* const out = panels.At(row);
        for (std::size_t column = 0; column < panels.columns; ++column)
            out[column * kLanes] = values[column];
    }
    return panels;
}

}  // namespace zul::dax::clustering
