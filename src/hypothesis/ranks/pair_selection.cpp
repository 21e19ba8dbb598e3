#include "hypothesis/ranks/pair_selection.h"

#include <algorithm>
#include <bit>
#include <limits>

#include "descriptive/quantiles.h"

namespace zul::hypothesis {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Every third trial halves the number of doubles between the ends, of which there are less than 2^64.
constexpr unsigned kTrialKinds = 3;
constexpr unsigned kMostCuts = kTrialKinds * 64;

// Neighbouring doubles have neighbouring numbers, zeros of both signs the same.
std::int64_t OrderOf(double x) {
    const auto bits = std::bit_cast<std::int64_t>(x);
    return bits >= 0 ? bits : std::numeric_limits<std::int64_t>::min() - bits;
}

double DoubleOf(std::int64_t order) {
    return std::bit_cast<double>(order >= 0 ? order : std::numeric_limits<std::int64_t>::min() - order);
}

// From low on and below high.
double MiddleDouble(double low, double high) {
    const auto first = static_cast<std::uint64_t>(OrderOf(low));
    const auto last = static_cast<std::uint64_t>(OrderOf(high));
    return DoubleOf(static_cast<std::int64_t>(first + (last - first) / 2));
}

// Where among the pairs of the bracket the k-th lies: as evenly spread pairs would have it, the same half way to the
// middle, and the middle of the doubles. From low on and below high.
double Trial(double low, double high, double share, unsigned kind) {
    if (kind == 1) share = (share + 0.5) / 2;
    const double trial = low * (1 - share) + high * share;
    return kind != 2 && trial >= low && trial < high ? trial : MiddleDouble(low, high);
}

}  // namespace

std::uint64_t Averages::Count() const {
    const std::uint64_t n = n_;
    return n % 2 == 0 ? n / 2 * (n + 1) : (n + 1) / 2 * n;
}

template <typename Pairs>
PairSelection<Pairs>::PairSelection(const Pairs& pairs, std::span<double> room)
    : pairs_(pairs), room_(room) {}

template <typename Pairs>
typename PairSelection<Pairs>::Cut PairSelection<Pairs>::CutAt(double value) {
    Cut cut{0, -kInfinity, kInfinity};
    const std::size_t columns = pairs_.Columns();
    std::size_t end = columns;  // of the columns not above the value; it falls from row to row
    for (std::size_t i = 0; i < pairs_.Rows(); ++i) {
        const std::size_t first = pairs_.FirstColumn(i);
        while (end > first && pairs_.Key(i, end - 1) > value)
            --end;
        if (end <= first) {
            cut.above = std::min(cut.above, pairs_.Key(i, first));
            break;
        }
        cut.count += end - first;
        cut.notAbove = std::max(cut.notAbove, pairs_.Key(i, end - 1));
        if (end < columns) cut.above = std::min(cut.above, pairs_.Key(i, end));
    }
    if (kept_ < kKept) cuts_[kept_++] = cut;
    return cut;
}

// The new ends are keys that exist: ties cannot hold it up.
template <typename Pairs>
void PairSelection<Pairs>::Narrow(const Cut& cut, std::uint64_t k, Bracket* bracket) {
    if (cut.count >= k) {
        bracket->high = cut.notAbove;
        bracket->upTo = cut.count;
    } else {
        bracket->low = cut.above;
        bracket->below = cut.count;
    }
}

// As narrow as the cuts made so far allow.
template <typename Pairs>
typename PairSelection<Pairs>::Bracket PairSelection<Pairs>::FirstBracket(std::uint64_t k) const {
    Bracket bracket{pairs_.Key(0, 0), pairs_.Key(pairs_.Rows() - 1, pairs_.Columns() - 1), 0, pairs_.Count()};
    for (std::size_t i = 0; i < kept_; ++i)
        if (cuts_[i].count >= k ? cuts_[i].count < bracket.upTo : cuts_[i].count > bracket.below)
            Narrow(cuts_[i], k, &bracket);
    return bracket;
}

template <typename Pairs>
double PairSelection<Pairs>::SmallestKey(std::uint64_t k) {
    Bracket bracket = FirstBracket(k);
    for (unsigned i = 0; i < kMostCuts && bracket.low < bracket.high; ++i) {
        const std::uint64_t left = bracket.upTo - bracket.below;
        if (left <= room_.size()) return SelectCollected(k, bracket);
        const double share = (static_cast<double>(k - bracket.below) - 0.5) / static_cast<double>(left);
        Narrow(CutAt(Trial(bracket.low, bracket.high, share, i % kTrialKinds)), k, &bracket);
    }
    return bracket.low;
}

template <typename Pairs>
double PairSelection<Pairs>::SelectCollected(std::uint64_t k, const Bracket& bracket) {
    std::size_t collected = 0;
    std::size_t begin = pairs_.Columns();  // of the columns from the low end on
    std::size_t end = begin;               // of those up to the high end
    for (std::size_t i = 0; i < pairs_.Rows(); ++i) {
        const std::size_t first = pairs_.FirstColumn(i);
        while (end > first && pairs_.Key(i, end - 1) > bracket.high)
            --end;
        if (end <= first) break;
        begin = std::max(begin, first);
        while (begin > first && pairs_.Key(i, begin - 1) >= bracket.low)
            --begin;
        for (std::size_t j = begin; j < end; ++j)
            room_[collected++] = pairs_.Key(i, j);
    }
    const auto kth = room_.begin() + static_cast<std::ptrdiff_t>(k - bracket.below - 1);
    std::nth_element(room_.begin(), kth, room_.begin() + static_cast<std::ptrdiff_t>(collected));
    return *kth;
}

template <typename Pairs>
double PairSelection<Pairs>::Median() {
    const std::uint64_t count = pairs_.Count();
    const std::uint64_t half = count / 2;
    if (count % 2 == 1) return Smallest(half + 1);
    const double key = SmallestKey(half);
    const Cut cut = CutAt(key);
    const double next = cut.count > half ? key : cut.above;
    return descriptive::Average(Pairs::Value(key), Pairs::Value(next)) + 0.0;
}

template class PairSelection<Averages>;
template class PairSelection<AveragesOfHalves>;
template class PairSelection<Differences>;

}  // namespace zul::hypothesis
