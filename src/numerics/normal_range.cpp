#include "numerics/normal_range.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <numbers>
#include <utility>

#include "elementary/lanes/columns.h"

namespace zul::numerics {
namespace {

constexpr double kReciprocalSqrtTwoPi = std::numbers::inv_sqrtpi / std::numbers::sqrt2;

// Two neighbouring points where the compiler has vectors, which it does not find in loops whose arithmetic may trap.
#if defined(__GNUC__)
using Points = double __attribute__((vector_size(16)));
#else
using Points = double;
#endif
constexpr std::size_t kLanes = sizeof(Points) / sizeof(double);

// As many points are summed together: their vectors stay in registers.
constexpr std::size_t kBlock = 16;
constexpr std::size_t kVectors = kBlock / kLanes;

inline Points Load(const double* from) {
    Points values;
    std::memcpy(&values, from, sizeof values);
    return values;
}

inline void Store(double* to, Points values) {
    std::memcpy(to, &values, sizeof values);
}

// step(0), step(1), ... for the vectors of a block, written out: an array that a loop walks is no register.
template <typename Step>
inline void ForEachVector(Step step) {
    [&]<std::size_t... kAt>(std::index_sequence<kAt...>) {
        (step(kAt), ...);
    }
    (std::make_index_sequence<kVectors>());
}

// How finely the integrals are summed, and how long the series must be that reach half a step.
struct Fineness {
    int perUnit;
    int terms;
    int last;  // the largest value that counts for small widths
};

// The more values, the narrower the integrand.
Fineness FinenessFor(unsigned count) {
    if (count <= 20) return {4, 20, 8};
    if (count <= 1000) return {8, 16, 8};
    return {16, 13, 12};
}

// The tables at the points of a block.
struct Block {
    const double* series;
    std::size_t stride;  // from one term to the next
    int terms;
    const double* reciprocals;
    const double* weights;
};

// Adds the integrand at each point to its sum.
inline void AddTo(Points (&sums)[kVectors], const Block& block, double displacement, unsigned power) {
    const double* term = block.series + static_cast<std::size_t>(block.terms - 1) * block.stride;
    Points ratio[kVectors];
    ForEachVector([&](std::size_t k) { ratio[k] = Load(term + k * kLanes); });
    for (int n = 1; n < block.terms; ++n) {
        term -= block.stride;
        ForEachVector([&](std::size_t k) { ratio[k] = ratio[k] * displacement + Load(term + k * kLanes); });
    }
    ForEachVector([&](std::size_t k) { ratio[k] = ratio[k] * Load(block.reciprocals + k * kLanes); });
    // 1 - (1 - ratio)^power by the bits of the power, from positive terms alone.
    Points tail[kVectors];
    ForEachVector([&](std::size_t k) { tail[k] = ratio[k]; });
    for (unsigned bit = std::bit_floor(power) / 2; bit != 0; bit /= 2) {
        ForEachVector([&](std::size_t k) { tail[k] = tail[k] * (2.0 - tail[k]); });
        if ((power & bit) != 0)
            ForEachVector([&](std::size_t k) { tail[k] = tail[k] + ratio[k] * (1.0 - tail[k]); });
    }
    ForEachVector([&](std::size_t k) { sums[k] = sums[k] + Load(block.weights + k * kLanes) * tail[k]; });
}

}  // namespace

NormalRange::NormalRange(unsigned count) : power_(count - 1) {
    const Fineness fineness = FinenessFor(count);
    perUnit_ = fineness.perUnit;
    terms_ = fineness.terms;
    lastMaximum_ = fineness.last * perUnit_;
    stride_ = At(kGreatest * perUnit_, kLeast) + 2;
    Tails tails;
    const std::size_t n = At(0, kLeast) + 1;
    for (std::size_t i = 0; i < n; ++i)
        tails[i] = static_cast<double>(i) / perUnit_ / std::numbers::sqrt2;
    elementary::CurrentColumns().erfc(tails.data(), tails.data(), n);
    for (std::size_t i = 0; i < n; ++i)
        tails[i] *= 0.5;
    FillSeries(tails);
    FillWeights(tails);
}

// The derivatives of phi by the recurrence of Hermite's polynomials:
// c[n + 1] = -(x c[n] + (n - 1) / n c[n - 1]) / (n + 1).
void NormalRange::FillSeries(const Tails& tails) {
    std::array<double, kPoints> points;
    std::array<double, kPoints> densities;
    const int origin = kLeast * perUnit_;
    for (std::size_t i = 0; i < stride_; ++i) {
        const int point = static_cast<int>(i) + origin;
        const double tail = tails[static_cast<std::size_t>(std::abs(point))];
        points[i] = static_cast<double>(point) / perUnit_;
        densities[i] = -0.5 * points[i] * points[i];
        series_[i] = point < 0 ? tail : 1 - tail;
    }
    elementary::CurrentColumns().exp(densities.data(), densities.data(), stride_);
    for (std::size_t i = 0; i < stride_; i += kLanes) {
        const Points x = Load(&points[i]);
        Points before = Points{};
        Points c = Load(&densities[i]) * kReciprocalSqrtTwoPi;
        Store(&series_[i + stride_], c);
        for (int n = 1; n < terms_ - 1; ++n) {
            const double ratio = (n - 1.0) / n;
            const double divisor = -1.0 / (n + 1);
            const Points next = (x * c + ratio * before) * divisor;
            before = c;
            c = next;
            Store(&series_[i + static_cast<std::size_t>(n + 1) * stride_], c);
        }
    }
}

void NormalRange::FillWeights(const Tails& tails) {
    const std::size_t zero = At(0, kLeastMaximum);
    const std::size_t n = At(kGreatestMaximum * perUnit_, kLeastMaximum) + 1;
    const std::size_t farthest = At(0, kLeast);
    std::array<double, kMaxima> logs;
    for (std::size_t i = 0; i < n; ++i) {
        const bool below = i < zero;
        const std::size_t distance = below ? zero - i : i - zero;
        const double tail = distance <= farthest ? tails[distance] : 0;
        logs[i] = below ? tail : -tail;
        reciprocals_[i] = 1 / (below ? tail : 1 - tail);
    }
    const elementary::Columns& columns = elementary::CurrentColumns();
    columns.log(logs.data(), logs.data(), zero);
    columns.log1p(&logs[zero], &logs[zero], n - zero);
    for (std::size_t i = 0; i < n; ++i) {
        const double z = (static_cast<double>(i) - static_cast<double>(zero)) / perUnit_;
        logs[i] = power_ * logs[i] - 0.5 * z * z;
    }
    columns.exp(weights_.data(), logs.data(), n);
    const double factor = (power_ + 1.0) * kReciprocalSqrtTwoPi / perUnit_;
    for (std::size_t i = 0; i < n; ++i)
        weights_[i] *= factor;
    // The factor of the integrand that depends on w grows with z, so what is negligible here is so for each w.
    constexpr double kNegligible = 1e-18;
    const double least = kNegligible * *std::max_element(weights_.data(), weights_.data() + n);
    std::size_t first = 0;
    while (!(weights_[first] >= least))
        ++first;
    firstMaximum_ = static_cast<int>(first) + kLeastMaximum * perUnit_;
}

double NormalRange::UpperTail(double w) const {
    // The integrand is largest near w / 2, and its logarithm falls from there like the square.
    constexpr double kReach = 6;
    constexpr double kLongestBlock = 4;
    constexpr double kWidest = 2 * (kGreatestMaximum - kLongestBlock - kReach);
    if (w > kWidest) return 0;
    const double steps = w * perUnit_;
    const int shift = static_cast<int>(std::floor(steps + 0.5));
    // Phi(z - w) is its series about z less the nearest multiple of the step.
    const double displacement = (shift - steps) / perUnit_;
    const int first = std::max({firstMaximum_, kLeast * perUnit_ + shift,
                                static_cast<int>(std::floor((w / 2 - kReach) * perUnit_))});
    const int last = std::max(lastMaximum_, static_cast<int>((w / 2 + kReach) * perUnit_));
    Points sums[kVectors] = {};
    for (int z = first; z <= last; z += static_cast<int>(kBlock)) {
        const std::size_t maximum = At(z, kLeastMaximum);
        const Block block{&series_[At(z - shift, kLeast)], stride_, terms_, &reciprocals_[maximum],
                          &weights_[maximum]};
        AddTo(sums, block, displacement, power_);
    }
    double values[kBlock];
    ForEachVector([&](std::size_t k) { Store(values + k * kLanes, sums[k]); });
    double sum = 0;
    for (const double value : values)
        sum += value;
    return sum;
}

}  // namespace zul::numerics
