// The hypergeometric family's kernels: the number of successes in a sample of n without replacement from a
// population of N, M of which are successes. Kernels return NA for "no result".
#pragma once

#include "distributions/counts/count_arrays.h"
#include "frame/call_frame.h"
#include "numerics/counts/hypergeometric.h"

namespace zul::kernels {

// The smallest and the largest number of successes, max(0, M - N + n) and min(M, n). They are in order only
// for 0 <= M, n <= N.
struct HypergeometricSupport {
    HypergeometricSupport(int N, int M, int n);
    double first;
    double last;
};

// C(M, k) C(N - M, n - k) / C(N, n) at k = x; 0 outside the support and between whole numbers.
class HypergeometricPdfKernel {
public:
    using Parameters = frame::ParameterList<int, int, int>;
    HypergeometricPdfKernel(int N, int M, int n) : support_(N, M, n), shape_(N, M, n) {}
    double operator()(double x) const;

private:
    HypergeometricSupport support_;
    numerics::HypergeometricShape shape_;
};

// P(X <= x) or P(X >= x), an x between whole numbers standing for the one below or above. Below the support 0
// and 1, else beyond it 1 and 0; so for parameters outside their domain.
class HypergeometricCdfKernel {
public:
    using Parameters = frame::ParameterList<int, int, int, bool>;
    HypergeometricCdfKernel(int N, int M, int n, bool upper)
        : support_(N, M, n), shape_(N, M, n), upper_(upper) {}
    double operator()(double x) const;

private:
    HypergeometricSupport support_;
    numerics::HypergeometricShape shape_;
    bool upper_;
};

// The quantile at p. The only number of a support of one, for any p; p = 0 and p >= 1 give the ends.
class HypergeometricInvCdfKernel {
public:
    using Table = TabledQuantiles;
    using Parameters = frame::ParameterList<int, int, int>;
    HypergeometricInvCdfKernel(int N, int M, int n) : support_(N, M, n), shape_(N, M, n) {}
    double operator()(double p) const;
    double AtUpperTail(double q) const;
    TabledCounts Counts() const;

private:
    // Whether the support is one number, for certain parameters.
    bool IsCertain(double* only) const;
    HypergeometricSupport support_;
    numerics::HypergeometricShape shape_;
};

}  // namespace zul::kernels
