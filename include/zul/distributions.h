/// @file
/// Probability distributions: density, cumulative probability and inverse of each family, for one value and
/// for an array; p-values and critical values; the digamma function.
///
/// For every family:
/// - `<Family>Pdf(x, ...)` is the density, or the probability mass, at x.
/// - `<Family>Cdf(x, ..., upper)` is a tail: P(X <= x) for upper = false; for upper = true P(X > x) of a
///   continuous family and P(X >= x) of a discrete one, which includes the point.
/// - `<Family>InvCdf(p, ...)` is the quantile: the x with P(X <= x) = p.
/// - The array forms write to out[i] what the scalar form gives for in[i], bit for bit. in: count values; out:
///   count values, may equal in, may not overlap it otherwise. count = 0 writes nothing. A value without a
///   result is NaN at its place and the call goes on; an exception ends the call, and the elements before the
///   one that raised it are written.
///
/// A result that does not exist is a quiet NaN. Parameters are not checked: outside their domain the formula
/// is computed as it stands, which gives a meaningless number, NaN or 0, or stops with one of the standard
/// exceptions listed in frame.h; call RegisterKelSigfpeHandler() on each thread to receive them. An argument
/// x or p that is NaN gives std::invalid_argument, a result too large for a double
/// std::overflow_error, unless a function says otherwise. 1.23456e30 is the library's own missing value: as the argument of a cumulative function or a p-value it
/// gives NaN.
///
/// The functions compute in the frame of frame.h and leave the thread in the default floating-point mode.
/// Calls from several threads have to be serialised.
#pragma once

#include <cstddef>

#include <zul/export.h>

namespace zul {

/// The side of a test. The p-value of LowerTail is P(T <= t), that of UpperTail P(T >= t), that of TwoSided
/// twice the smaller of them.
enum EAlternative : int { LowerTail = -1, TwoSided = 0, UpperTail = 1 };

/// @name Normal distribution
/// mean, sd: mean and standard deviation (not the variance), sd > 0.
/// @{

/// The density exp(-z^2 / 2) / (sqrt(2 pi) sd) with z = (x - mean) / sd; relative error about z^2 roundings.
///
/// 0 wherever the computation overflows or divides by zero: z^2 for a far x, sd = 0 at any x but the mean, and
/// also the density itself for sd below 1e-308 or its divisor for sd above 7e307. sd = 0 at the mean:
/// std::invalid_argument.
ZUL_API double NormalPdf(double x, double mean, double sd);
/// @copydoc NormalPdf(double, double, double)
ZUL_API void NormalPdf(double* out, const double* in, std::size_t count, double mean, double sd);

/// The lower tail P(X <= x), or the upper tail P(X > x); relative error of the smaller tail about 1e-9.
///
/// x = mean gives exactly 0.5, whatever sd is. z = (x - mean) / sd above 36.29 in magnitude gives 0 for the far
/// tail. sd = 0 and x different from the mean: std::runtime_error ("Float exception: divide by zero."). z or
/// x - mean too large for a double: std::overflow_error.
/// Method: the incomplete gamma pair with shape 1/2, W. Gautschi, A computational procedure for incomplete
/// gamma functions, 1979.
ZUL_API double NormalCdf(double x, double mean, double sd, bool upper);
/// @copydoc NormalCdf(double, double, double, bool)
ZUL_API void NormalCdf(double* out, const double* in, std::size_t count, double mean, double sd, bool upper);

/// The quantile: the x with P(X <= x) = p, for 4.2e-284 < p < 1; NaN for other p.
///
/// The relative error of the deviate (x - mean) / sd is at most 3e-9 for |p - 0.5| > 0.1, 6e-9 down to 0.03
/// and 2e-8 nearer the median. p = 0.5 gives exactly the mean. A NaN mean or sd gives NaN.
/// Method: the start of J. D. Beasley and S. G. Springer, Algorithm AS 111, 1977, refined by Newton steps on
/// the incomplete gamma function; for p < 1e-100 false position on the tail.
ZUL_API double NormalInvCdf(double p, double mean, double sd);
/// @copydoc NormalInvCdf(double, double, double)
ZUL_API void NormalInvCdf(double* out, const double* in, std::size_t count, double mean, double sd);

/// @}

/// The p-value of a standard normal statistic z; relative error about 1e-9.
///
/// z = 0 gives exactly 0.5, and 1 for TwoSided. An alternative that is none of the three gives 0.
ZUL_API double NormalPValue(double z, EAlternative alternative);

/// The critical value of a standard normal statistic at the significance level alpha, 0 < alpha < 1.
///
/// UpperTail and LowerTail: the quantile at 1 - alpha, positive for both when alpha < 0.5; the caller of
/// LowerTail sets the sign. TwoSided: the quantile at 1 - alpha / 2. An alternative that is none of the three
/// (for any alpha), or a probability outside (0, 1): NaN. Accuracy as NormalInvCdf().
ZUL_API double NormalCritValue(double alpha, EAlternative alternative);

namespace v2 {

/// The digamma function, the derivative of log(gamma(x)), for x > 0; absolute error about 1e-11.
///
/// x <= 0 gives NaN, and so do plus infinity and NaN. Runs without the floating-point frame, in the default
/// mode never throws, and may be called from several threads at once.
/// Method: recurrence up to x >= 10, then the asymptotic series, M. Abramowitz and I. A. Stegun, Handbook of
/// Mathematical Functions, 1964, 6.3.5 and 6.3.18.
ZUL_API double Psi(double x);

}  // namespace v2

}  // namespace zul
