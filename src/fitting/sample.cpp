#include "fitting/sample.h"

#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdint>

#include "elementary/lanes/columns.h"
#include "elementary/logarithm.h"

namespace zul::fitting {

bool ReadSample(const double* data, unsigned n, unsigned fewest, Support support, Sample* sample) {
    if (n < fewest) return false;
    double smallest = data[0];
    double largest = data[0];
    bool isFinite = true;
    for (unsigned i = 0; i < n; ++i) {
        isFinite = isFinite && std::isfinite(data[i]);
        smallest = std::min(smallest, data[i]);
        largest = std::max(largest, data[i]);
    }
    *sample = {data, n, smallest, largest};
    if (!isFinite) return false;
    switch (support) {
        case Support::Line:
            return true;
        case Support::FromZero:
            return smallest >= 0;
        case Support::AboveZero:
            return smallest > 0;
    }
    return false;
}

namespace {

// The largest power of two that is not above a positive finite range.
double UnitOf(double range) {
    constexpr std::uint64_t kExponent = 0x7FF0'0000'0000'0000;
    constexpr double kRaise = 0x1p60;
    if (range < DBL_MIN) return UnitOf(range * kRaise) / kRaise;
    return std::bit_cast<double>(std::bit_cast<std::uint64_t>(range) & kExponent);
}

}  // namespace

Column DistancesFrom(const Sample& sample, double origin) {
    Column column{std::vector<double>(sample.n), origin, 1};
    // Halves where the range itself is beyond the doubles.
    const bool isHuge = !std::isfinite(sample.largest - sample.smallest);
    const double factor = isHuge ? 0.5 : 1;
    if (isHuge)
        column.unit = 0x1p1023;
    else if (!sample.IsConstant())
        column.unit = UnitOf(sample.largest - sample.smallest);
    const double unit = column.unit * factor;
    const double from = origin * factor;
    for (std::size_t i = 0; i < sample.n; ++i)
        column.values[i] = (sample.data[i] * factor - from) / unit;
    return column;
}

Column Logarithms(const Sample& sample) {
    const double largest = sample.largest;
    Column column{std::vector<double>(sample.n), elementary::Log(largest), 1};
    std::vector<double>& y = column.values;
    const elementary::Columns& columns = elementary::CurrentColumns();
    if (sample.smallest >= largest / 2) {
        for (std::size_t i = 0; i < sample.n; ++i)
            y[i] = (sample.data[i] - largest) / largest;
        columns.log1p(y.data(), y.data(), sample.n);
    } else {
        columns.log(y.data(), sample.data, sample.n);
        for (double& value : y)
            value -= column.origin;
    }
    column.unit = UnitOf(-*std::min_element(y.begin(), y.end()));
    for (double& value : y)
        value /= column.unit;
    return column;
}

double MeanOf(const std::vector<double>& values) {
    return SumOf(values.size(), [&](std::size_t i) { return values[i]; }) /
           static_cast<double>(values.size());
}

double SquaresAround(const std::vector<double>& values, double mean) {
    const auto distance = [&](std::size_t i) { return values[i] - mean; };
    const double rest = SumOf(values.size(), distance);
    const double squares = SumOf(values.size(), [&](std::size_t i) { return distance(i) * distance(i); });
    return squares - rest * rest / static_cast<double>(values.size());
}

}  // namespace zul::fitting
