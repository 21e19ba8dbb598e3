#include "numerics/gamma/gamma_shape.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <numbers>

#include "elementary/exponential.h"
#include "elementary/power.h"
#include "frame/platform.h"
#include "numerics/gamma/gamma_tails.h"
#include "numerics/gamma/incomplete_gamma_pair.h"
#include "numerics/limits.h"

namespace zul::numerics {
namespace {

double CountTermsOneByOne(double a, double x) {
    double t = 1;
    double n = 0;
    while (t >= kSeriesTolerance && n <= kTermLimit) {
        n += 1;
        t = t * x / (n + a);
    }
    return n;
}

// The smallest double in [0, 1] at which a condition holds that holds at 1 and, once true, stays true.
template <typename Condition>
double FirstWhere(Condition condition) {
    if (condition(0)) return 0;
    double lo = 0;
    double hi = 1;
    for (double middle = 0.5; middle > lo && middle < hi; middle = (lo + hi) / 2) {
        (condition(middle) ? hi : lo) = middle;
    }
    return hi;
}

}  // namespace

double GammaMedianSplit(double a) {
    constexpr double kSmallShape = 0.59;
    if (a >= kSmallShape) return a - 1.0 / 3;
    // The quotient below would overflow; the result is 0 far above this.
    constexpr double kVanishingShape = 1e-300;
    if (a < kVanishingShape) return 0;
    const double logarithm = (LogGammaFn(a + 1) - std::numbers::ln2) / a;
    return logarithm < kLogUnderflow ? 0 : elementary::Exp(logarithm);
}

// Here the quotients do not wait for one another, which takes a third of the time. The products differ from
// those of CountTermsOneByOne by rounding, less than a relative 1e-9 over all terms, so that only a product
// this close to the tolerance needs the other order.
double CountSeriesTerms(double a, double x) {
    double t = 1;
    double n = 0;
    while (t > kSurelyAbove && n <= kTermLimit) {
        n += 1;
        t *= x / (n + a);
    }
    return t < kSurelyBelow ? n : CountTermsOneByOne(a, x);
}

namespace {

// Within this relative distance of an argument at which the terms change rounding may decide.
constexpr double kStartMargin = 1e-8;

}  // namespace

void SeriesTermTable::Make(double a, double medianSplit) {
    constexpr double kLargestShape = 50;
    // The starts of smaller ones may underflow.
    constexpr double kLeastSplit = 1e-100;
    if (!(a <= kLargestShape && medianSplit >= kLeastSplit)) return;
    // x^n / ((a + 1) ... (a + n)) is the tolerance at the n-th start.
    double product = kSeriesTolerance;
    int n = 0;
    do {
        if (++n > kMostTerms) return;
        product *= n + a;
        starts_[n] = elementary::Exp(elementary::Log(product) / n) * (1 + kStartMargin);
    } while (starts_[n] <= medianSplit * (1 + 2 * kStartMargin));
    cellsPerUnit_ = kCells / medianSplit;
    n = 1;
    for (int cell = 0; cell <= kCells; ++cell) {
        const double low = cell / cellsPerUnit_ * (1 - 1e-6);
        while (low > starts_[n])
            ++n;
        leastTerms_[cell] = static_cast<unsigned char>(n);
    }
    std::atomic_signal_fence(std::memory_order_release);  // as Lazy does
    end_ = medianSplit * (1 + kStartMargin);
}

double SeriesTermTable::TermsAt(double a, double x) const {
    int n = leastTerms_[static_cast<std::size_t>(x * cellsPerUnit_)];
    while (x >= starts_[n])
        ++n;
    return x < starts_[n] * (1 - 2 * kStartMargin) ? n : CountTermsOneByOne(a, x);
}

double GammaShape::CountedSeriesTerms(double x) const {
    constexpr int kFewArguments = 16;
    if (counted_ < kFewArguments && ++counted_ == kFewArguments) seriesTerms_.Make(a_, MedianSplit());
    return CountSeriesTerms(a_, x);
}

double FractionalShape::GammaQuotient() const {
    // Up to here the quotient cancels too much, and its expansion at 0 is exact enough.
    constexpr double kSmallFraction = 0.0001;

    return gammaQuotient_.Get([b = b_] {
        if (!(b >= 0 && b <= 1)) return DomainError(DBL_MAX);
        if (b > kSmallFraction) return (1 - GammaFn(1 + b)) / b;
        return 0.5772156649015329 - b * 0.5 * 1.978111990655945 - b * b / 6 * -5.4448744564853175;
    });
}

double GammaShape::InverseGammaScale() const {
    return inverseGammaScale_.Get([a = a_] { return numerics::InverseGammaScale(a); });
}

OneHalf::OneHalf() {
    constexpr double a = Value();
    const GammaShape shape(a);
    log_ = shape.Log();
    stirlingTerm_ = shape.StirlingTerm();
    gamma_ = shape.Gamma();
    logGamma_ = shape.LogGamma();
    medianSplit_ = shape.MedianSplit();
    gammaQuotient_ = shape.Fraction().GammaQuotient();
    for (int n = 2; n <= FractionalShape::kSeriesLimit; ++n) {
        termRatios_[static_cast<std::size_t>(n)] = shape.Fraction().TermRatio(n);
    }
    for (std::size_t i = 0; i < termStarts_.size(); ++i) {
        termStarts_[i] =
            FirstWhere([i](double x) { return CountTermsOneByOne(a, x) > static_cast<double>(i); });
    }
    for (std::size_t i = 0; i < leastTerms_.size(); ++i) {
        const double x = static_cast<double>(i) / kCellsPerUnit;
        leastTerms_[i] = static_cast<unsigned char>(CountTermsOneByOne(a, x));
    }
    sureTerms_[0] = sureTerms_[1] = 1;
    for (std::size_t i = 2; i < sureTerms_.size(); ++i) {
        incomplete_gamma::SmallUpper(static_cast<double>(i - 1) / kCellsPerUnit, shape.Fraction());
        sureTerms_[i] = static_cast<unsigned char>(frame::ErrorState().count);
    }
    leastPairs_[0] = 1;
    for (std::size_t i = 1; i < leastPairs_.size(); ++i) {
        const double x = kPairCells / static_cast<double>(i);
        double mean = 0;
        leastPairs_[i] = static_cast<unsigned char>(incomplete_gamma::FirstClosePair(x, a, 1, &mean));
    }
    FindStretches();
}

namespace {

OneHalf::Stretch Trimmed(double low, double high) {
    return {low * (1 + OneHalf::kStretchMargin), high * (1 - OneHalf::kStretchMargin)};
}

// The smallest x from 1 to `high` at which so many pairs of convergents do, to much less than the margin; `high` if none
// is.
double FirstOfPairs(int pairs, double a, double high) {
    double lo = 1;
    double hi = high;
    double mean = 0;
    while (hi - lo > OneHalf::kStretchMargin / 20 * lo) {
        const double middle = (lo + hi) / 2;
        const int needed = incomplete_gamma::FirstClosePair(middle, a, 1, &mean);
        (needed > 0 && needed <= pairs ? hi : lo) = middle;
    }
    return hi;
}

}  // namespace

void OneHalf::FindStretches() {
    constexpr double a = Value();
    for (std::size_t n = 1; n < termStarts_.size(); ++n) {
        const double low = std::max(termStarts_[n - 1], kTinyArgument);
        stretches_[0][n] = Trimmed(low, std::min(termStarts_[n], medianSplit_));
    }
    // A term c x^(n + a) is the first of at most the tolerance up to where it is that.
    double coefficient = 1 / (a + 1);
    double low = medianSplit_;
    for (std::size_t n = 1; n <= FractionalShape::kSeriesLimit && low < 1; ++n) {
        const auto k = static_cast<double>(n);
        if (n > 1) coefficient *= termRatios_[n] / k;
        const double high = elementary::Pow(kSeriesTolerance / coefficient, 1 / (k + a));
        stretches_[1][n] = Trimmed(low, std::min(high, 1.0));
        low = std::max(low, high);
    }
    double high = kLargestStretched;
    for (std::size_t k = 1; k < stretches_[2].size() && high > 1; ++k) {
        const double first = FirstOfPairs(static_cast<int>(k), a, high);
        stretches_[2][k] = Trimmed(first, high);
        high = first <= 1 + kStretchMargin ? 1 : first;
    }
}

namespace {

// The end of a cell.
double EndOfCell(int cell) {
    const auto bits = std::bit_cast<std::uint64_t>(OneHalfTable::kLeast);
    const auto place = static_cast<std::uint64_t>(cell) + 1;
    return std::bit_cast<double>(bits + (place << OneHalfTable::kCellShift));
}

}  // namespace

OneHalfTable OneHalf::Table() const {
    using Byte = unsigned char;
    OneHalfTable table{};
    table.log = log_;
    table.stirlingTerm = stirlingTerm_;
    table.gamma = gamma_;
    table.medianSplit = medianSplit_;
    table.gammaQuotient = gammaQuotient_;
    std::copy(termStarts_.begin(), termStarts_.end(), table.termStarts);
    std::copy(termRatios_.begin(), termRatios_.end(), table.termRatios);
    for (int k = 0; k < 13; ++k)
        table.seriesReciprocals[k] = 1 / (k + Value());
    for (int n = 1; n <= FractionalShape::kSeriesLimit; ++n)
        table.reciprocals[n] = 1.0 / n;

    double low = OneHalfTable::kLeast;
    for (int cell = 0; low < OneHalfTable::kMost; ++cell) {
        const double high = EndOfCell(cell);
        Byte* const rank = table.ranks + cell;
        const double lowest = std::min(low, medianSplit_);
        *rank = static_cast<Byte>(SeriesTerms(lowest));
        const auto most = static_cast<Byte>(SeriesTerms(std::min(high, medianSplit_)));
        table.mostTerms[*rank] = std::max(table.mostTerms[*rank], most);
        // Below 1 a little less than the cell, as SureTerms does.
        rank[OneHalfTable::kCellsBelow] =
            static_cast<Byte>(low < 1 ? OneHalfTable::kFirstSmall + SureTerms(low)
                                      : OneHalfTable::kFirstFraction + std::max(1, ExpectedPairs(high) - 1));
        low = high;
    }
    table.ranks[OneHalfTable::kOutside] = OneHalfTable::kRanks;
    return table;
}

namespace {

// In the default mode, whatever the mode of the thread that loads the library.
template <typename Value>
Value Prepared(Value (*compute)()) {
    Value (*volatile prepare)() = compute;
    const unsigned control = frame::GetControl();
    frame::SetControl(frame::kDefaultControl);
    const Value prepared = prepare();
    frame::SetControl(control);
    return prepared;
}

}  // namespace

const OneHalf kOneHalf = Prepared<OneHalf>([] { return OneHalf(); });
const OneHalfTable kOneHalfTable = Prepared<OneHalfTable>([] { return kOneHalf.Table(); });

}  // namespace zul::numerics
