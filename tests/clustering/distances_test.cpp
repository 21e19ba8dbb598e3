#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

#include "support/clustering.h"
#include "support/reference_table.h"
#include "zul/clustering.h"
#include "zul/descriptive.h"

namespace zul::dax::clustering {
namespace {

using test::HostMatrix;
using test::MakeMatrix;
using test::MakeTable;
using test::Matrix;
using types::Failure;
using types::Success;

constexpr DistanceEnums kMeasures[] = {Euclidean, SquaredEuclidean, Manhattan, Pearson, SquaredPearson};

TEST(DistanceMatrix, ReportsStorageThatIsNotThere) {
    const Matrix m = MakeMatrix(3);
    for (const int n : {-1, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(MakeMatrix(n), nullptr);
        EXPECT_EQ(m->Init(3, 1), Success);
        EXPECT_EQ(m->Init(n, 0), Failure);
        EXPECT_TRUE(std::isnan((*m)(0, 0)) && m->RowCount() == 3);
    }
}

TEST(Distances, MatchReference) {
    for (const test::Row& row : test::ReadTable("clustering/distance_matrices.csv", ',')) {
        const int n = static_cast<int>(test::Number(row.at(4)));
        const std::size_t rows = row.at(0) == "columns" ? SIZE_MAX : static_cast<std::size_t>(n);
        const Matrix m = test::Distances(test::ReadDataTable(row.at(1), rows), row.at(2), row.at(3) == "1");
        const std::vector<double> expected = test::Numbers(row.at(5));
        std::size_t next = 0;
        for (int i = 0; i < n; ++i) {
            EXPECT_EQ((*m)(i, i), 0);
            for (int j = 0; j < i; ++j)
                EXPECT_TRUE(test::IsNear((*m)(i, j), expected.at(next++), 1e-14))
                    << row[1] << " " << row[2] << " " << i << " " << j;
        }
        EXPECT_EQ(next, expected.size());
    }
}

// The distance as its definition has it, one pair at a time.
double Distance(const types::IRectangularArray<double>& data, DistanceEnums measure, int i, int j,
                const std::vector<double>& s) {
    double sum = 0;
    for (int c = 0; c < data.ColumnCount(); ++c) {
        const double d = data.At(i, c) - data.At(j, c);
        const double spread = s[static_cast<std::size_t>(c)];
        sum += measure == Manhattan ? std::abs(d) : measure >= Pearson ? d * d / (spread * spread) : d * d;
    }
    return measure == Euclidean || measure == Pearson ? std::sqrt(sum) : sum;
}

std::vector<double> Deviations(const types::IRectangularArray<double>& data) {
    std::vector<double> deviations;
    for (int c = 0; c < data.ColumnCount(); ++c) {
        std::vector<double> column(static_cast<std::size_t>(data.RowCount()));
        for (int row = 0; row < data.RowCount(); ++row)
            column[static_cast<std::size_t>(row)] = data.At(row, c);
        const double s =
            std::sqrt(v1::GetSampleVariance(column.data(), static_cast<unsigned>(column.size())));
        deviations.push_back(s == 0 ? 1 : s);
    }
    return deviations;
}

test::Table DrawTable(int rows, int columns, double scale) {
    test::Table data(types::MakeIRectangularArrayDouble(rows, columns));
    std::mt19937_64 random(3);
    std::normal_distribution<double> normal(100 * scale, 3 * scale);
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            data->Set(row, column, column == 3 ? 7 * scale : normal(random));  // one is constant
    return data;
}

// For each count of rows up to several of the groups that are computed together, by few and by many columns, in the
// library's matrix, which holds something else before, and in one of a host. Some are so small that their squares have
// few digits.
TEST(Distances, HaveTheBitsOfThePlainSum) {
    const Matrix m = MakeMatrix(3);
    for (int n = 0; n < 42; ++n) {
        const test::Table data = DrawTable(n, n % 2 == 0 ? 5 : 100, n % 3 == 0 ? 1e-153 : 1);
        const std::vector<double> s = Deviations(*data);
        for (const DistanceEnums measure : kMeasures) {
            HostMatrix host(n);
            ASSERT_EQ(CreateForClusterObservations(*data, measure, false, *m), Success);
            ASSERT_EQ(CreateForClusterObservations(*data, measure, false, host), Success);
            for (int i = 0; i < n; ++i) {
                ASSERT_EQ((*m)(i, i), 0);
                for (int j = 0; j < i; ++j) {
                    const double expected = Distance(*data, measure, i, j, s);
                    ASSERT_EQ((*m)(i, j), expected) << measure << " " << i << " " << j;
                    ASSERT_EQ(host(i, j), expected);
                }
            }
            ASSERT_EQ(m->Init(n, 7), Success);
        }
    }
}

// The products of deviations are summed in the order of the rows, of which there may be many.
TEST(Distances, BetweenVariablesHaveTheBitsOfThePlainSum) {
    for (const int n : {1, 2, 4, 8, 9, 10, 13, 16, 17, 20, 22}) {
        const int rows = n == 13 ? 256 : 40 * n - 33;
        const test::Table data = DrawTable(rows, n, 1);
        const std::vector<double> s = Deviations(*data);
        std::vector<std::vector<double>> deviations(static_cast<std::size_t>(n));
        for (int c = 0; c < n; ++c) {
            std::vector<double>& column = deviations[static_cast<std::size_t>(c)];
            for (int row = 0; row < rows; ++row)
                column.push_back(data->At(row, c));
            const double mean = v1::GetSampleMean(column.data(), static_cast<unsigned>(rows));
            for (double& x : column)
                x -= mean;
        }
        const Matrix m = MakeMatrix(1);
        HostMatrix host(n);
        ASSERT_EQ(CreateForClusterVariables(*data, true, *m), Success);
        ASSERT_EQ(CreateForClusterVariables(test::HostTable(*data), true, host), Success);
        const double root = std::sqrt(rows - 1.0);
        for (std::size_t j = 0; j < deviations.size(); ++j) {
            for (std::size_t i = 0; i < j; ++i) {
                const double sum = std::inner_product(deviations[i].begin(), deviations[i].end(),
                                                      deviations[j].begin(), 0.0);
                const double expected = 1 - std::abs(sum / (root * s[j] * s[i] * root));
                ASSERT_EQ((*m)(static_cast<int>(j), static_cast<int>(i)), expected) << n << " " << j;
                ASSERT_EQ(host(static_cast<int>(j), static_cast<int>(i)), expected);
            }
        }
    }
}

TEST(Distances, FailWhereTheHostsMatrixDoes) {
    HostMatrix host(2);
    host.initStatus = Failure;
    EXPECT_EQ(CreateForClusterVariables(*MakeTable({{1, 2}}), false, host), Failure);
    EXPECT_EQ(CreateForClusterObservations(*DrawTable(3, 5, 1), Manhattan, true, host), Failure);
    EXPECT_EQ(CreateForClusterObservations(*MakeTable({}), Manhattan, true, host), Success);
}

}  // namespace
}  // namespace zul::dax::clustering
