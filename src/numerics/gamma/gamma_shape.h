// A shape of the incomplete gamma functions with all that depends on it alone: GammaShape for any shape,
// kOneHalf for the one on which the error function and the normal distribution rest. Both give the same
// members, so that the functions are templates over the shape.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cmath>
#include <cstddef>

#include "elementary/logarithm.h"
#include "numerics/gamma/gamma.h"
#include "numerics/gamma/one_half_table.h"
#include "numerics/limits.h"

namespace zul::numerics {

// The argument up to which the incomplete gamma pair is computed from the lower side; near the median.
double GammaMedianSplit(double a);

// A value that is computed on first need and kept.
class Lazy {
public:
    template <typename Compute>
    double Get(Compute compute) {
        if (!known_) {
            value_ = compute();
            // A trap may end it anywhere: the compiler must not tell first that the value is known.
            std::atomic_signal_fence(std::memory_order_release);
            known_ = true;
        }
        return value_;
    }

private:
    double value_ = 0;
    bool known_ = false;
};

// The number of terms down to the first one below kSeriesTolerance in the series of the lower side: t = 1,
// then t = t x / (n + a) for n = 1, 2, ... Above kTermLimit: the series failed.
double CountSeriesTerms(double a, double x);

// Products closer to the tolerance than these may be on the other side of it in the order of "gamma_df". They differ by
// less than a relative 1e-10 over all terms.
inline constexpr double kSurelyAbove = kSeriesTolerance * (1 + 1e-8);
inline constexpr double kSurelyBelow = kSeriesTolerance * (1 - 1e-8);

// CountSeriesTerms of one shape, looked up: the sum, whose terms wait for one another, then begins at once, and the
// processor knows how its loop will end. Made when a shape has met some arguments, as it costs that many counts.
class SeriesTermTable {
public:
    void Make(double a, double medianSplit);
    // Whether there is a table, and the argument is within it.
    bool Holds(double x) const { return x < end_; }
    double TermsAt(double a, double x) const;

private:
    // The terms of a shape of about 60 at its median.
    static constexpr int kMostTerms = 64;
    static constexpr int kCells = 64;
    double end_ = 0;
    // The rest is for an end above 0.
    double cellsPerUnit_ = 0;
    // A little above the arguments from which on there are more than so many terms.
    double starts_[kMostTerms + 1];
    // A number of terms that the arguments of a cell take at the least.
    unsigned char leastTerms_[kCells + 1];
};

// The fractional shape b in [0, 1) of UpperGammaSmall.
class FractionalShape {
public:
    // cppcheck-suppress uninitMemberVar ; the ratios are filled as they are needed
    explicit FractionalShape(double b) : b_(b) {}
    double Value() const { return b_; }
    // (1 - gamma(1 + b)) / b. b outside [0, 1]: DBL_MAX and errno EDOM.
    double GammaQuotient() const;
    // (n + b - 1) / (n + b) for 2 <= n <= kSeriesLimit.
    double TermRatio(int n) const {
        for (; ratiosKnown_ < n; ++ratiosKnown_) {
            const double k = ratiosKnown_ + 1;
            ratios_[ratiosKnown_ + 1] = (k + b_ - 1) / (k + b_);
        }
        return ratios_[n];
    }
    // The most terms of UpperGammaSmall's series.
    static constexpr int kSeriesLimit = 40;
    // A number of terms that UpperGammaSmall's series takes at x at the least.
    static constexpr int SureTerms(double) { return 1; }
    // A number of pairs of convergents that the continued fraction is likely to need at x >= 1: the fewest it has
    // needed nearby.
    int ExpectedPairs(double x) const { return std::max<int>(1, fewestPairs_[CellOf(x)]); }
    void NotePairs(double x, int pairs) const {
        unsigned char& fewest = fewestPairs_[CellOf(x)];
        if (fewest == 0 || pairs < fewest) fewest = static_cast<unsigned char>(pairs);
    }

private:
    // The cells are those of 1 / x.
    static constexpr int kPairCells = 64;
    static std::size_t CellOf(double x) { return static_cast<std::size_t>(kPairCells / x); }

    double b_;
    mutable unsigned char fewestPairs_[kPairCells + 1] = {};
    mutable Lazy gammaQuotient_;
    mutable int ratiosKnown_ = 1;
    mutable double ratios_[kSeriesLimit + 1];
};

// Built from the shape a, which converts by itself. What the incomplete gamma functions need of the shape
// alone is computed on first need and kept, so an object serves one thread at a time.
class GammaShape {
public:
    // cppcheck-suppress uninitMemberVar ; the table is made when it pays
    GammaShape(double a)  // NOLINT: a shape is a number
        : a_(a), fraction_(std::isfinite(a) ? a - std::floor(a) : 0) {}
    double Value() const { return a_; }
    double Log() const {
        return log_.Get([this] { return elementary::Log(a_); });
    }
    double StirlingTerm() const {
        return stirlingTerm_.Get([this] { return numerics::StirlingTerm(a_); });
    }
    double Gamma() const {
        return gamma_.Get([this] { return GammaFn(a_); });
    }
    double LogGamma() const {
        return logGamma_.Get([this] { return LogGammaFn(a_); });
    }
    double MedianSplit() const {
        return medianSplit_.Get([this] { return GammaMedianSplit(a_); });
    }
    // As numerics::InverseGammaScale.
    double InverseGammaScale() const;
    double SeriesTerms(double x) const {
        return seriesTerms_.Holds(x) ? seriesTerms_.TermsAt(a_, x) : CountedSeriesTerms(x);
    }
    const FractionalShape& Fraction() const { return fraction_; }

private:
    double CountedSeriesTerms(double x) const;
    double a_;
    FractionalShape fraction_;
    mutable Lazy log_;
    mutable Lazy stirlingTerm_;
    mutable Lazy gamma_;
    mutable Lazy logGamma_;
    mutable Lazy medianSplit_;
    mutable Lazy inverseGammaScale_;
    mutable int counted_ = 0;
    mutable SeriesTermTable seriesTerms_;
};

// The shape 1/2: its terms are computed when the library is loaded, by the same routines.
//
// So is how many terms the series take at x, and about how many pairs the continued fraction. Looking the
// number up is faster than finding it on the way, mostly because the processor then knows how a loop will end
// long before its values do, and starts on what comes after it.
class OneHalf {
public:
    OneHalf();

    static constexpr double Value() { return 0.5; }
    double Log() const { return log_; }
    double StirlingTerm() const { return stirlingTerm_; }
    double Gamma() const { return gamma_; }
    double LogGamma() const { return logGamma_; }
    double MedianSplit() const { return medianSplit_; }
    // For x on the lower side.
    double SeriesTerms(double x) const {
        int terms = leastTerms_[static_cast<std::size_t>(x * kCellsPerUnit)];
        while (x >= termStarts_[static_cast<std::size_t>(terms)])
            ++terms;
        return terms;
    }

    const OneHalf& Fraction() const { return *this; }
    double GammaQuotient() const { return gammaQuotient_; }
    double TermRatio(int n) const { return termRatios_[static_cast<std::size_t>(n)]; }
    int SureTerms(double x) const { return sureTerms_[static_cast<std::size_t>(x * kCellsPerUnit)]; }
    int ExpectedPairs(double x) const { return leastPairs_[static_cast<std::size_t>(kPairCells / x)]; }
    static void NotePairs(double, int) {}

    // Arguments of the pair at all of which it takes the same branch and the same number of terms.
    struct Stretch {
        double low = 1;
        double high = 0;
        bool Holds(double x) const { return x > low && x < high; }
    };
    // That around x, at which the pair took so many terms. A relative kStretchMargin at its ends is left out, within which
    // rounding may decide; an empty one also stands for what is beyond kLargestStretched.
    const Stretch& StretchOf(double x, int count) const {
        const auto branch = static_cast<std::size_t>(x > medianSplit_) + static_cast<std::size_t>(x > 1);
        return stretches_[branch][static_cast<std::size_t>(count)];
    }
    static constexpr double kStretchMargin = 1e-5;
    static constexpr double kLargestStretched = 30;

    OneHalfTable Table() const;

private:
    void FindStretches();
    double log_;
    double stirlingTerm_;
    double gamma_;
    double logGamma_;
    double medianSplit_;
    double gammaQuotient_;
    std::array<double, FractionalShape::kSeriesLimit + 1> termRatios_{};
    // The smallest x with more than i terms, for all terms of the lower side. Exact, since the rounded terms,
    // too, grow with x; and the terms at the lower end of each cell of the lower side.
    static constexpr int kCellsPerUnit = 256;
    std::array<double, 13> termStarts_;
    std::array<unsigned char, kCellsPerUnit / 4> leastTerms_;
    // The terms of UpperGammaSmall one cell below, which leaves no doubt about rounding.
    std::array<unsigned char, kCellsPerUnit> sureTerms_;
    // The pairs of the continued fraction at the upper end of each cell; the cells are those of 1 / x.
    static constexpr int kPairCells = 256;
    std::array<unsigned char, kPairCells + 1> leastPairs_;
    // Of the lower series, UpperGammaSmall and the continued fraction, by the terms or pairs.
    std::array<std::array<Stretch, 81>, 3> stretches_{};
};

extern const OneHalf kOneHalf;

}  // namespace zul::numerics
