#include "hypothesis/variances/levene.h"

#include <cmath>

#include "descriptive/compensated_sum.h"
#include "descriptive/sorting.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul::hypothesis {

using descriptive::CompensatedSum;

int MeasureDistances(const double* data, unsigned n, Distances* distances) {
    const descriptive::SortedValues sorted(data, n);
    if (!sorted.Obtained()) return kOutOfMemory;
    const double low = sorted.Items()[(n - 1) / 2];
    const double high = sorted.Items()[n / 2];
    // From both middle values, so that the two have the same distance to the last bit.
    const auto distance = [=](double x) { return std::abs((x - low) / 2 + (x - high) / 2); };
    CompensatedSum sum;
    bool areEqual = true;
    for (unsigned i = 0; i < n; ++i) {
        sum.Add(distance(data[i]));
        areEqual = areEqual && distance(data[i]) == distance(data[0]);
    }
    const double mean = sum.Value() / n;
    CompensatedSum squares;
    for (unsigned i = 0; i < n; ++i) {
        const double d = distance(data[i]) - mean;
        squares.Add(d * d);
    }
    *distances = {static_cast<double>(n), mean, squares.Value(), areEqual};
    return kSuccess;
}

LeveneTest CompareDistances(const Distances* groups, std::size_t count) {
    CompensatedSum n;
    CompensatedSum sum;
    CompensatedSum within;
    bool hasSpread = false;
    for (std::size_t i = 0; i < count; ++i) {
        n.Add(groups[i].n);
        sum.Add(groups[i].n * groups[i].mean);
        within.Add(groups[i].sumOfSquares);
        hasSpread = hasSpread || !groups[i].areEqual;
    }
    const double mean = sum.Value() / n.Value();
    CompensatedSum between;
    for (std::size_t i = 0; i < count; ++i) {
        const double d = groups[i].mean - mean;
        between.Add(groups[i].n * d * d);
    }
    const double df1 = static_cast<double>(count) - 1;
    const double df2 = n.Value() - static_cast<double>(count);
    const double statistic = (between.Value() / df1) / (within.Value() / df2);
    return {hasSpread ? statistic : frame::kQuietNaN, df1, df2};
}

}  // namespace zul::hypothesis
