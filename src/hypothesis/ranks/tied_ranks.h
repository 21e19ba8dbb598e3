// Runs of equal values among sorted ones, whose ranks are their mean rank.
#pragma once

#include <cstddef>
#include <cstdint>

#include "descriptive/compensated_sum.h"

namespace zul::hypothesis {

struct Tie {
    std::uint64_t before;   // the number of smaller values
    std::uint64_t size;     // 1: no tie
    std::uint64_t inFirst;  // how many of them are of the first of two sequences

    std::uint64_t DoubledRank() const { return 2 * before + size + 1; }
    double Rank() const { return static_cast<double>(DoubledRank()) / 2; }
};

// Calls visit(tie) for the runs of two ascending sequences together, first(i) and second(j) being their values.
template <typename First, typename Second, typename Visit>
void ForEachTie(std::size_t countFirst, First first, std::size_t countSecond, Second second, Visit visit) {
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < countFirst || j < countSecond) {
        const std::size_t beginFirst = i;
        const std::uint64_t before = std::uint64_t{i} + j;
        const bool isFirst = j == countSecond || (i < countFirst && first(i) <= second(j));
        const double value = isFirst ? first(i) : second(j);
        while (i < countFirst && first(i) == value)
            ++i;
        while (j < countSecond && second(j) == value)
            ++j;
        visit(Tie{before, std::uint64_t{i} + j - before, i - beginFirst});
    }
}

// The share of the variance of untied ranks that ties leave: 1 - sum (t^3 - t) / (N^3 - N). Over the runs in order that
// is a sum of positive terms, 3 S t (S + t) with the number S of values before a run of t.
class TieShare {
public:
    void Add(const Tie& tie) {
        const auto before = static_cast<double>(tie.before);
        const auto size = static_cast<double>(tie.size);
        if (tie.size > 1) hasTies_ = true;
        sum_.Add(3 * before * size * (before + size));
    }
    // Of so many rankings of N values each. Without ties exactly 1; if all values are tied exactly 0.
    double Of(double rankings, double N) const {
        return hasTies_ ? sum_.Value() / (rankings * (N * (N - 1) * (N + 1))) : 1;
    }

private:
    bool hasTies_ = false;
    descriptive::CompensatedSum sum_;
};

}  // namespace zul::hypothesis
