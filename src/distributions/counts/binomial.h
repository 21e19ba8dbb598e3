// The binomial family's kernels: the number of successes in n trials with the given probability of success.
// Kernels return NA for "no result".
#pragma once

#include <optional>

#include "distributions/counts/count_arrays.h"
#include "frame/call_frame.h"
#include "numerics/counts/binomial.h"

namespace zul::kernels {

// Whether trials and probability are neither at their ends nor far out.
bool IsOrdinaryBinomial(double n, double prob);

// C(n, k) prob^k (1 - prob)^(n - k) at k = x; x between whole numbers gives 0. prob = 0 and prob = 1 put the
// mass on 0 and on n. Elsewhere in 0 <= k <= n a prob outside [0, 1] is a logarithm that fails.
class BinomialPdfKernel {
public:
    using Table = RepeatedCounts;
    using Parameters = frame::ParameterList<int, double>;
    static constexpr bool kKeptBetweenCalls = true;
    BinomialPdfKernel(int n, double prob) : BinomialPdfKernel(static_cast<double>(n), prob) {}
    BinomialPdfKernel(double n, double prob) : n_(n), prob_(prob) {}
    double operator()(double x);
    CountRange Counts() const;

private:
    double Mass(double k);
    double MassOfMany(double k) const;
    double MassByLogarithms(double k) const;
    double n_;
    double prob_;
    std::optional<numerics::BinomialShape> shape_;  // the zero branches need none
};

// P(X <= x) or P(X >= x), an x between whole numbers standing for the one below or above. n counts as the
// whole number below it. x < 0: 0 and 1; x beyond n: 1 and 0. "binomial_df" up to n = 2.147e9; where it fails
// and for larger n the incomplete beta pair, whose shapes end at kShapeLimit: NA.
class BinomialCdfKernel {
public:
    using Table = RepeatedCounts;
    using Parameters = frame::ParameterList<double, double, bool>;
    static constexpr bool kKeptBetweenCalls = true;
    BinomialCdfKernel(double n, double prob, bool upper);
    double operator()(double x);
    CountRange Counts() const;

private:
    bool Tails(double k, double* lower, double* above);
    double n_;
    double prob_;
    bool upper_;
    std::optional<numerics::BinomialShape> shape_;
};

// The quantile at p. p = 0 gives 0, p = 1 gives n.
class BinomialInvCdfKernel {
public:
    using Table = TabledQuantiles;
    using Parameters = frame::ParameterList<int, double>;
    static constexpr bool kKeptBetweenCalls = true;
    BinomialInvCdfKernel(int n, double prob) : n_(n), prob_(prob) {}
    double operator()(double p);
    double AtUpperTail(double q);
    TabledCounts Counts() const;

private:
    double n_;
    double prob_;
    std::optional<numerics::BinomialShape> shape_;
};

}  // namespace zul::kernels
