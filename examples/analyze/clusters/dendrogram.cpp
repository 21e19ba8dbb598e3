#include "clusters/dendrogram.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <numeric>

#include "output/text.h"

namespace analyze {
namespace {

using Steps = zul::dax::types::IReadableVector<zul::dax::clustering::ClusterStep>;

constexpr std::size_t kShortestLabel = 6;
constexpr std::size_t kLongestLabel = 20;
constexpr std::size_t kTreeWidth = 70;
constexpr int kScaleDigits = 6;

std::size_t Index(int number) {
    return static_cast<std::size_t>(number);
}

// The objects in an order in which those of each cluster stand together.
std::vector<std::size_t> OrderObjects(const Steps& steps) {
    const std::size_t n = steps.size() + 1;
    std::vector<std::size_t> next(n, n);
    std::vector<std::size_t> last(n);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t s = 0; s < steps.size(); ++s) {
        const std::size_t first = Index(steps[s].cluster1);
        const std::size_t second = Index(steps[s].cluster2);
        next[last[first]] = second;
        last[first] = last[second];
    }
    std::vector<std::size_t> order;
    for (std::size_t object = 0; object < n; object = next[object])
        order.push_back(object);
    return order;
}

// The end of what is drawn of a cluster.
struct Tip {
    std::size_t row;
    std::size_t column;
};

double MaxDistance(const Steps& steps) {
    double maximum = 0;
    for (std::size_t s = 0; s < steps.size(); ++s)
        maximum = std::max(maximum, steps[s].distance);
    return maximum;
}

std::size_t ColumnOf(double distance, double maximum) {
    if (!(distance > 0) || !std::isfinite(distance / maximum)) return 0;
    return static_cast<std::size_t>(std::lround(distance / maximum * (kTreeWidth - 1)));
}

Tip Join(std::vector<std::string>& lines, const Tip& upper, const Tip& lower, std::size_t atLeast) {
    const std::size_t column = std::max({upper.column, lower.column, atLeast});
    for (const Tip& tip : {upper, lower}) {
        const auto line = lines[tip.row].begin();
        std::replace(line + static_cast<std::ptrdiff_t>(tip.column),
                     line + static_cast<std::ptrdiff_t>(column), ' ', '-');
    }
    for (std::size_t row = upper.row; row <= lower.row; ++row)
        lines[row][column] = row == upper.row || row == lower.row ? '+' : '|';
    const std::size_t middle = (upper.row + lower.row) / 2;
    lines[middle][column] = '+';
    return {middle, column};
}

}  // namespace

void DrawDendrogram(std::ostream& out, const Steps& steps, const std::vector<std::string>& labels) {
    const std::vector<std::size_t> order = OrderObjects(steps);
    const double maximum = MaxDistance(steps);
    std::vector<std::string> lines(order.size(), std::string(kTreeWidth, ' '));
    std::vector<Tip> tips(order.size());
    for (std::size_t row = 0; row < order.size(); ++row)
        tips[order[row]] = {row, 0};
    for (std::size_t s = 0; s < steps.size(); ++s) {
        Tip& tip = tips[Index(steps[s].cluster1)];
        tip = Join(lines, tip, tips[Index(steps[s].cluster2)], ColumnOf(steps[s].distance, maximum));
    }
    std::size_t longest = kShortestLabel;
    for (const std::string& label : labels)
        longest = std::max(longest, std::min(label.size(), kLongestLabel));
    const int width = static_cast<int>(longest);
    out << std::right << std::setw(width) << "object"
        << " 0" << std::setw(kTreeWidth - 1) << Significant(maximum, kScaleDigits) << '\n';
    for (std::size_t row = 0; row < order.size(); ++row)
        out << std::setw(width) << OneLine(ShortenedToEnd(labels[order[row]], kLongestLabel)) << ' '
            << lines[row].substr(0, lines[row].find_last_not_of(' ') + 1) << '\n';
}

}  // namespace analyze
