#include "hypothesis/ranks/exact_laws.h"

#include <algorithm>
#include <numeric>

#include "descriptive/compensated_sum.h"

namespace zul::hypothesis {
namespace {

double Sum(const double* terms, std::size_t count) {
    descriptive::CompensatedSum sum;
    for (std::size_t i = 0; i < count; ++i)
        sum.Add(terms[i]);
    return sum.Value();
}

std::size_t SumOfFirst(const Ranks& ranks, std::size_t count) {
    return std::accumulate(ranks.begin(), ranks.begin() + static_cast<std::ptrdiff_t>(count), std::size_t{0});
}

// 2^n.
double PowerOfTwo(std::size_t n) {
    double power = 1;
    for (std::size_t i = 0; i < n; ++i)
        power *= 2;
    return power;
}

}  // namespace

double RankLaw::LowerTail(std::size_t t) const {
    return Sum(ways.data(), std::min(t + 1, ways.size())) / total;
}

Ranks UntiedRanks(unsigned n) {
    Ranks ranks(n);
    std::iota(ranks.begin(), ranks.end(), 1U);
    return ranks;
}

unsigned MakeWhole(Ranks* doubled) {
    if (std::any_of(doubled->begin(), doubled->end(), [](unsigned rank) { return rank % 2 == 1; })) return 2;
    for (unsigned& rank : *doubled)
        rank /= 2;
    return 1;
}

// The law is symmetric: of each number of ranks one half is counted and the other is mirrored as it is needed.
RankLaw SignedRankLaw(const Ranks& ranks) {
    const std::size_t last = SumOfFirst(ranks, ranks.size()) / 2;
    RankLaw law{std::vector<double>(last + 1), PowerOfTwo(ranks.size())};
    std::vector<double>& ways = law.ways;
    ways[0] = 1;
    std::size_t all = 0;      // the sum of the ranks so far
    std::size_t counted = 0;  // up to the middle of it
    for (const std::size_t rank : ranks) {
        const std::size_t middle = (all + rank) / 2;
        for (std::size_t sum = counted + 1; sum <= middle; ++sum)
            ways[sum] = sum <= all ? ways[all - sum] : 0;
        for (std::size_t sum = middle; sum >= rank; --sum)
            ways[sum] += ways[sum - rank];
        all += rank;
        counted = middle;
    }
    return law;
}

// The law is symmetric: of the two tails the one beyond the middle is the complement of one before it.
kernels::TailPair SignedRankTails(const RankLaw& law, const Ranks& ranks, std::size_t value) {
    const std::size_t mirrored = SumOfFirst(ranks, ranks.size()) - value;
    const std::size_t nearer = std::min(value, mirrored);
    const double upTo = law.LowerTail(nearer);
    const double from = nearer == 0 ? 1 : 1 - law.LowerTail(nearer - 1);
    return value == nearer ? kernels::TailPair{upTo, from} : kernels::TailPair{from, upTo};
}

// The ways to choose j of the first ranks, row by row of j, each from the least sum on. Only those are kept that can
// still be completed, which makes the rows as long as the sums are spread.
RankLaw RankSumLaw(const Ranks& ranks, unsigned chosen) {
    const std::size_t n = ranks.size();
    std::vector<std::size_t> sums(n + 1);  // of the first ranks
    std::partial_sum(ranks.begin(), ranks.end(), sums.begin() + 1, std::plus<std::size_t>());
    // The largest sum of j of the first i ranks, above the least one.
    const auto spread = [&](std::size_t j, std::size_t i) { return sums[i] - sums[i - j] - sums[j]; };
    std::vector<std::vector<double>> rows(chosen + 1);
    for (std::size_t j = 0; j <= chosen; ++j)
        rows[j].resize(spread(j, n - chosen + j) + 1);
    rows[0][0] = 1;
    for (std::size_t i = 1; i <= n; ++i) {
        const std::size_t least = i + chosen > n ? i + chosen - n : 1;
        for (std::size_t j = std::min<std::size_t>(i, chosen); j >= least; --j) {
            const std::size_t last = spread(j - 1, i - 1);
            const double* const from = rows[j - 1].data();
            double* const to = rows[j].data() + (ranks[i - 1] - ranks[j - 1]);
            for (std::size_t sum = 0; sum <= last; ++sum)
                to[sum] += from[sum];
        }
    }
    RankLaw law{std::move(rows[chosen]), 0};
    law.total = Sum(law.ways.data(), law.ways.size());
    return law;
}

kernels::TailPair RankSumTails(const RankLaw& law, const Ranks& ranks, unsigned chosen, std::size_t value) {
    const std::size_t t = value - SumOfFirst(ranks, chosen);
    return {law.LowerTail(t), Sum(law.ways.data() + t, law.ways.size() - t) / law.total};
}

}  // namespace zul::hypothesis
