// Reading of tests/data, and the comparisons that its tables ask for.
#pragma once

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace zul {

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInf = std::numeric_limits<double>::infinity();

}  // namespace zul

namespace zul::test {

using Row = std::vector<std::string>;

// The rows of a table without its heading. A file that cannot be read, or that is empty, throws.
std::vector<Row> ReadTable(const std::string& file, char separator);

// The heading of a table.
Row ReadHeading(const std::string& file, char separator);

// The values of samples/<name>.csv; "=1 2 3" stands for the values themselves.
std::vector<double> ReadSample(const std::string& name);

// Numbers separated by blanks.
std::vector<double> Numbers(const std::string& text);

// "nan", "inf", "-inf" and decimals.
double Number(const std::string& text);

// Calls check(row) for the numbers of each row, which stands in the trace of what fails.
template <typename Check>
void ForEachRow(const std::string& file, Check check) {
    for (const Row& cells : ReadTable(file, ',')) {
        SCOPED_TRACE(testing::PrintToString(cells));
        std::vector<double> row;
        for (const std::string& cell : cells)
            row.push_back(Number(cell));
        check(row);
    }
}

// |actual - expected| <= tolerance * |expected|; NaN and infinities have to be the same.
testing::AssertionResult IsNear(double actual, double expected, double tolerance);

struct Exact {
    double actual;
    double expected;  // NaN: any NaN
};

// That every row is equal, by IsNear with the tolerance.
void ExpectExact(const std::vector<Exact>& rows, double tolerance = 0);

}  // namespace zul::test
