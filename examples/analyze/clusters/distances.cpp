#include "clusters/distances.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "input/input_error.h"

namespace analyze {
namespace {

using namespace zul::dax;
using namespace zul::dax::clustering;

using Values = std::unique_ptr<types::IRectangularArray<double>>;

Values MakeTable(const std::vector<std::vector<double>>& columns) {
    const std::size_t rows = columns.front().size();
    if (rows > std::numeric_limits<int>::max()) throw InputError("too many rows");
    Values table = Checked(
        Values(types::MakeIRectangularArrayDouble(static_cast<int>(rows), static_cast<int>(columns.size()))));
    for (std::size_t column = 0; column < columns.size(); ++column)
        for (std::size_t row = 0; row < rows; ++row)
            table->Set(static_cast<int>(row), static_cast<int>(column), columns[column][row]);
    return table;
}

}  // namespace

const Choices<DistanceEnums>& Measures() {
    static const Choices<DistanceEnums> measures = {{"euclidean", Euclidean},
                                                    {"squared-euclidean", SquaredEuclidean},
                                                    {"manhattan", Manhattan},
                                                    {"pearson", Pearson},
                                                    {"squared-pearson", SquaredPearson}};
    return measures;
}

Matrix DistancesOfRows(const std::vector<std::vector<double>>& columns, DistanceEnums measure,
                       bool standardize) {
    const Values table = MakeTable(columns);
    Matrix distances = Checked(Matrix(MakeDistanceMatrix(table->RowCount())));
    if (CreateForClusterObservations(*table, measure, standardize, *distances) != types::Success)
        throw std::bad_alloc();
    return distances;
}

Matrix DistancesOfColumns(const std::vector<std::vector<double>>& columns) {
    const Values table = MakeTable(columns);
    if (columns.front().size() < 2) throw InputError("the correlations of columns need two rows or more");
    Matrix distances = Checked(Matrix(MakeDistanceMatrix(static_cast<int>(columns.size()))));
    if (CreateForClusterVariables(*table, false, *distances) != types::Success) throw std::bad_alloc();
    return distances;
}

double MaxDistance(const DistanceMatrix& distances) {
    double maximum = 0;
    for (int i = 0; i < distances.RowCount(); ++i)
        for (int j = 0; j < i; ++j)
            maximum = std::max(maximum, distances(i, j));
    return maximum;
}

}  // namespace analyze
