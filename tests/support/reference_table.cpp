#include "support/reference_table.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace zul::test {

namespace {

Row Split(const std::string& line, char separator) {
    Row row;
    std::istringstream cells(line);
    for (std::string cell; std::getline(cells, cell, separator);)
        row.push_back(cell);
    return row;
}

std::vector<std::string> ReadLines(const std::string& file) {
    std::ifstream in(ZUL_TEST_DATA_DIR "/" + file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    if (lines.size() < 2) throw std::runtime_error("no rows in " + file);
    return lines;
}

}  // namespace

std::vector<Row> ReadTable(const std::string& file, char separator) {
    std::vector<Row> rows;
    for (const std::string& line : ReadLines(file))
        rows.push_back(Split(line, separator));
    rows.erase(rows.begin());
    return rows;
}

Row ReadHeading(const std::string& file, char separator) {
    return Split(ReadLines(file).front(), separator);
}

std::vector<double> ReadSample(const std::string& name) {
    if (name.front() == '=') return Numbers(name.substr(1));
    std::vector<double> values;
    for (const Row& row : ReadTable("samples/" + name + ".csv", ','))
        values.push_back(Number(row.at(0)));
    return values;
}

std::vector<double> Numbers(const std::string& text) {
    std::vector<double> values;
    std::istringstream words(text);
    for (std::string word; words >> word;)
        values.push_back(Number(word));
    return values;
}

double Number(const std::string& text) {
    double value = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || rest != end) throw std::runtime_error("not a number: " + text);
    return value;
}

testing::AssertionResult IsNear(double actual, double expected, double tolerance) {
    const bool same = std::isnan(expected)   ? std::isnan(actual)
                      : std::isinf(expected) ? actual == expected
                                             : std::abs(actual - expected) <= tolerance * std::abs(expected);
    if (same) return testing::AssertionSuccess();
    return testing::AssertionFailure()
           << std::hexfloat << actual << std::defaultfloat << " = " << actual << " instead of " << expected
           << ", relative error " << std::abs(actual / expected - 1) << " above " << tolerance;
}

void ExpectExact(const std::vector<Exact>& rows, double tolerance) {
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_TRUE(IsNear(rows[i].actual, rows[i].expected, tolerance)) << "row " << i;
}

}  // namespace zul::test
