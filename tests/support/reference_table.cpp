#include "support/reference_table.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace zul::test {

std::vector<Row> ReadTable(const std::string& file, char separator) {
    std::ifstream in(ZUL_TEST_DATA_DIR "/" + file);
    std::vector<Row> rows;
    std::string line;
    std::getline(in, line);
    while (std::getline(in, line)) {
        Row row;
        std::istringstream cells(line);
        for (std::string cell; std::getline(cells, cell, separator);)
            row.push_back(cell);
        rows.push_back(row);
    }
    if (rows.empty()) throw std::runtime_error("no rows in " + file);
    return rows;
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

}  // namespace zul::test
