#include "distributions/histogram.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <limits>
#include <string>

#include "output/text.h"

namespace analyze {
namespace {

constexpr int kEndDigits = 5;
constexpr int kExpectedDigits = 5;
// The deviates in the farthest hundredth on either side do not decide on the width of the cells.
constexpr double kHidden = 0.01;
constexpr int kRows = 20;
constexpr int kBarLength = 40;
constexpr int kEndWidth = 14;
constexpr int kCountWidth = 10;

// Cells of equal width from `start` on. Those of a discrete family hold whole numbers, both ends included.
struct Cells {
    double start;
    double width;
    int count;
};

Cells MakeCells(const Numbers& sorted, bool discrete) {
    const auto hidden = static_cast<std::size_t>(kHidden * static_cast<double>(sorted.size()));
    const double low = sorted[hidden];
    const double high = sorted[sorted.size() - 1 - hidden];
    if (discrete) {
        const double width = std::ceil((high - low + 1) / kRows);
        return {low, width, static_cast<int>(std::ceil((high - low + 1) / width))};
    }
    const double width = (high - low) / kRows;
    return low + width > low ? Cells{low, width, kRows} : Cells{low, 1, 1};
}

struct Row {
    std::string from;
    std::string to;
    double observed;  // counts
    double expected;
};

std::vector<Row> MakeRows(const Family& family, const Numbers& sorted, const Numbers& parameters) {
    const Cells cells = MakeCells(sorted, family.discrete);
    const auto size = static_cast<double>(sorted.size());
    // Up to the end of a cell; whole numbers are centred, so that no number is an end.
    const double shift = family.discrete ? 0.5 : 0;
    const auto text = [&](double end) {
        return family.discrete ? AsGiven(end) : Significant(end, kEndDigits);
    };
    if (cells.count == 1) return {{text(sorted.front()), text(sorted.back()), size, size}};
    std::vector<Row> rows;
    for (int i = 0; i < cells.count; ++i) {
        const bool isFirst = i == 0;
        const bool isLast = i == cells.count - 1;
        const double from = cells.start + i * cells.width;
        const double to = from + cells.width;
        const auto first = isFirst ? sorted.begin() : std::ranges::upper_bound(sorted, from - shift);
        const auto last = isLast ? sorted.end() : std::ranges::upper_bound(sorted, to - shift);
        const double below = isFirst ? 0 : family.cdf(from - shift, parameters, false);
        const double upTo = isLast ? 1 : family.cdf(to - shift, parameters, false);
        rows.push_back({isFirst ? "" : text(from), isLast ? "" : text(family.discrete ? to - 1 : to),
                        static_cast<double>(last - first), size * (upTo - below)});
    }
    return rows;
}

// A bar as long as what was observed, and a mark at what is expected.
std::string Bar(double observed, double expected, double largest) {
    const auto place = [largest](double value) {
        const double share = value > 0 ? std::min(value / largest, 1.0) : 0;
        return static_cast<std::size_t>(std::lround(share * kBarLength));
    };
    std::string bar(kBarLength + 1, ' ');
    std::fill_n(bar.begin(), place(observed), '#');
    bar[place(expected)] = '|';
    return bar.substr(0, bar.find_last_not_of(' ') + 1);
}

}  // namespace

void PrintHistogram(std::ostream& out, const Family& family, const Numbers& sorted,
                    const Numbers& parameters) {
    const std::vector<Row> rows = MakeRows(family, sorted, parameters);
    double largest = std::numeric_limits<double>::min();
    for (const Row& row : rows)
        largest = std::max({largest, row.observed, row.expected});
    out << std::setw(kEndWidth) << (family.discrete ? "from" : "above") << std::setw(kEndWidth) << "up to"
        << std::setw(kCountWidth) << "count" << std::setw(kCountWidth) << "expected" << '\n';
    for (const Row& row : rows)
        out << std::setw(kEndWidth) << row.from << std::setw(kEndWidth) << row.to << std::setw(kCountWidth)
            << AsGiven(row.observed) << std::setw(kCountWidth) << Significant(row.expected, kExpectedDigits)
            << "  " << Bar(row.observed, row.expected, largest) << '\n';
}

}  // namespace analyze
