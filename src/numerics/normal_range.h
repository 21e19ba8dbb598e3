// The range of a number of independent standard normal values.
#pragma once

#include <array>
#include <cstddef>

namespace zul::numerics {

// Built for one number of values and then asked for many widths. The tables take 80 kilobytes: where the caller has
// it, since no p-value allocates.
class NormalRange {
public:
    explicit NormalRange(unsigned count);

    // P(R >= w), w >= 0, to 3e-12 of itself down to 1e-14. Source: the integral over the largest value z,
    //     count Int phi(z) Phi(z)^(count - 1) (1 - (1 - Phi(z - w) / Phi(z))^(count - 1)) dz,
    // of M. D. Copenhaver, B. Holland, Computation of the distribution of the maximum studentized range statistic,
    // 1988, by the trapezoidal rule: L. N. Trefethen, J. A. C. Weideman, The exponentially convergent trapezoidal
    // rule, 2014.
    double UpperTail(double w) const;

private:
    // The points of the grids are whole multiples of the step 1 / perUnit_.
    static constexpr int kMostPerUnit = 16;
    static constexpr int kMostCells = 13;  // terms at so many points to a unit
    // Those of Phi, which is 0 below all of them as far as any sum can tell.
    static constexpr int kLeast = -26;
    static constexpr int kGreatest = 14;
    // Those of the largest value.
    static constexpr int kLeastMaximum = -8;
    static constexpr int kGreatestMaximum = 38;
    static constexpr std::size_t kPoints = (kGreatest - kLeast) * kMostPerUnit + 2;
    static constexpr std::size_t kMaxima = (kGreatestMaximum - kLeastMaximum) * kMostPerUnit + 1;
    static constexpr std::size_t kTails = -kLeast * kMostPerUnit + 1;
    using Tails = std::array<double, kTails>;

    void FillSeries(const Tails& tails);
    void FillWeights(const Tails& tails);

    std::size_t At(int point, int least) const { return static_cast<std::size_t>(point - least * perUnit_); }

    unsigned power_;    // count - 1
    int perUnit_;       // points
    int terms_;         // of the series
    int firstMaximum_;  // what is below adds nothing
    int lastMaximum_;   // what is above adds nothing to the sums for small w
    std::size_t stride_;
    std::array<double, kMostCells * kPoints> series_;  // of Phi about each point, term by term
    std::array<double, kMaxima> weights_;              // count phi Phi^(count - 1) / perUnit
    std::array<double, kMaxima> reciprocals_;          // 1 / Phi
};

}  // namespace zul::numerics
