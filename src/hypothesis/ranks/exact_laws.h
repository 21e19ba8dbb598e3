// The permutation laws of rank statistics, ties included, by counting: sums of positive terms, exact as long as doubles
// hold the counts, and to a relative 1e-13 for 200 ranks. Ranks are whole: mean ranks of ties are doubled.
// Source: B. Streitberg and J. Roehmel, Exact distributions for permutation and rank tests: an introduction to some
// recently published algorithms, 1986.
#pragma once

#include <cstddef>
#include <vector>

#include "distributions/tail_pair.h"

namespace zul::hypothesis {

// A sum of ranks: the numbers of the ways to each value from the least on, and of all ways together.
struct RankLaw {
    std::vector<double> ways;
    double total;

    // P(T <= t), t counted from the least value. Beyond the values that are counted the last one.
    double LowerTail(std::size_t t) const;
};

using Ranks = std::vector<unsigned>;

// 1 to n.
Ranks UntiedRanks(unsigned n);

// Halves doubled ranks if all of them are even; how many times as large as the ranks they are then.
unsigned MakeWhole(Ranks* doubled);

// The sum over a random subset of ranks, each of them in it with probability 1/2, up to the middle of its values.
RankLaw SignedRankLaw(const Ranks& ranks);

// Both tails of that sum at a value.
kernels::TailPair SignedRankTails(const RankLaw& law, const Ranks& ranks, std::size_t value);

// The sum over a random subset of so many of the ranks, which ascend. The least value is that of the first ones.
RankLaw RankSumLaw(const Ranks& ranks, unsigned chosen);

// Both tails of that sum at a value.
kernels::TailPair RankSumTails(const RankLaw& law, const Ranks& ranks, unsigned chosen, std::size_t value);

}  // namespace zul::hypothesis
