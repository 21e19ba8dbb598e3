// The data of a fit: their check, and columns of them on a scale of their own, on which nothing overflows and close
// values keep their digits.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "descriptive/compensated_sum.h"

namespace zul::fitting {

enum class Support { Line, FromZero, AboveZero };

struct Sample {
    const double* data;
    std::size_t n;
    double smallest;
    double largest;
    bool IsConstant() const { return smallest == largest; }
};

// False: fewer values than that, one that is not finite or not in the support.
bool ReadSample(const double* data, unsigned n, unsigned fewest, Support support, Sample* sample);

// (x - origin) / unit, the unit a power of two: a range from 1 to 4, and 0 for constant data.
struct Column {
    std::vector<double> values;
    double origin = 0;
    double unit = 1;
    // The number of a value; in halves where a product could overflow that the sum does not.
    double At(double value) const {
        return unit < 0x1p1022 ? origin + unit * value : 2 * (0.5 * origin + 0.5 * unit * value);
    }
};

Column DistancesFrom(const Sample& sample, double origin);

// log(x) of positive values, the origin that of the largest: where all are within a factor of two of it by
// log1p(x / largest - 1), which tells neighbours apart. Not for constant data.
Column Logarithms(const Sample& sample);

// Calls work(begin, count) for pieces whose columns fit into the first cache.
inline constexpr std::size_t kBlock = 512;
template <typename Work>
void ForEachBlock(std::size_t n, Work work) {
    for (std::size_t begin = 0; begin < n; begin += kBlock)
        work(begin, std::min(kBlock, n - begin));
}

// The sum of term(i) for i < n: compensated over blocks, which are summed as they come.
template <typename Term>
double SumOf(std::size_t n, Term term) {
    descriptive::CompensatedSum sum;
    ForEachBlock(n, [&](std::size_t begin, std::size_t count) {
        double part = 0;
        for (std::size_t i = begin; i < begin + count; ++i)
            part += term(i);
        sum.Add(part);
    });
    return sum.Value();
}

double MeanOf(const std::vector<double>& values);
// The sum of the squared distances from that mean, less what rounding left in it.
double SquaresAround(const std::vector<double>& values, double mean);

}  // namespace zul::fitting
