/// @file
/// Probability distributions, p-values and critical values, the digamma function.
#pragma once

#include <cstddef>

#include <zul/export.h>

/// @defgroup distributions Probability distributions
/// Probability distributions: density, cumulative probability and inverse of each family, for one value and
/// for an array; p-values and critical values; the digamma function.
///
/// For every family:
/// - `<Family>Pdf(x, ...)` is the density, or the probability mass, at x.
/// - `<Family>Cdf(x, ..., upper)` is a tail: P(X <= x) for upper = false; for upper = true P(X > x) of a
///   continuous family and P(X >= x) of a discrete one, which includes the point.
/// - `<Family>InvCdf(p, ...)` is the quantile: the x with P(X <= x) = p.
/// - `<Family>InvCdf(p, ..., upper)` is the quantile by a tail: for upper = false the same, bit for bit; for
///   upper = true the x with P(X > x) = p, of a discrete family the smallest k with P(X > k) <= p, computed
///   from p itself. A NaN, a p outside [0, 1] and parameters outside their domain give what they give without
///   the flag at 1 - p.
/// - The array forms write to out[i] what the scalar form gives for in[i], bit for bit. in: count values; out:
///   count values, may equal in, may not overlap it otherwise. count = 0 writes nothing. A value without a
///   result is NaN at its place and the call goes on; an exception ends the call, and the elements before the
///   one that raised it are written.
/// - Where a comment gives two numbers for a cumulative probability ("x <= 0 gives 0 and 1"), they are the lower
///   tail and the upper one.
///
/// A result that does not exist is a quiet NaN. Parameters are not checked: outside their domain the formula
/// is computed as it stands, which gives a meaningless number, NaN or 0, or stops with one of the standard
/// exceptions listed in frame.h; call RegisterKelSigfpeHandler() on each thread to receive them. An argument
/// x or p that is NaN gives std::invalid_argument, a result too large for a double std::overflow_error, unless
/// a function says otherwise.
///
/// 1.23456e30 is the library's own missing value. As the x of ChiSqCdf(), FCdf(), TCdf(), NormalCdf(),
/// HalfNormalCdf(), ChiSqPValue(), FPValue(), TPValue(), NormalPValue() and of TPdf() with a noncentrality it
/// gives NaN, and so does a result that is exactly this number, but for the families uniform and discrete. To
/// every other function it is a number like any other.
///
/// The families are those of N. L. Johnson, S. Kotz and N. Balakrishnan, Continuous univariate distributions, 2nd
/// edition, 1994 and 1995, and of N. L. Johnson, A. W. Kemp and S. Kotz, Univariate discrete distributions, 3rd
/// edition, 2005, with the parameters that are named at each. Where no method is named, the formula is computed.
///
/// The functions compute in the frame of frame.h and leave the thread in the default floating-point mode. They may
/// be called from any thread at any time.

namespace zul {

/// The side of a test with the statistic T. The p-value of LowerTail is P(T <= t), that of UpperTail P(T >= t),
/// that of TwoSided twice the smaller of them for a continuous T; for a count see the function.
/// @ingroup distributions
enum EAlternative : int {
    LowerTail = -1,  ///< the p-value is the lower tail
    TwoSided = 0,    ///< the p-value counts both tails
    UpperTail = 1    ///< the p-value is the upper tail
};

/// @defgroup beta Beta distribution
/// @ingroup distributions
/// a, b: the shapes, 0 < a, b <= 94906265. The support is [0, 1].
///
/// | | |
/// |---|---|
/// | density | @f$\frac{x^{a-1} (1-x)^{b-1}}{B(a, b)}, \quad B(a, b) = \frac{\Gamma(a) \Gamma(b)}{\Gamma(a+b)}@f$ |
/// | support | @f$0 \le x \le 1@f$ |
/// | mean | @f$\frac{a}{a+b}@f$ |
/// | variance | @f$\frac{ab}{(a+b)^2 (a+b+1)}@f$ |
/// | mode | @f$\frac{a-1}{a+b-2}@f$ for a, b > 1 |
///
/// @see ISampler::SampleBeta(), @ref f, @ref binomial
/// @{

/// The density x^(a - 1) (1 - x)^(b - 1) gamma(a + b) / (gamma(a) gamma(b)) for 0 < x < 1, and 0 outside [0,
/// 1]; relative error some roundings of the largest logarithm in it, 3e-12 for large shapes.
///
/// x = 0 gives b for a = 1, 0 for a > 1 and NaN, for infinity, for a < 1; x = 1 likewise. NaN also where the
/// density is too large for a double, and for shapes that are not above 4e-16. Shapes above 94906265 are
/// allowed.
/// Method: C. Loader, Fast and accurate computation of binomial probabilities, 2000, for large shapes.
ZUL_API double BetaPdf(double x, double a, double b);
/// Array form: out[i] = BetaPdf(in[i], a, b), see @ref array_forms.
ZUL_API void BetaPdf(double* out, const double* in, std::size_t count, double a, double b);

/// The lower tail P(X <= x), or the upper tail P(X > x); relative error of the smaller tail about 1e-9.
///
/// x <= 0 gives 0 and 1, x >= 1 gives 1 and 0. NaN for shapes outside [0, 94906265].
/// Method: the incomplete beta pair, M. Abramowitz and I. A. Stegun, Handbook of Mathematical Functions,
/// 1964, 26.5.4; A. R. DiDonato and A. H. Morris, Algorithm 708: significant digit computation of the
/// incomplete beta function ratios, 1992.
ZUL_API double BetaCdf(double x, double a, double b, bool upper);
/// Array form: out[i] = BetaCdf(in[i], a, b, upper), see @ref array_forms.
ZUL_API void BetaCdf(double* out, const double* in, std::size_t count, double a, double b, bool upper);

/// The quantile: the x with P(X <= x) = p, for 0 <= p <= 1. p = 0 gives 0 and p = 1 gives 1, whatever the
/// shapes are; p outside [0, 1], and any other p with a shape outside its domain, give NaN.
///
/// The smaller tail at the result gives p, or 1 - p, back to 1e-9.
/// Method: G. W. Cran, K. J. Martin and G. E. Thomas, Remark AS R19 and Algorithm AS 109: a remark on
/// algorithms AS 63 and AS 64, 1977, for the start; E. Halley's iteration.
ZUL_API double BetaInvCdf(double p, double a, double b);
/// Array form: out[i] = BetaInvCdf(in[i], a, b), see @ref array_forms.
ZUL_API void BetaInvCdf(double* out, const double* in, std::size_t count, double a, double b);

/// The quantile by the upper tail, for upper = true: the x with P(X > x) = p, for 0 <= p <= 1. p = 0 gives 1,
/// p = 1 gives 0. For upper = false BetaInvCdf(p, a, b); see @ref upper_quantiles.
///
/// The upper tail at the result gives p back to 1e-9, down to p = 1e-280.
ZUL_API double BetaInvCdf(double p, double a, double b, bool upper);
/// Array form: out[i] = BetaInvCdf(in[i], a, b, upper), see @ref array_forms.
ZUL_API void BetaInvCdf(double* out, const double* in, std::size_t count, double a, double b, bool upper);

/// @}

/// @defgroup binomial Binomial distribution
/// @ingroup distributions
/// The number of successes in n independent trials. n: trials, 0 <= n <= 2147000000 (for the cumulative
/// probability also given as a double, of which the whole number below it counts). prob: the probability of
/// success of a trial, 0 <= prob <= 1. A whole number is one within 1e-12 of its size.
///
/// | | |
/// |---|---|
/// | symbols | @f$p@f$ prob |
/// | probability | @f$\binom{n}{x} p^x (1-p)^{n-x}@f$ |
/// | support | @f$x = 0, 1, \ldots, n@f$ |
/// | mean | @f$np@f$ |
/// | variance | @f$np(1-p)@f$ |
/// | mode | @f$\lfloor (n+1) p \rfloor@f$, and the number below it where @f$(n+1) p@f$ is whole |
///
/// @see BinomialPValue(), ISampler::SampleBinomial(), @ref one_proportion, @ref sign_test,
/// @ref negative_binomial
/// @{

/// The probability P(X = x) = n! / (x! (n - x)!) prob^x (1 - prob)^(n - x); relative error as of the tails.
///
/// 0 for an x that is not a whole number from 0 to n. prob outside [0, 1] and x in that range:
/// std::invalid_argument.
/// Method: the saddle-point form, C. Loader, Fast and accurate computation of binomial probabilities, 2000.
ZUL_API double BinomialPdf(double x, int n, double prob);
/// Array form: out[i] = BinomialPdf(in[i], n, prob), see @ref array_forms.
ZUL_API void BinomialPdf(double* out, const double* in, std::size_t count, int n, double prob);

/// The lower tail P(X <= x), or the upper tail P(X >= x), which includes the point; relative error of the
/// smaller tail at most 2e-13 down to 1e-50, 9e-13 down to 1e-250.
///
/// Between whole numbers the lower tail is that at the number below, the upper one that at the number above.
/// x < 0 gives 0 and 1, x > n gives 1 and 0, whatever prob is. NaN for prob outside [0, 1] and for n above
/// 2147000000, where an n so large that n - x rounds to n gives 1 for the upper tail, however.
/// Method: sums of the saddle-point masses, or their Euler-Maclaurin integral; for a prob that fails there
/// the incomplete beta pair, M. Abramowitz and I. A. Stegun, Handbook of Mathematical Functions, 1964,
/// 26.5.24.
ZUL_API double BinomialCdf(double x, double n, double prob, bool upper);
/// Array form: out[i] = BinomialCdf(in[i], n, prob, upper), see @ref array_forms.
ZUL_API void BinomialCdf(double* out, const double* in, std::size_t count, double n, double prob, bool upper);

/// The quantile: the smallest whole number k with P(X <= k) >= p, for 0 <= p <= 1. p = 0 gives 0, p = 1 gives
/// n.
///
/// p above P(X <= k) by less than 1e-9 of P(X = k + 1) still gives k: a lower tail gives its x back. p, n or
/// prob outside their domain: NaN, but for p = 0 and p = 1.
/// Method: the tails at the numbers around a Cornish-Fisher start, R. A. Fisher and E. A. Cornish, The
/// percentile points of distributions having known cumulants, 1960.
ZUL_API double BinomialInvCdf(double p, int n, double prob);
/// Array form: out[i] = BinomialInvCdf(in[i], n, prob), see @ref array_forms.
ZUL_API void BinomialInvCdf(double* out, const double* in, std::size_t count, int n, double prob);

/// The quantile by the upper tail, for upper = true: the smallest whole number k with P(X > k) <= p, for 0 <=
/// p <= 1. p = 0 gives n, p = 1 gives 0. For upper = false BinomialInvCdf(p, n, prob); see @ref
/// upper_quantiles.
///
/// p below P(X > k) by less than 1e-9 of P(X = k + 1) still gives k. p counts down to 1e-280.
ZUL_API double BinomialInvCdf(double p, int n, double prob, bool upper);
/// Array form: out[i] = BinomialInvCdf(in[i], n, prob, upper), see @ref array_forms.
ZUL_API void BinomialInvCdf(double* out, const double* in, std::size_t count, int n, double prob, bool upper);

/// @}

/// @defgroup cauchy Cauchy distribution
/// @ingroup distributions
/// location: the median; scale: half the distance between the quartiles, scale > 0. z = (x - location) /
/// scale.
///
/// | | |
/// |---|---|
/// | symbols | @f$\mu@f$ location, @f$\sigma@f$ scale |
/// | density | @f$\frac{1}{\pi \sigma (1 + z^2)}, \quad z = \frac{x-\mu}{\sigma}@f$ |
/// | support | @f$-\infty < x < \infty@f$ |
/// | mean | none |
/// | variance | none |
/// | mode | @f$\mu@f$ |
///
/// @see ISampler::SampleCauchy(), @ref t, of which it is the case of one degree of freedom
/// @{

/// The density 1 / ((z^2 + 1) scale pi); relative error some roundings.
///
/// scale = 0: std::runtime_error, or std::invalid_argument at x = location.
ZUL_API double CauchyPdf(double x, double location, double scale);
/// Array form: out[i] = CauchyPdf(in[i], location, scale), see @ref array_forms.
ZUL_API void CauchyPdf(double* out, const double* in, std::size_t count, double location, double scale);

/// The lower tail 0.5 + atan(z) / pi = P(X <= x), or the upper tail P(X > x), which is the same with z
/// negated; relative error of either some roundings, far out too.
///
/// scale = 0: std::runtime_error, or std::invalid_argument at x = location.
ZUL_API double CauchyCdf(double x, double location, double scale, bool upper);
/// Array form: out[i] = CauchyCdf(in[i], location, scale, upper), see @ref array_forms.
ZUL_API void CauchyCdf(double* out, const double* in, std::size_t count, double location, double scale,
                       bool upper);

/// The quantile location + scale tan(pi (p - 0.5)), for 0 < p < 1.
///
/// p = 0 and p = 1 give NaN; |p - 0.5| <= 5e-13 gives the location. p far outside [0, 1]:
/// std::invalid_argument ("argument out of range for trig functions").
ZUL_API double CauchyInvCdf(double p, double location, double scale);
/// Array form: out[i] = CauchyInvCdf(in[i], location, scale), see @ref array_forms.
ZUL_API void CauchyInvCdf(double* out, const double* in, std::size_t count, double location, double scale);

/// The quantile by the upper tail, for upper = true: location - scale tan(pi (p - 0.5)), for 0 < p < 1. p = 0
/// and p = 1 give NaN. For upper = false CauchyInvCdf(p, location, scale); see @ref upper_quantiles.
ZUL_API double CauchyInvCdf(double p, double location, double scale, bool upper);
/// Array form: out[i] = CauchyInvCdf(in[i], location, scale, upper), see @ref array_forms.
ZUL_API void CauchyInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                          bool upper);

/// @}

/// @defgroup chi_square Chi-square distribution
/// @ingroup distributions
/// df: degrees of freedom, 0 < df <= 189812530. noncentrality: the sum of the squared means of the normals
/// that are squared and added, 0 <= noncentrality <= 2e10; 0 is the central distribution.
///
/// | | |
/// |---|---|
/// | symbols | @f$\nu@f$ df, @f$\lambda@f$ noncentrality |
/// | density | @f$\frac{x^{\nu/2-1} e^{-x/2}}{2^{\nu/2} \Gamma(\nu/2)}@f$, central |
/// | support | @f$x > 0@f$ |
/// | mean | @f$\nu + \lambda@f$ |
/// | variance | @f$2 (\nu + 2 \lambda)@f$ |
/// | mode | @f$\max(\nu - 2, 0)@f$, central |
///
/// @see ChiSqPValue(), ChiSqCritValue(), ISampler::SampleChiSquare(), @ref gamma, @ref one_variance,
/// @ref contingency
/// @{

/// The density x^(df/2 - 1) exp(-x/2) / (2^(df/2) gamma(df/2)) of the central distribution for x > 0, and 0
/// for x <= 0; relative error some roundings of the largest logarithm in it.
///
/// Deliberate: no noncentrality, which the other two functions have. NaN where the density is too large for a
/// double. df <= 0: std::invalid_argument.
ZUL_API double ChiSqPdf(double x, double df);
/// Array form: out[i] = ChiSqPdf(in[i], df), see @ref array_forms.
ZUL_API void ChiSqPdf(double* out, const double* in, std::size_t count, double df);

/// The lower tail P(X <= x), or the upper tail P(X > x); relative error of the smaller tail about 1e-9 for
/// noncentrality 0, as of GammaCdf() with the shape df/2, and 1e-12 above.
///
/// x <= 0 gives 0 and 1. NaN for df or noncentrality outside its domain.
/// Method: the incomplete gamma pair, W. Gautschi, A computational procedure for incomplete gamma functions,
/// 1979; for a noncentrality its Poisson mixture, D. Benton and K. Krishnamoorthy, Computing discrete
/// mixtures of continuous distributions, 2003.
ZUL_API double ChiSqCdf(double x, double df, double noncentrality, bool upper);
/// Array form: out[i] = ChiSqCdf(in[i], df, noncentrality, upper), see @ref array_forms.
ZUL_API void ChiSqCdf(double* out, const double* in, std::size_t count, double df, double noncentrality,
                      bool upper);

/// The quantile: the x with P(X <= x) = p, for 0 <= p < 1. p = 0 gives 0, whatever the parameters are; p = 1, p
/// outside [0, 1], and any other p with df or noncentrality outside its domain, give NaN.
///
/// For noncentrality 0 the tail at the result gives p back to 1e-9, or to the error of the tail where that is
/// larger; else to 1e-12 of p or of the result.
/// Method: A. R. DiDonato and A. H. Morris, Computation of the incomplete gamma function ratios and their
/// inverse, 1986; for a noncentrality the secant method on the logit of the tail, from the guess of P. B.
/// Patnaik, The non-central chi-square and F-distributions and their applications, 1949.
ZUL_API double ChiSqInvCdf(double p, double df, double noncentrality);
/// Array form: out[i] = ChiSqInvCdf(in[i], df, noncentrality), see @ref array_forms.
ZUL_API void ChiSqInvCdf(double* out, const double* in, std::size_t count, double df, double noncentrality);

/// The quantile by the upper tail, for upper = true: the x with P(X > x) = p, for 0 < p <= 1. p = 0 gives
/// NaN, p = 1 gives 0. For upper = false ChiSqInvCdf(p, df, noncentrality); see @ref upper_quantiles.
///
/// The upper tail at the result gives p back, down to p = 1e-280, as the lower one does without the flag;
/// with a noncentrality to 1e-12 of p, whatever its size.
ZUL_API double ChiSqInvCdf(double p, double df, double noncentrality, bool upper);
/// Array form: out[i] = ChiSqInvCdf(in[i], df, noncentrality, upper), see @ref array_forms.
ZUL_API void ChiSqInvCdf(double* out, const double* in, std::size_t count, double df, double noncentrality,
                         bool upper);

/// @}

/// @defgroup exponential Exponential distribution
/// @ingroup distributions
/// scale: the mean of X - threshold (not the rate), scale > 0; threshold: where the distribution begins. t
/// = (x - threshold) / scale.
///
/// | | |
/// |---|---|
/// | symbols | @f$\beta@f$ scale, @f$\tau@f$ threshold |
/// | density | @f$\frac{1}{\beta} e^{-(x-\tau)/\beta}@f$ |
/// | support | @f$x \ge \tau@f$ |
/// | mean | @f$\tau + \beta@f$ |
/// | variance | @f$\beta^2@f$ |
/// | mode | @f$\tau@f$ |
///
/// @see ISampler::SampleExponential(), v2::FitExponential(), v2::RunKelExponentialPPlot(),
/// v0::RunKelExponentialADTest(), @ref weibull, @ref gamma
/// @{

/// The density exp(-t) / scale for x >= threshold, and 0 for x < threshold and for t > 709.78.
///
/// scale = 0: std::runtime_error or std::invalid_argument. scale < 0 and t < -709.78: std::runtime_error
/// ("float overflow").
ZUL_API double ExponentialPdf(double x, double scale, double threshold);
/// Array form: out[i] = ExponentialPdf(in[i], scale, threshold), see @ref array_forms.
ZUL_API void ExponentialPdf(double* out, const double* in, std::size_t count, double scale, double threshold);

/// The lower tail 1 - exp(-t) = P(X <= x), or the upper tail exp(-t) = P(X > x).
///
/// x <= threshold gives 0 and 1; t > 709.78 gives 1 and 0. Relative error some roundings for the upper tail
/// and 1e-13 for the lower one, which for exp(-t) > 0.999 is ChiSqCdf(2 t, 2, 0, false); t < 2e-288 gives 0.
/// Failures as ExponentialPdf().
ZUL_API double ExponentialCdf(double x, double scale, double threshold, bool upper);
/// Array form: out[i] = ExponentialCdf(in[i], scale, threshold, upper), see @ref array_forms.
ZUL_API void ExponentialCdf(double* out, const double* in, std::size_t count, double scale, double threshold,
                            bool upper);

/// The quantile threshold - scale log(1 - p), for 0 <= p < 1.
///
/// p = 1: std::runtime_error ("float overflow"). p > 1: std::invalid_argument.
ZUL_API double ExponentialInvCdf(double p, double scale, double threshold);
/// Array form: out[i] = ExponentialInvCdf(in[i], scale, threshold), see @ref array_forms.
ZUL_API void ExponentialInvCdf(double* out, const double* in, std::size_t count, double scale,
                               double threshold);

/// The quantile by the upper tail, for upper = true: threshold - scale log(p), for 0 < p <= 1. p = 0:
/// std::runtime_error ("float overflow"); p = 1 gives the threshold. For upper = false ExponentialInvCdf(p,
/// scale, threshold); see @ref upper_quantiles.
ZUL_API double ExponentialInvCdf(double p, double scale, double threshold, bool upper);
/// Array form: out[i] = ExponentialInvCdf(in[i], scale, threshold, upper), see @ref array_forms.
ZUL_API void ExponentialInvCdf(double* out, const double* in, std::size_t count, double scale,
                               double threshold, bool upper);

/// @}

/// @defgroup f F distribution
/// @ingroup distributions
/// df1, df2: degrees of freedom of the numerator and the denominator, 0 < df1, df2 <= 189812530.
/// noncentrality: that of the numerator's chi-square, the sum of the squared means, 0 <= noncentrality <=
/// 6e9; 0 is the central distribution.
///
/// | | |
/// |---|---|
/// | symbols | @f$\nu_1, \nu_2@f$ df1, df2, @f$\lambda@f$ noncentrality |
/// | density | @f$\frac{1}{B(\nu_1/2, \nu_2/2)} \left(\frac{\nu_1}{\nu_2}\right)^{\nu_1/2} x^{\nu_1/2-1} \left(1 + \frac{\nu_1 x}{\nu_2}\right)^{-(\nu_1+\nu_2)/2}@f$, central |
/// | support | @f$x > 0@f$ |
/// | mean | @f$\frac{\nu_2 (\nu_1 + \lambda)}{\nu_1 (\nu_2 - 2)}@f$ for df2 > 2 |
/// | variance | @f$2 \left(\frac{\nu_2}{\nu_1}\right)^2 \frac{(\nu_1+\lambda)^2 + (\nu_1+2\lambda)(\nu_2-2)}{(\nu_2-2)^2 (\nu_2-4)}@f$ for df2 > 4 |
/// | mode | @f$\frac{\nu_2 (\nu_1-2)}{\nu_1 (\nu_2+2)}@f$ for df1 > 2, central, else 0 |
///
/// @see FPValue(), FCritValue(), ISampler::SampleF(), @ref beta, @ref chi_square, @ref variances
/// @{

/// The density x^(a - 1) (df1/df2)^a gamma(a + b) / (gamma(a) gamma(b)) (1 + df1 x / df2)^-(a + b), a = df1/2
/// and b = df2/2, of the central distribution for x > 0, and 0 for x <= 0; relative error some roundings of
/// the largest logarithm in it.
///
/// Deliberate: no noncentrality, which the other two functions have. df1 or df2 <= 0: std::invalid_argument,
/// for a quotient df1/df2 of 0 or with df2 = 0 std::runtime_error. A density too large for a double:
/// std::runtime_error ("float overflow").
/// Method: C. Loader, Fast and accurate computation of binomial probabilities, 2000, for many degrees of
/// freedom.
ZUL_API double FPdf(double x, double df1, double df2);
/// Array form: out[i] = FPdf(in[i], df1, df2), see @ref array_forms.
ZUL_API void FPdf(double* out, const double* in, std::size_t count, double df1, double df2);

/// The lower tail P(X <= x), or the upper tail P(X > x); relative error of the smaller tail about 1e-9 for
/// noncentrality 0 and 1e-12 above (1e-9 for more than 1e4 degrees of freedom).
///
/// x <= 0 gives 0 and 1. NaN for parameters outside their domain. For a noncentrality the tails are 0 and 1
/// also where df1 x / df2 is below 2.2e-288, and 1 and 0 where df2 / (df1 x) is (with df2 < 2: below
/// 2.2e-308); degrees of freedom below 2e-100 count as that.
/// Method: the incomplete beta pair at df1 x / (df1 x + df2), see BetaCdf(); for a noncentrality its Poisson
/// mixture, D. Benton and K. Krishnamoorthy, Computing discrete mixtures of continuous distributions, 2003.
ZUL_API double FCdf(double x, double df1, double df2, double noncentrality, bool upper);
/// Array form: out[i] = FCdf(in[i], df1, df2, noncentrality, upper), see @ref array_forms.
ZUL_API void FCdf(double* out, const double* in, std::size_t count, double df1, double df2,
                  double noncentrality, bool upper);

/// The quantile: the x with P(X <= x) = p, for 0 <= p < 1. p = 0 gives 0; p = 1, p outside [0, 1], and
/// parameters outside their domain give NaN. A noncentrality below 2.2e-307, also a negative one, counts
/// as 0.
///
/// The tail at the result gives p back to 1e-9 for noncentrality 0, else to 1e-12 of p or of the result. A
/// quantile too large for a double is the largest double. With a noncentrality a quantile beyond 1e30 is NaN;
/// so it is where the search ends without a result, seen for a noncentrality from 1e8 to 1e9 with df2 below 0.1,
/// and for p below 1e-280.
/// Method: see BetaInvCdf(); for a noncentrality the secant method on the logit of the tail, from the guess
/// of P. B. Patnaik, The non-central chi-square and F-distributions and their applications, 1949.
ZUL_API double FInvCdf(double p, double df1, double df2, double noncentrality);
/// Array form: out[i] = FInvCdf(in[i], df1, df2, noncentrality), see @ref array_forms.
ZUL_API void FInvCdf(double* out, const double* in, std::size_t count, double df1, double df2,
                     double noncentrality);

/// The quantile by the upper tail, for upper = true: the x with P(X > x) = p, for 0 < p <= 1. p = 0 gives
/// NaN, p = 1 gives 0. For upper = false FInvCdf(p, df1, df2, noncentrality); see @ref upper_quantiles.
///
/// The upper tail at the result gives p back, down to p = 1e-280, as the lower one does without the flag.
/// With a noncentrality a quantile beyond 1e30 is NaN.
ZUL_API double FInvCdf(double p, double df1, double df2, double noncentrality, bool upper);
/// Array form: out[i] = FInvCdf(in[i], df1, df2, noncentrality, upper), see @ref array_forms.
ZUL_API void FInvCdf(double* out, const double* in, std::size_t count, double df1, double df2,
                     double noncentrality, bool upper);

/// @}

/// @defgroup gamma Gamma distribution
/// @ingroup distributions
/// shape: 0 < shape <= 94906265. scale: a scale, not a rate, scale > 0. threshold: the lower end of the
/// support.
///
/// | | |
/// |---|---|
/// | symbols | @f$\alpha@f$ shape, @f$\beta@f$ scale, @f$\tau@f$ threshold |
/// | density | @f$\frac{z^{\alpha-1} e^{-z}}{\beta\, \Gamma(\alpha)}, \quad z = \frac{x-\tau}{\beta}@f$ |
/// | support | @f$x > \tau@f$ |
/// | mean | @f$\tau + \alpha\beta@f$ |
/// | variance | @f$\alpha\beta^2@f$ |
/// | mode | @f$\tau + \max(\alpha - 1, 0)\, \beta@f$ |
///
/// @see ISampler::SampleGamma(), v2::FitGamma(), v2::FitGamma3(), v2::RunKelGammaPPlot(), @ref chi_square,
/// @ref poisson
/// @{

/// The density z^(shape - 1) exp(-z) / (gamma(shape) scale), z = (x - threshold) / scale, for x > threshold,
/// and 0 for x <= threshold; relative error some roundings of the largest logarithm in it, 7e-11 for a shape
/// of 1e5.
///
/// 0 also where the density of z is below 2.2e-288. NaN for a shape outside its domain and a scale below 0.
/// scale = 0: std::runtime_error ("Float exception: divide by zero."). A density too large for a double:
/// std::runtime_error.
/// Method: the logarithm of the density by Stirling's series, M. Abramowitz and I. A. Stegun, Handbook of
/// Mathematical Functions, 1964, 6.1.41.
ZUL_API double GammaPdf(double x, double shape, double scale, double threshold);
/// Array form: out[i] = GammaPdf(in[i], shape, scale, threshold), see @ref array_forms.
ZUL_API void GammaPdf(double* out, const double* in, std::size_t count, double shape, double scale,
                      double threshold);

/// The lower tail P(X <= x), or the upper tail P(X > x); relative error of the smaller tail about 1e-9, up to
/// 2.3e-9 for a shape from 1e6 to 1.2e7 and x more than ten standard deviations away from the mean.
///
/// x <= threshold gives 0 and 1. NaN for a shape outside its domain and a scale below 0. scale = 0: an
/// exception as of GammaPdf(), std::invalid_argument for x = threshold.
/// Method: the incomplete gamma pair, W. Gautschi, A computational procedure for incomplete gamma
/// functions, 1979.
ZUL_API double GammaCdf(double x, double shape, double scale, double threshold, bool upper);
/// Array form: out[i] = GammaCdf(in[i], shape, scale, threshold, upper), see @ref array_forms.
ZUL_API void GammaCdf(double* out, const double* in, std::size_t count, double shape, double scale,
                      double threshold, bool upper);

/// The quantile: the x with P(X <= x) = p, for 0 <= p < 1. p = 1, p outside [0, 1], and for p > 0 a shape
/// outside its domain give NaN.
///
/// Deliberate: 0, and not the threshold, for p = 0 and where (x - threshold) / scale is below the smallest
/// double. Otherwise the tail at the result gives p back to 1e-9, or to the error of the tail where that is
/// larger.
/// Method: A. R. DiDonato and A. H. Morris, Computation of the incomplete gamma function ratios and their
/// inverse, 1986.
ZUL_API double GammaInvCdf(double p, double shape, double scale, double threshold);
/// Array form: out[i] = GammaInvCdf(in[i], shape, scale, threshold), see @ref array_forms.
ZUL_API void GammaInvCdf(double* out, const double* in, std::size_t count, double shape, double scale,
                         double threshold);

/// The quantile by the upper tail, for upper = true: the x with P(X > x) = p, for 0 < p <= 1. p = 0 gives
/// NaN. Deliberate: p = 1 gives 0, and not the threshold. For upper = false GammaInvCdf(p, shape, scale,
/// threshold); see @ref upper_quantiles.
///
/// The upper tail at the result gives p back, down to p = 1e-280, as the lower one does without the flag.
ZUL_API double GammaInvCdf(double p, double shape, double scale, double threshold, bool upper);
/// Array form: out[i] = GammaInvCdf(in[i], shape, scale, threshold, upper), see @ref array_forms.
ZUL_API void GammaInvCdf(double* out, const double* in, std::size_t count, double shape, double scale,
                         double threshold, bool upper);

/// @}

/// @defgroup geometric Geometric distribution
/// @ingroup distributions
/// The number of trials up to and including the first success: 1, 2, ... prob: the probability of success of
/// a trial, 0 <= prob <= 1.
///
/// | | |
/// |---|---|
/// | symbols | @f$p@f$ prob |
/// | probability | @f$(1-p)^{x-1} p@f$ |
/// | support | @f$x = 1, 2, \ldots@f$ |
/// | mean | @f$1/p@f$ |
/// | variance | @f$(1-p)/p^2@f$ |
/// | mode | 1 |
///
/// @see ISampler::SampleNegBinomialTrials(), @ref negative_binomial, of which it is the case of one success
/// @{

/// The probability P(X = x) = (1 - prob)^(x - 1) prob; relative error some roundings of its logarithm.
///
/// 0 for an x that is not a whole number of 1 or more. prob outside [0, 1] gives what the formula gives; a
/// power too large for a double: std::runtime_error ("float overflow").
ZUL_API double GeometricPdf(double x, double prob);
/// Array form: out[i] = GeometricPdf(in[i], prob), see @ref array_forms.
ZUL_API void GeometricPdf(double* out, const double* in, std::size_t count, double prob);

/// The lower tail P(X <= x) = 1 - (1 - prob)^x, or the upper tail P(X >= x) = (1 - prob)^(x - 1), which
/// includes the point; relative error some roundings of the logarithm of the power.
///
/// Deliberate: x is not rounded, so that both tails vary continuously from 1 on. x < 1 gives a
/// lower tail of 0, x <= 1 an upper tail of 1. prob outside [0, 1]: as GeometricPdf(), and prob > 1 with an x
/// that is not whole std::invalid_argument.
ZUL_API double GeometricCdf(double x, double prob, bool upper);
/// Array form: out[i] = GeometricCdf(in[i], prob, upper), see @ref array_forms.
ZUL_API void GeometricCdf(double* out, const double* in, std::size_t count, double prob, bool upper);

/// The quantile: the smallest whole number k with P(X <= k) >= p, for 0 <= p < 1. p <= prob gives 1.
///
/// NaN for p within 1e-12 of 1 or above, for prob below 1e-30 and wherever the logarithms of 1 - p and 1 -
/// prob fail. For k above 2^53 the nearest double to log(1 - p) / log(1 - prob), rounded up.
ZUL_API double GeometricInvCdf(double p, double prob);
/// Array form: out[i] = GeometricInvCdf(in[i], prob), see @ref array_forms.
ZUL_API void GeometricInvCdf(double* out, const double* in, std::size_t count, double prob);

/// The quantile by the upper tail, for upper = true: the smallest whole number k >= 1 with (1 - prob)^k <= p,
/// for 0 < p <= 1. p = 0 gives NaN, p = 1 gives 1. For upper = false GeometricInvCdf(p, prob); see @ref
/// upper_quantiles.
///
/// There is a quantile for the smallest p, too: the neighbourhood of 1 without one is that of the form
/// without the flag alone.
ZUL_API double GeometricInvCdf(double p, double prob, bool upper);
/// Array form: out[i] = GeometricInvCdf(in[i], prob, upper), see @ref array_forms.
ZUL_API void GeometricInvCdf(double* out, const double* in, std::size_t count, double prob, bool upper);

/// @}

/// @defgroup half_normal Half-normal distribution
/// @ingroup distributions
/// X = threshold + |Z| with Z normal of mean 0 and standard deviation scale, scale > 0; threshold: where
/// the distribution begins.
///
/// | | |
/// |---|---|
/// | symbols | @f$\sigma@f$ scale, @f$\tau@f$ threshold |
/// | density | @f$\frac{1}{\sigma} \sqrt{\frac{2}{\pi}}\, e^{-(x-\tau)^2 / 2\sigma^2}@f$ |
/// | support | @f$x \ge \tau@f$ |
/// | mean | @f$\tau + \sigma \sqrt{2/\pi}@f$ |
/// | variance | @f$\sigma^2 (1 - 2/\pi)@f$ |
/// | mode | @f$\tau@f$ |
///
/// @see @ref normal
/// @{

/// The density 2 NormalPdf(x, threshold, scale) for x >= threshold, and 0 for x < threshold. Failures as
/// NormalPdf().
ZUL_API double HalfNormalPdf(double x, double scale, double threshold);
/// Array form: out[i] = HalfNormalPdf(in[i], scale, threshold), see @ref array_forms.
ZUL_API void HalfNormalPdf(double* out, const double* in, std::size_t count, double scale, double threshold);

/// The lower tail P(X <= x) = 2 NormalCdf(x, threshold, scale, false) - 1, or the upper tail P(X > x),
/// twice the normal one.
///
/// x < threshold gives 0 and 1. Relative error of the upper tail about 1e-9; the lower tail loses digits by
/// cancellation below 1e-6. Failures as NormalCdf().
ZUL_API double HalfNormalCdf(double x, double scale, double threshold, bool upper);
/// Array form: out[i] = HalfNormalCdf(in[i], scale, threshold, upper), see @ref array_forms.
ZUL_API void HalfNormalCdf(double* out, const double* in, std::size_t count, double scale, double threshold,
                           bool upper);

/// The quantile NormalInvCdf((p + 1) / 2, threshold, scale), for 0 <= p < 1; accuracy as there. p = 0 gives
/// exactly the threshold, p = 1 NaN.
ZUL_API double HalfNormalInvCdf(double p, double scale, double threshold);
/// Array form: out[i] = HalfNormalInvCdf(in[i], scale, threshold), see @ref array_forms.
ZUL_API void HalfNormalInvCdf(double* out, const double* in, std::size_t count, double scale,
                              double threshold);

/// The quantile by the upper tail, for upper = true: the x with P(X > x) = p, which is NormalInvCdf(p / 2,
/// threshold, scale, true), for 0 < p <= 1. p = 0 gives NaN, p = 1 exactly the threshold. For upper = false
/// HalfNormalInvCdf(p, scale, threshold); see @ref upper_quantiles.
///
/// NaN for p below 8.4e-284.
ZUL_API double HalfNormalInvCdf(double p, double scale, double threshold, bool upper);
/// Array form: out[i] = HalfNormalInvCdf(in[i], scale, threshold, upper), see @ref array_forms.
ZUL_API void HalfNormalInvCdf(double* out, const double* in, std::size_t count, double scale,
                              double threshold, bool upper);

/// @}

/// @defgroup hypergeometric Hypergeometric distribution
/// @ingroup distributions
/// The number of successes in a sample drawn without replacement. N: size of the population. M: successes in
/// it. n: size of the sample. 0 <= M <= N and 0 <= n <= N. X takes the whole numbers from max(0, M - N + n)
/// to min(M, n). A whole number is one within 1e-12 of its size.
///
/// | | |
/// |---|---|
/// | probability | @f$\binom{M}{x} \binom{N-M}{n-x} \Big/ \binom{N}{n}@f$ |
/// | support | @f$x = \max(0, M-N+n), \ldots, \min(M, n)@f$ |
/// | mean | @f$\frac{nM}{N}@f$ |
/// | variance | @f$n\, \frac{M}{N} \left(1 - \frac{M}{N}\right) \frac{N-n}{N-1}@f$ |
/// | mode | @f$\left\lfloor \frac{(n+1)(M+1)}{N+2} \right\rfloor@f$, and the number below it where the quotient is whole |
///
/// @see HypergeometricPValue(), ISampler::SampleHypergeometric(), IContingencyTable::GetFisher(),
/// @ref two_proportions, @ref binomial
/// @{

/// The probability P(X = x) = C(M, x) C(N - M, n - x) / C(N, n) with the binomial coefficients C; relative
/// error as of the tails.
///
/// 0 for an x that is not a whole number of the range of X, and for any x if N, M and n are outside their
/// domain.
/// Method: the saddle-point form, C. Loader, Fast and accurate computation of binomial probabilities, 2000.
ZUL_API double HypergeometricPdf(double x, int N, int M, int n);
/// Array form: out[i] = HypergeometricPdf(in[i], N, M, n), see @ref array_forms.
ZUL_API void HypergeometricPdf(double* out, const double* in, std::size_t count, int N, int M, int n);

/// The lower tail P(X <= x), or the upper tail P(X >= x), which includes the point; relative error of the
/// smaller tail at most 2e-13 down to 1e-50, 8e-13 down to 1e-250.
///
/// Between whole numbers the lower tail is that at the number below, the upper one that at the number above.
/// Below the range of X 0 and 1, beyond it 1 and 0; one of the two also where N, M and n are outside their
/// domain.
/// Method: sums of the saddle-point masses, or their Euler-Maclaurin integral.
ZUL_API double HypergeometricCdf(double x, int N, int M, int n, bool upper);
/// Array form: out[i] = HypergeometricCdf(in[i], N, M, n, upper), see @ref array_forms.
ZUL_API void HypergeometricCdf(double* out, const double* in, std::size_t count, int N, int M, int n,
                               bool upper);

/// The quantile: the smallest whole number k with P(X <= k) >= p, for 0 <= p <= 1. p = 0 and p >= 1 give the
/// ends of the range of X.
///
/// p above P(X <= k) by less than 1e-9 of P(X = k + 1) still gives k: a lower tail gives its x back. N = M
/// gives n, M = 0 gives 0, N = n gives M and n = 0 gives 0, whatever p is. Otherwise p < 0, and N, M and n
/// outside their domain: NaN, but for p = 0 and p >= 1.
/// Method: as BinomialInvCdf().
ZUL_API double HypergeometricInvCdf(double p, int N, int M, int n);
/// Array form: out[i] = HypergeometricInvCdf(in[i], N, M, n), see @ref array_forms.
ZUL_API void HypergeometricInvCdf(double* out, const double* in, std::size_t count, int N, int M, int n);

/// The quantile by the upper tail, for upper = true: the smallest whole number k with P(X > k) <= p, for 0 <=
/// p <= 1. p = 0 gives the largest number of the range of X, p = 1 the smallest. For upper = false
/// HypergeometricInvCdf(p, N, M, n); see @ref upper_quantiles.
///
/// p below P(X > k) by less than 1e-9 of P(X = k + 1) still gives k. Every p > 0 counts, also where the tail
/// underflows.
ZUL_API double HypergeometricInvCdf(double p, int N, int M, int n, bool upper);
/// Array form: out[i] = HypergeometricInvCdf(in[i], N, M, n, upper), see @ref array_forms.
ZUL_API void HypergeometricInvCdf(double* out, const double* in, std::size_t count, int N, int M, int n,
                                  bool upper);

/// @}

/// @defgroup integer_uniform Integer uniform (discrete uniform) distribution
/// @ingroup distributions
/// The whole numbers from a to b with equal probabilities, a <= b. "Whole" allows a relative error of
/// 1e-12.
///
/// | | |
/// |---|---|
/// | probability | @f$\frac{1}{b-a+1}@f$ |
/// | support | @f$x = a, a+1, \ldots, b@f$ |
/// | mean | @f$\frac{a+b}{2}@f$ |
/// | variance | @f$\frac{(b-a+1)^2 - 1}{12}@f$ |
/// | mode | none: all are equally probable |
///
/// @see ISampler::SampleIntegerUniform(), @ref uniform, @ref discrete
/// @{

/// The probability 1 / (b - a + 1) of a whole x from a to b; other x give 0.
ZUL_API double IntegerUniformPdf(double x, int a, int b);
/// Array form: out[i] = IntegerUniformPdf(in[i], a, b), see @ref array_forms.
ZUL_API void IntegerUniformPdf(double* out, const double* in, std::size_t count, int a, int b);

/// The lower tail P(X <= x), or the upper tail P(X >= x), which includes x itself.
///
/// Both are exact quotients of counts. x that is not whole gives the lower tail at the whole number below
/// it and the upper tail at the one above it.
ZUL_API double IntegerUniformCdf(double x, int a, int b, bool upper);
/// Array form: out[i] = IntegerUniformCdf(in[i], a, b, upper), see @ref array_forms.
ZUL_API void IntegerUniformCdf(double* out, const double* in, std::size_t count, int a, int b, bool upper);

/// The quantile ceil((b - a + 1) p + a - 1): the smallest whole number whose lower tail reaches p, for 0 <
/// p < 1.
///
/// p = 0 gives a and p = 1 gives b. The formula is computed as it stands, so that at a p which is a lower tail
/// its rounding may give the next number; p > 0 gives at least a. p outside [0, 1] is extrapolated; p that is
/// NaN gives NaN.
ZUL_API double IntegerUniformInvCdf(double p, int a, int b);
/// Array form: out[i] = IntegerUniformInvCdf(in[i], a, b), see @ref array_forms.
ZUL_API void IntegerUniformInvCdf(double* out, const double* in, std::size_t count, int a, int b);

/// The quantile by the upper tail, for upper = true: ceil(b - (b - a + 1) p), but at least a, for 0 < p < 1.
/// p = 0 gives b, p = 1 gives a. For upper = false IntegerUniformInvCdf(p, a, b); see @ref upper_quantiles.
///
/// The formula is computed as it stands; from p = 0.5 on it is that of the lower tail 1 - p.
ZUL_API double IntegerUniformInvCdf(double p, int a, int b, bool upper);
/// Array form: out[i] = IntegerUniformInvCdf(in[i], a, b, upper), see @ref array_forms.
ZUL_API void IntegerUniformInvCdf(double* out, const double* in, std::size_t count, int a, int b, bool upper);

/// @}

/// @defgroup lambda Tukey lambda distribution
/// @ingroup distributions
/// Defined by its quantile function. lambda: the shape; the support is |z| <= 1 / lambda for lambda > 0 and
/// has no ends for lambda <= 0. location: the median; scale > 0. z = (x - location) / scale. |lambda| <=
/// 1e-12 is the logistic distribution; lambda within 1e-12 of 1 or 2 is uniform.
/// Source: J. W. Tukey, The practical relationship between the common transformations of percentages or
/// fractions and of amounts, 1960.
///
/// | | |
/// |---|---|
/// | symbols | @f$\mu@f$ location, @f$\sigma@f$ scale, @f$\lambda@f$ lambda |
/// | quantile | @f$\mu + \sigma\, \frac{p^\lambda - (1-p)^\lambda}{\lambda}@f$ |
/// | support | @f$\lvert x - \mu \rvert \le \sigma / \lambda@f$ for lambda > 0, else every x |
/// | mean | @f$\mu@f$ for lambda > -1 |
/// | variance | @f$\frac{2\sigma^2}{\lambda^2} \left(\frac{1}{2\lambda+1} - \frac{\Gamma(\lambda+1)^2}{\Gamma(2\lambda+2)}\right)@f$ for lambda > -1/2; @f$\pi^2 \sigma^2 / 3@f$ for lambda = 0 |
/// | mode | @f$\mu@f$ for lambda < 1 and lambda > 2; both ends of the support for 1 < lambda < 2 |
///
/// @see ISampler::SampleLambda(), @ref logistic, @ref uniform
/// @{

/// The density 1 / (u^(lambda - 1) + (1 - u)^(lambda - 1)) / scale with u = LambdaCdf(x, ..., false).
///
/// 0 outside the support and at its ends, and where u is 0. Error: what that of u makes, see LambdaCdf().
/// Deliberate: a density of 1.23456e30 or more for scale 1, as about the centre for lambda >= 102, is not
/// divided by the scale. scale = 0, and a density too large for a double (about the centre for lambda > 1000):
/// std::runtime_error. |lambda| <= 1e-12: an x that is NaN may give 0, as of LogisticPdf().
ZUL_API double LambdaPdf(double x, double lambda, double location, double scale);
/// Array form: out[i] = LambdaPdf(in[i], lambda, location, scale), see @ref array_forms.
ZUL_API void LambdaPdf(double* out, const double* in, std::size_t count, double lambda, double location,
                       double scale);

/// The lower tail u = P(X <= x), the solution of (u^lambda - (1 - u)^lambda) / lambda = z, or the upper
/// tail P(X > x), the same with z negated.
///
/// Outside the support 0 and 1. For lambda < 0 the smallest tail told from 0 is exp(690 / lambda), or
/// 1e-300 when that is less; for lambda < -990 the tails are 1/2 for every x. Error for |lambda| <= 1000:
/// 1e-12 of u, and in z 1e-12 of it or 1e-30, the larger one. |z| < 1e-30 thus counts as 0, which is far off
/// where the density is large: z = 1e-40 for lambda = 200 gives 0.5 where u is 0.648.
/// Method: false position, M. Dowell and P. Jarratt, A modified regula falsi method for computing the root
/// of an equation, 1971; tails below 1e-17 by (1 + lambda z)^(1 / lambda).
ZUL_API double LambdaCdf(double x, double lambda, double location, double scale, bool upper);
/// Array form: out[i] = LambdaCdf(in[i], lambda, location, scale, upper), see @ref array_forms.
ZUL_API void LambdaCdf(double* out, const double* in, std::size_t count, double lambda, double location,
                       double scale, bool upper);

/// The quantile location + scale (p^lambda - (1 - p)^lambda) / lambda, for 0 <= p <= 1 and lambda > 0, or 0
/// < p < 1.
///
/// lambda <= 0: p = 0 and p = 1 throw std::invalid_argument ("zero raised to a negative power"; for
/// |lambda| <= 1e-12 std::runtime_error, "float overflow"), a result too large for a double
/// std::runtime_error ("float overflow"). Deliberate: a quantile for location 0 and scale 1 that is 1.23456e30
/// or more is returned as it is, whatever they are; one of -1.23456e30 or less is scaled and moved.
ZUL_API double LambdaInvCdf(double p, double lambda, double location, double scale);
/// Array form: out[i] = LambdaInvCdf(in[i], lambda, location, scale), see @ref array_forms.
ZUL_API void LambdaInvCdf(double* out, const double* in, std::size_t count, double lambda, double location,
                          double scale);

/// The quantile by the upper tail, for upper = true: location - scale (p^lambda - (1 - p)^lambda) / lambda,
/// for 0 <= p <= 1 and lambda > 0, or 0 < p < 1. For upper = false LambdaInvCdf(p, lambda, location, scale);
/// see @ref upper_quantiles.
///
/// lambda <= 0: p = 0 and p = 1 throw as they do without the flag. A quantile for p < 0.5 is scaled and
/// moved, however large it is.
ZUL_API double LambdaInvCdf(double p, double lambda, double location, double scale, bool upper);
/// Array form: out[i] = LambdaInvCdf(in[i], lambda, location, scale, upper), see @ref array_forms.
ZUL_API void LambdaInvCdf(double* out, const double* in, std::size_t count, double lambda, double location,
                          double scale, bool upper);

/// @}

/// @defgroup laplace Laplace distribution
/// @ingroup distributions
/// location: the median; scale: the mean of |X - location|, scale > 0. z = (x - location) / scale.
///
/// | | |
/// |---|---|
/// | symbols | @f$\mu@f$ location, @f$\sigma@f$ scale |
/// | density | @f$\frac{1}{2\sigma} e^{-\lvert x-\mu \rvert / \sigma}@f$ |
/// | support | @f$-\infty < x < \infty@f$ |
/// | mean | @f$\mu@f$ |
/// | variance | @f$2\sigma^2@f$ |
/// | mode | @f$\mu@f$ |
///
/// @see ISampler::SampleLaplace(), @ref exponential
/// @{

/// The density exp(-|z|) / (2 scale); 0 for |z| > 709.78.
///
/// Any failure of the computation, among them scale = 0, an x that is NaN, and scale < 0 with |z| > 709.78,
/// gives NaN.
ZUL_API double LaplacePdf(double x, double location, double scale);
/// Array form: out[i] = LaplacePdf(in[i], location, scale), see @ref array_forms.
ZUL_API void LaplacePdf(double* out, const double* in, std::size_t count, double location, double scale);

/// The lower tail P(X <= x), or the upper tail P(X > x): exp(z) / 2 on the near side of the location, with
/// z negated for the upper tail, and 1 minus that on the far side; relative error some roundings.
///
/// scale = 0: std::runtime_error, or std::invalid_argument at x = location.
ZUL_API double LaplaceCdf(double x, double location, double scale, bool upper);
/// Array form: out[i] = LaplaceCdf(in[i], location, scale, upper), see @ref array_forms.
ZUL_API void LaplaceCdf(double* out, const double* in, std::size_t count, double location, double scale,
                        bool upper);

/// The quantile location + scale log(2 p), or location - scale log(2 - 2 p) for p > 0.5, for 0 < p < 1.
///
/// p = 0 and p = 1 give NaN; |p - 0.5| <= 5e-13 gives the location. Other p: std::invalid_argument.
ZUL_API double LaplaceInvCdf(double p, double location, double scale);
/// Array form: out[i] = LaplaceInvCdf(in[i], location, scale), see @ref array_forms.
ZUL_API void LaplaceInvCdf(double* out, const double* in, std::size_t count, double location, double scale);

/// The quantile by the upper tail, for upper = true: location - scale log(2 p), or location + scale log(2 - 2
/// p) for p > 0.5, for 0 < p < 1. p = 0 and p = 1 give NaN. For upper = false LaplaceInvCdf(p, location,
/// scale); see @ref upper_quantiles.
ZUL_API double LaplaceInvCdf(double p, double location, double scale, bool upper);
/// Array form: out[i] = LaplaceInvCdf(in[i], location, scale, upper), see @ref array_forms.
ZUL_API void LaplaceInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                           bool upper);

/// @}

/// @defgroup largest_extreme_value Largest extreme value distribution
/// @ingroup distributions
/// The Gumbel distribution of maxima. location: the mode; scale > 0. e = exp(-(x - location) / scale).
///
/// | | |
/// |---|---|
/// | symbols | @f$\mu@f$ location, @f$\sigma@f$ scale |
/// | density | @f$\frac{1}{\sigma} e^{-z - e^{-z}}, \quad z = \frac{x-\mu}{\sigma}@f$ |
/// | support | @f$-\infty < x < \infty@f$ |
/// | mean | @f$\mu + \gamma\sigma@f$, @f$\gamma = 0.5772\ldots@f$ |
/// | variance | @f$\pi^2 \sigma^2 / 6@f$ |
/// | mode | @f$\mu@f$ |
///
/// @see ISampler::SampleLargestExtremeValue(), v2::FitLargestExtremeValue(),
/// v2::RunKelLargestExtremeValuePPlot(), @ref smallest_extreme_value
/// @{

/// The density e exp(-e) / scale; 0 where e overflows.
///
/// scale = 0: std::runtime_error, or std::invalid_argument at x = location.
ZUL_API double LargestExtremeValuePdf(double x, double location, double scale);
/// Array form: out[i] = LargestExtremeValuePdf(in[i], location, scale), see @ref array_forms.
ZUL_API void LargestExtremeValuePdf(double* out, const double* in, std::size_t count, double location,
                                    double scale);

/// The lower tail exp(-e) = P(X <= x), or the upper tail 1 - exp(-e) = P(X > x); 0 and 1 where e overflows.
///
/// Relative error: e roundings for the lower tail, 1e-13 for the upper one, which is 0 for e < 2e-288.
/// Failures as LargestExtremeValuePdf().
ZUL_API double LargestExtremeValueCdf(double x, double location, double scale, bool upper);
/// Array form: out[i] = LargestExtremeValueCdf(in[i], location, scale, upper), see @ref array_forms.
ZUL_API void LargestExtremeValueCdf(double* out, const double* in, std::size_t count, double location,
                                    double scale, bool upper);

/// The quantile location - scale log(-log(p)), for 0 < p < 1.
///
/// p = 0 and p = 1: std::runtime_error ("float overflow"). Other p: std::invalid_argument.
ZUL_API double LargestExtremeValueInvCdf(double p, double location, double scale);
/// Array form: out[i] = LargestExtremeValueInvCdf(in[i], location, scale), see @ref array_forms.
ZUL_API void LargestExtremeValueInvCdf(double* out, const double* in, std::size_t count, double location,
                                       double scale);

/// The quantile by the upper tail, for upper = true: location - scale log(-log(1 - p)), for 0 < p < 1. p = 0
/// and p = 1: std::runtime_error ("float overflow"). For upper = false LargestExtremeValueInvCdf(p, location,
/// scale); see @ref upper_quantiles.
ZUL_API double LargestExtremeValueInvCdf(double p, double location, double scale, bool upper);
/// Array form: out[i] = LargestExtremeValueInvCdf(in[i], location, scale, upper), see @ref array_forms.
ZUL_API void LargestExtremeValueInvCdf(double* out, const double* in, std::size_t count, double location,
                                       double scale, bool upper);

/// @}

/// @defgroup logistic Logistic distribution
/// @ingroup distributions
/// location: the mean; scale: the standard deviation times sqrt(3) / pi, scale > 0. e = exp(-(x - location)
/// / scale).
///
/// | | |
/// |---|---|
/// | symbols | @f$\mu@f$ location, @f$\sigma@f$ scale |
/// | density | @f$\frac{e^{-z}}{\sigma (1 + e^{-z})^2}, \quad z = \frac{x-\mu}{\sigma}@f$ |
/// | support | @f$-\infty < x < \infty@f$ |
/// | mean | @f$\mu@f$ |
/// | variance | @f$\pi^2 \sigma^2 / 3@f$ |
/// | mode | @f$\mu@f$ |
///
/// @see ISampler::SampleLogistic(), v2::FitLogistic(), v2::RunKelLogisticPPlot(), @ref log_logistic
/// @{

/// The density 1 / (1/e + 2 + e) / scale; 0 where an exponential overflows.
///
/// Any failure of the computation, among them scale = 0 and an x that is NaN, gives 0.
ZUL_API double LogisticPdf(double x, double location, double scale);
/// Array form: out[i] = LogisticPdf(in[i], location, scale), see @ref array_forms.
ZUL_API void LogisticPdf(double* out, const double* in, std::size_t count, double location, double scale);

/// The lower tail 1 / (1 + e) = P(X <= x), or the upper tail e / (1 + e) = P(X > x); 0 and 1 where e
/// overflows. Relative error of either some roundings.
///
/// scale = 0: std::runtime_error, or std::invalid_argument at x = location.
ZUL_API double LogisticCdf(double x, double location, double scale, bool upper);
/// Array form: out[i] = LogisticCdf(in[i], location, scale, upper), see @ref array_forms.
ZUL_API void LogisticCdf(double* out, const double* in, std::size_t count, double location, double scale,
                         bool upper);

/// The quantile location + scale log(p / (1 - p)), for 0 < p < 1.
///
/// |p - 0.5| <= 5e-13 gives the location. p = 0 and p = 1: std::runtime_error ("float overflow"). Other p:
/// std::invalid_argument.
ZUL_API double LogisticInvCdf(double p, double location, double scale);
/// Array form: out[i] = LogisticInvCdf(in[i], location, scale), see @ref array_forms.
ZUL_API void LogisticInvCdf(double* out, const double* in, std::size_t count, double location, double scale);

/// The quantile by the upper tail, for upper = true: location + scale log((1 - p) / p), for 0 < p < 1. p = 0
/// and p = 1: std::runtime_error ("float overflow"). For upper = false LogisticInvCdf(p, location, scale);
/// see @ref upper_quantiles.
ZUL_API double LogisticInvCdf(double p, double location, double scale, bool upper);
/// Array form: out[i] = LogisticInvCdf(in[i], location, scale, upper), see @ref array_forms.
ZUL_API void LogisticInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                            bool upper);

/// @}

/// @defgroup log_logistic Log-logistic distribution
/// @ingroup distributions
/// log(X - threshold) is logistic with this location and scale, scale > 0; threshold: where the
/// distribution begins.
///
/// | | |
/// |---|---|
/// | symbols | @f$\mu@f$ location, @f$\sigma@f$ scale, @f$\tau@f$ threshold |
/// | density | @f$\frac{e^{-z}}{\sigma (x-\tau) (1 + e^{-z})^2}, \quad z = \frac{\ln(x-\tau)-\mu}{\sigma}@f$ |
/// | support | @f$x > \tau@f$ |
/// | mean | @f$\tau + e^\mu \frac{\pi\sigma}{\sin \pi\sigma}@f$ for scale < 1 |
/// | variance | @f$e^{2\mu} \left(\frac{2\pi\sigma}{\sin 2\pi\sigma} - \left(\frac{\pi\sigma}{\sin \pi\sigma}\right)^2\right)@f$ for scale < 1/2 |
/// | mode | @f$\tau + e^\mu \left(\frac{1-\sigma}{1+\sigma}\right)^\sigma@f$ for scale < 1, else the threshold |
///
/// @see ISampler::SampleLogLogistic(), v2::FitLogLogistic(), v2::FitLogLogistic3(),
/// v2::RunKelLogLogisticPPlot(), @ref logistic
/// @{

/// The density LogisticPdf(log(x - threshold), location, scale) / (x - threshold) for x > threshold, else
/// 0; 0 where LogisticPdf() is.
ZUL_API double LogLogisticPdf(double x, double location, double scale, double threshold);
/// Array form: out[i] = LogLogisticPdf(in[i], location, scale, threshold), see @ref array_forms.
ZUL_API void LogLogisticPdf(double* out, const double* in, std::size_t count, double location, double scale,
                            double threshold);

/// The lower tail P(X <= x), or the upper tail P(X > x): LogisticCdf() at log(x - threshold). x <=
/// threshold gives 0 and 1. scale = 0: std::runtime_error or std::invalid_argument.
ZUL_API double LogLogisticCdf(double x, double location, double scale, double threshold, bool upper);
/// Array form: out[i] = LogLogisticCdf(in[i], location, scale, threshold, upper), see @ref array_forms.
ZUL_API void LogLogisticCdf(double* out, const double* in, std::size_t count, double location, double scale,
                            double threshold, bool upper);

/// The quantile threshold + exp(q), q = LogisticInvCdf(p, location, scale), for 0 < p < 1; fails as that
/// function.
///
/// exp(q) too large for a double: std::runtime_error ("float overflow"). Deliberate: a q of 1.23456e30 or
/// more is returned as it is.
ZUL_API double LogLogisticInvCdf(double p, double location, double scale, double threshold);
/// Array form: out[i] = LogLogisticInvCdf(in[i], location, scale, threshold), see @ref array_forms.
ZUL_API void LogLogisticInvCdf(double* out, const double* in, std::size_t count, double location,
                               double scale, double threshold);

/// The quantile by the upper tail, for upper = true: threshold + exp(q), q = LogisticInvCdf(p, location,
/// scale, true), for 0 < p < 1; fails as that function, and as the form without the flag where exp(q) is too
/// large. For upper = false LogLogisticInvCdf(p, location, scale, threshold); see @ref upper_quantiles.
ZUL_API double LogLogisticInvCdf(double p, double location, double scale, double threshold, bool upper);
/// Array form: out[i] = LogLogisticInvCdf(in[i], location, scale, threshold, upper), see @ref array_forms.
ZUL_API void LogLogisticInvCdf(double* out, const double* in, std::size_t count, double location,
                               double scale, double threshold, bool upper);

/// @}

/// @defgroup log_normal Lognormal distribution
/// @ingroup distributions
/// log(X - threshold) is normal; location, scale: the mean and the standard deviation of that logarithm,
/// scale > 0; threshold: where the distribution begins.
///
/// | | |
/// |---|---|
/// | symbols | @f$\mu@f$ location, @f$\sigma@f$ scale, @f$\tau@f$ threshold |
/// | density | @f$\frac{1}{\sqrt{2\pi}\, \sigma (x-\tau)} e^{-z^2/2}, \quad z = \frac{\ln(x-\tau)-\mu}{\sigma}@f$ |
/// | support | @f$x > \tau@f$ |
/// | mean | @f$\tau + e^{\mu + \sigma^2/2}@f$ |
/// | variance | @f$(e^{\sigma^2} - 1)\, e^{2\mu + \sigma^2}@f$ |
/// | mode | @f$\tau + e^{\mu - \sigma^2}@f$ |
///
/// @see ISampler::SampleLognormal(), v2::FitLogNormal(), v2::FitLogNormal3(), v2::RunKelLogNormalPPlot(),
/// @ref normal
/// @{

/// The density NormalPdf(log(x - threshold), location, scale) / (x - threshold) for x > threshold, else 0.
/// Failures as NormalPdf().
ZUL_API double LogNormalPdf(double x, double location, double scale, double threshold);
/// Array form: out[i] = LogNormalPdf(in[i], location, scale, threshold), see @ref array_forms.
ZUL_API void LogNormalPdf(double* out, const double* in, std::size_t count, double location, double scale,
                          double threshold);

/// The lower tail P(X <= x), or the upper tail P(X > x): NormalCdf() at log(x - threshold), with its
/// accuracy and its failures. x <= threshold gives 0 and 1.
ZUL_API double LogNormalCdf(double x, double location, double scale, double threshold, bool upper);
/// Array form: out[i] = LogNormalCdf(in[i], location, scale, threshold, upper), see @ref array_forms.
ZUL_API void LogNormalCdf(double* out, const double* in, std::size_t count, double location, double scale,
                          double threshold, bool upper);

/// The quantile threshold + exp(q), q = NormalInvCdf(p, location, scale), for 0 <= p < 1; NaN where q is
/// NaN.
///
/// p = 0 gives exactly the threshold. exp(q) too large for a double: std::runtime_error ("float overflow").
/// Deliberate: a q above 1.23456e30 is returned as it is.
ZUL_API double LogNormalInvCdf(double p, double location, double scale, double threshold);
/// Array form: out[i] = LogNormalInvCdf(in[i], location, scale, threshold), see @ref array_forms.
ZUL_API void LogNormalInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                             double threshold);

/// The quantile by the upper tail, for upper = true: threshold + exp(q), q = NormalInvCdf(p, location, scale,
/// true), for 0 < p <= 1; NaN where q is NaN, as for p = 0. p = 1 gives exactly the threshold. For upper =
/// false LogNormalInvCdf(p, location, scale, threshold); see @ref upper_quantiles.
ZUL_API double LogNormalInvCdf(double p, double location, double scale, double threshold, bool upper);
/// Array form: out[i] = LogNormalInvCdf(in[i], location, scale, threshold, upper), see @ref array_forms.
ZUL_API void LogNormalInvCdf(double* out, const double* in, std::size_t count, double location, double scale,
                             double threshold, bool upper);

/// @}

/// @defgroup negative_binomial Negative binomial distribution
/// @ingroup distributions
/// The number of trials up to and including the r-th success: r, r + 1, ... (not the number of failures).
/// prob: the probability of success of a trial, 0 < prob <= 1. r: successes, a whole number of 1 or more.
///
/// | | |
/// |---|---|
/// | symbols | @f$p@f$ prob |
/// | probability | @f$\binom{x-1}{r-1} p^r (1-p)^{x-r}@f$ |
/// | support | @f$x = r, r+1, \ldots@f$ |
/// | mean | @f$r/p@f$ |
/// | variance | @f$r(1-p)/p^2@f$ |
/// | mode | @f$1 + \lfloor (r-1)/p \rfloor@f$, and the number below it where @f$(r-1)/p@f$ is whole and r > 1 |
///
/// @see ISampler::SampleNegBinomialTrials(), ISampler::SampleNegBinomial(), which counts the failures,
/// @ref geometric, @ref binomial
/// @{

/// The probability P(X = x) = C(x - 1, r - 1) prob^r (1 - prob)^(x - r) with the binomial coefficient C;
/// relative error as of BinomialPdf().
///
/// 0 for an x that is not a whole number of r or more, and for an r that is not whole. r = 1 is
/// GeometricPdf(). Else prob outside [0, 1]: std::invalid_argument. x above 1e307: std::runtime_error.
/// Method: prob times the saddle-point mass of r - 1 successes in x - 1 trials, as BinomialPdf().
ZUL_API double NegBinomialPdf(double x, double prob, double r);
/// Array form: out[i] = NegBinomialPdf(in[i], prob, r), see @ref array_forms.
ZUL_API void NegBinomialPdf(double* out, const double* in, std::size_t count, double prob, double r);

/// The lower tail P(X <= x), the probability of r or more successes in x trials, or the upper tail P(X >= x),
/// that of at most r - 1 in x - 1 trials, which includes the point; relative error as of BinomialCdf().
///
/// x < r gives 0, x <= r gives 1. Deliberate: x is not rounded. Between whole numbers both tails are those at
/// the number below, and for r = 1 those of GeometricCdf(). NaN for prob outside [0, 1] and for x above
/// 2147000000, unless r = 1, but 1 for the lower tail where x - r rounds to x.
ZUL_API double NegBinomialCdf(double x, double prob, double r, bool upper);
/// Array form: out[i] = NegBinomialCdf(in[i], prob, r, upper), see @ref array_forms.
ZUL_API void NegBinomialCdf(double* out, const double* in, std::size_t count, double prob, double r,
                            bool upper);

/// The quantile: the smallest whole number k with P(X <= k) >= p, for 0 <= p < 1. p <= prob^r gives r.
///
/// NaN for p within 1e-12 of 1 or above, for p below 4e-284 but above prob^r, for prob below 1e-30 and where
/// the quantile is above 2147000000. r = 1 is GeometricInvCdf(). A prob or r outside its domain may also give
/// std::invalid_argument, and std::runtime_error where prob^r is too large for a double.
/// Method: false position on the lower tail from a Cornish-Fisher start, R. A. Fisher and E. A. Cornish, The
/// percentile points of distributions having known cumulants, 1960.
ZUL_API double NegBinomialInvCdf(double p, double prob, double r);
/// Array form: out[i] = NegBinomialInvCdf(in[i], prob, r), see @ref array_forms.
ZUL_API void NegBinomialInvCdf(double* out, const double* in, std::size_t count, double prob, double r);

/// The quantile by the upper tail, for upper = true: the smallest whole number k with P(X > k) <= p, for 0 <
/// p <= 1; r where P(X > r) <= p. p = 0 gives NaN, p = 1 gives r. For upper = false NegBinomialInvCdf(p,
/// prob, r); see @ref upper_quantiles.
///
/// P(X > k) is the probability of fewer than r successes in k trials; p counts down to 1e-280. NaN where the
/// quantile is above 2147000000.
ZUL_API double NegBinomialInvCdf(double p, double prob, double r, bool upper);
/// Array form: out[i] = NegBinomialInvCdf(in[i], prob, r, upper), see @ref array_forms.
ZUL_API void NegBinomialInvCdf(double* out, const double* in, std::size_t count, double prob, double r,
                               bool upper);

/// @}

/// @defgroup normal Normal distribution
/// @ingroup distributions
/// mean, sd: mean and standard deviation (not the variance), sd > 0.
///
/// | | |
/// |---|---|
/// | symbols | @f$\mu@f$ mean, @f$\sigma@f$ sd |
/// | density | @f$\frac{1}{\sqrt{2\pi}\, \sigma} e^{-(x-\mu)^2 / 2\sigma^2}@f$ |
/// | support | @f$-\infty < x < \infty@f$ |
/// | mean | @f$\mu@f$ |
/// | variance | @f$\sigma^2@f$ |
/// | mode | @f$\mu@f$ |
///
/// @see NormalPValue(), NormalCritValue(), ISampler::SampleNormal(), ISampler::SampleMVNormal(),
/// v2::FitNormal(), v2::RunKelNormalPPlot(), v1::RunKelNormalADTest(), @ref log_normal, @ref half_normal,
/// @ref t
/// @{

/// The density exp(-z^2 / 2) / (sqrt(2 pi) sd) with z = (x - mean) / sd; relative error about z^2 roundings.
///
/// 0 wherever the computation overflows or divides by zero: z^2 for a far x, sd = 0 at any x but the mean, and
/// also the density itself for sd below 1e-308 or its divisor for sd above 7e307. sd = 0 at the mean:
/// std::invalid_argument.
ZUL_API double NormalPdf(double x, double mean, double sd);
/// Array form: out[i] = NormalPdf(in[i], mean, sd), see @ref array_forms.
ZUL_API void NormalPdf(double* out, const double* in, std::size_t count, double mean, double sd);

/// The lower tail P(X <= x), or the upper tail P(X > x); relative error of the smaller tail about 1e-9.
///
/// x = mean gives exactly 0.5, whatever sd is. z = (x - mean) / sd above 36.29 in magnitude gives 0 for the far
/// tail. sd = 0 and x different from the mean: std::runtime_error ("Float exception: divide by zero."). z or
/// x - mean too large for a double: std::overflow_error.
/// Method: the incomplete gamma pair with shape 1/2, W. Gautschi, A computational procedure for incomplete
/// gamma functions, 1979.
ZUL_API double NormalCdf(double x, double mean, double sd, bool upper);
/// Array form: out[i] = NormalCdf(in[i], mean, sd, upper), see @ref array_forms.
ZUL_API void NormalCdf(double* out, const double* in, std::size_t count, double mean, double sd, bool upper);

/// The quantile: the x with P(X <= x) = p, for 4.2e-284 < p < 1; NaN for other p.
///
/// The relative error of the deviate (x - mean) / sd is at most 3e-9 for |p - 0.5| > 0.1, 6e-9 down to 0.03
/// and 2e-8 nearer the median. p = 0.5 gives exactly the mean. A NaN mean or sd gives NaN.
/// Method: the start of J. D. Beasley and S. G. Springer, Algorithm AS 111, 1977, refined by Newton steps on
/// the incomplete gamma function; for p < 1e-100 false position on the tail.
ZUL_API double NormalInvCdf(double p, double mean, double sd);
/// Array form: out[i] = NormalInvCdf(in[i], mean, sd), see @ref array_forms.
ZUL_API void NormalInvCdf(double* out, const double* in, std::size_t count, double mean, double sd);

/// The quantile by the upper tail, for upper = true: the x with P(X > x) = p, which lies as far above the
/// mean as the x of the lower tail p below it, for 4.2e-284 < p < 1; NaN for other p. For upper = false
/// NormalInvCdf(p, mean, sd); see @ref upper_quantiles.
///
/// Accuracy as without the flag.
ZUL_API double NormalInvCdf(double p, double mean, double sd, bool upper);
/// Array form: out[i] = NormalInvCdf(in[i], mean, sd, upper), see @ref array_forms.
ZUL_API void NormalInvCdf(double* out, const double* in, std::size_t count, double mean, double sd,
                          bool upper);

/// @}

/// @defgroup poisson Poisson distribution
/// @ingroup distributions
/// mean: the expected number, 0 < mean <= 94906265. A whole number is one within 1e-12 of its size.
///
/// | | |
/// |---|---|
/// | symbols | @f$\mu@f$ mean |
/// | probability | @f$\frac{\mu^x e^{-\mu}}{x!}@f$ |
/// | support | @f$x = 0, 1, \ldots@f$ |
/// | mean | @f$\mu@f$ |
/// | variance | @f$\mu@f$ |
/// | mode | @f$\lfloor \mu \rfloor@f$, and the number below it where the mean is whole |
///
/// @see ISampler::SamplePoisson(), @ref gamma, @ref binomial
/// @{

/// The probability P(X = x) = mean^x exp(-mean) / x!; relative error a few roundings of its logarithm.
///
/// 0 for an x that is not a whole number of 0 or more. Deliberate: 0, too, wherever the computation fails; so
/// for mean <= 0, even at x = 0, and for a mean that is NaN.
/// Method: the saddle-point form, C. Loader, Fast and accurate computation of binomial probabilities, 2000.
ZUL_API double PoissonPdf(double x, double mean);
/// Array form: out[i] = PoissonPdf(in[i], mean), see @ref array_forms.
ZUL_API void PoissonPdf(double* out, const double* in, std::size_t count, double mean);

/// The lower tail P(X <= x), or the upper tail P(X >= x), which includes the point; relative error of the
/// smaller tail about 1e-9, as of GammaCdf() with the shape x + 1, or x for the upper tail.
///
/// Between whole numbers the lower tail is that at the number below, the upper one that at the number above.
/// x < 0 gives 0 and 1; otherwise mean <= 0 gives 1 and, above x = 0, 0. NaN for a lower tail at
/// x of 94906265 or more and an upper one above that.
/// Method: the chi-square tails at 2 mean with 2 (x + 1) degrees of freedom, M. Abramowitz and I. A. Stegun,
/// Handbook of Mathematical Functions, 1964, 26.4.21.
ZUL_API double PoissonCdf(double x, double mean, bool upper);
/// Array form: out[i] = PoissonCdf(in[i], mean, upper), see @ref array_forms.
ZUL_API void PoissonCdf(double* out, const double* in, std::size_t count, double mean, bool upper);

/// The quantile: the smallest whole number k with P(X <= k) >= p, for 0 <= p < 1. p = 0 gives 0, whatever the
/// mean is.
///
/// p above P(X <= k) by less than 1e-9 of P(X = k + 1) still gives k: a lower tail gives its x back. p = 1, p
/// outside [0, 1], and for p > 0 a mean outside [0, 94906265] or a quantile above 94906264 give NaN.
/// Method: as BinomialInvCdf().
ZUL_API double PoissonInvCdf(double p, double mean);
/// Array form: out[i] = PoissonInvCdf(in[i], mean), see @ref array_forms.
ZUL_API void PoissonInvCdf(double* out, const double* in, std::size_t count, double mean);

/// The quantile by the upper tail, for upper = true: the smallest whole number k with P(X > k) <= p, for 0 <
/// p <= 1. p = 0 gives NaN, p = 1 gives 0. For upper = false PoissonInvCdf(p, mean); see @ref
/// upper_quantiles.
///
/// p below P(X > k) by less than 1e-9 of P(X = k + 1) still gives k. p counts down to 1e-280.
ZUL_API double PoissonInvCdf(double p, double mean, bool upper);
/// Array form: out[i] = PoissonInvCdf(in[i], mean, upper), see @ref array_forms.
ZUL_API void PoissonInvCdf(double* out, const double* in, std::size_t count, double mean, bool upper);

/// @}

/// @defgroup smallest_extreme_value Smallest extreme value distribution
/// @ingroup distributions
/// The Gumbel distribution of minima: -X has the largest extreme value distribution with the location
/// negated. location: the mode; scale > 0. e = exp((x - location) / scale).
///
/// | | |
/// |---|---|
/// | symbols | @f$\mu@f$ location, @f$\sigma@f$ scale |
/// | density | @f$\frac{1}{\sigma} e^{z - e^z}, \quad z = \frac{x-\mu}{\sigma}@f$ |
/// | support | @f$-\infty < x < \infty@f$ |
/// | mean | @f$\mu - \gamma\sigma@f$, @f$\gamma = 0.5772\ldots@f$ |
/// | variance | @f$\pi^2 \sigma^2 / 6@f$ |
/// | mode | @f$\mu@f$ |
///
/// @see ISampler::SampleSmallestExtremeValue(), v2::FitSmallestExtremeValue(),
/// v2::RunKelSmallestExtremeValuePPlot(), @ref largest_extreme_value, @ref weibull, whose logarithm it is
/// @{

/// The density e exp(-e) / scale; 0 where e overflows.
///
/// scale = 0: std::runtime_error, or std::invalid_argument at x = location.
ZUL_API double SmallestExtremeValuePdf(double x, double location, double scale);
/// Array form: out[i] = SmallestExtremeValuePdf(in[i], location, scale), see @ref array_forms.
ZUL_API void SmallestExtremeValuePdf(double* out, const double* in, std::size_t count, double location,
                                     double scale);

/// The lower tail 1 - exp(-e) = P(X <= x), or the upper tail exp(-e) = P(X > x); 1 and 0 where e overflows.
///
/// Relative error: 1e-13 for the lower tail, which is 0 for e < 2e-288, e roundings for the upper one.
/// Failures as SmallestExtremeValuePdf().
ZUL_API double SmallestExtremeValueCdf(double x, double location, double scale, bool upper);
/// Array form: out[i] = SmallestExtremeValueCdf(in[i], location, scale, upper), see @ref array_forms.
ZUL_API void SmallestExtremeValueCdf(double* out, const double* in, std::size_t count, double location,
                                     double scale, bool upper);

/// The quantile location + scale log(-log(1 - p)), for 0 < p < 1.
///
/// p = 0 and p = 1: std::runtime_error ("float overflow"). Other p: std::invalid_argument. Deliberate: a
/// quantile of -1.23456e30 or less comes with the opposite sign.
ZUL_API double SmallestExtremeValueInvCdf(double p, double location, double scale);
/// Array form: out[i] = SmallestExtremeValueInvCdf(in[i], location, scale), see @ref array_forms.
ZUL_API void SmallestExtremeValueInvCdf(double* out, const double* in, std::size_t count, double location,
                                        double scale);

/// The quantile by the upper tail, for upper = true: location + scale log(-log(p)), for 0 < p < 1. p = 0 and
/// p = 1: std::runtime_error ("float overflow"). For upper = false SmallestExtremeValueInvCdf(p, location,
/// scale); see @ref upper_quantiles.
///
/// Deliberate: a quantile of -1.23456e30 or less comes with the opposite sign.
ZUL_API double SmallestExtremeValueInvCdf(double p, double location, double scale, bool upper);
/// Array form: out[i] = SmallestExtremeValueInvCdf(in[i], location, scale, upper), see @ref array_forms.
ZUL_API void SmallestExtremeValueInvCdf(double* out, const double* in, std::size_t count, double location,
                                        double scale, bool upper);

/// @}

/// @defgroup t Student's t distribution
/// @ingroup distributions
/// df: degrees of freedom, df > 0; the central tails and quantiles take infinity too, the normal
/// distribution. noncentrality: the mean of the normal numerator; 0 is the central distribution. With a
/// noncentrality d: df/2 + d^2/2 + 4.3656 |d| <= 94906265.
///
/// | | |
/// |---|---|
/// | symbols | @f$\nu@f$ df, @f$\delta@f$ noncentrality |
/// | density | @f$\frac{\Gamma((\nu+1)/2)}{\sqrt{\nu\pi}\, \Gamma(\nu/2)} \left(1 + \frac{x^2}{\nu}\right)^{-(\nu+1)/2}@f$, central |
/// | support | @f$-\infty < x < \infty@f$ |
/// | mean | @f$\delta \sqrt{\frac{\nu}{2}}\, \frac{\Gamma((\nu-1)/2)}{\Gamma(\nu/2)}@f$ for df > 1 |
/// | variance | @f$\frac{\nu (1 + \delta^2)}{\nu - 2} - \text{mean}^2@f$ for df > 2 |
/// | mode | 0, central |
///
/// @see TPValue(), TCritValue(), TSidakCritValue(), ISampler::SampleT(), @ref one_sample_t,
/// @ref two_sample_t, @ref normal, @ref cauchy
/// @{

/// The density. For noncentrality 0 or x = 0: gamma((df + 1)/2) / (gamma(df/2) sqrt(df pi)) (1 +
/// x^2/df)^-((df + 1)/2) exp(-noncentrality^2/2), with a relative error of some roundings of the largest
/// logarithm in it.
///
/// Otherwise a power series in y = noncentrality x sqrt((df + 1) / (df + x^2)), to 2e-13 of the density, for
/// -1 <= y <= 1, and up to y = 100 for |noncentrality| <= 20. Elsewhere (F1 - F2) df / x, where F2 is the lower
/// tail at x, and F1 that at x sqrt((df + 2)/df) with df + 2 degrees of freedom: an error of about 1e-12 (2e-11
/// where TCdf() has 1e-11) of the density and of |df / x| times the smaller tail. Tails below 2.2e-288 count
/// as 0 there, so that the density far out is 0 although a double could hold it; NaN where a tail is.
///
/// df <= 0: std::invalid_argument for noncentrality 0 or x = 0; otherwise std::runtime_error for df = 0,
/// std::invalid_argument down to -2, and NaN from there on.
ZUL_API double TPdf(double x, double df, double noncentrality);
/// Array form: out[i] = TPdf(in[i], df, noncentrality), see @ref array_forms.
ZUL_API void TPdf(double* out, const double* in, std::size_t count, double df, double noncentrality);

/// The lower tail P(X <= x), or the upper tail P(X > x); relative error of the smaller tail about 1e-9 for
/// noncentrality 0 and otherwise 1e-12, or 1e-11 far out (|x| > 20 and df > 1e5) for a noncentrality of
/// some 0.1 whose sign is not that of x.
///
/// A larger noncentrality than the domain has gives 0 and 1, as a smaller one does, where that is certain,
/// else NaN. NaN for df <= 0.
/// Method: the incomplete beta pair, see BetaCdf(); R. V. Lenth, Algorithm AS 243: cumulative distribution
/// function of the non-central t distribution, 1989, summed as D. Benton and K. Krishnamoorthy, Computing
/// discrete mixtures of continuous distributions, 2003.
ZUL_API double TCdf(double x, double df, double noncentrality, bool upper);
/// Array form: out[i] = TCdf(in[i], df, noncentrality, upper), see @ref array_forms.
ZUL_API void TCdf(double* out, const double* in, std::size_t count, double df, double noncentrality,
                  bool upper);

/// The quantile: the x with P(X <= x) = p, for 0 < p < 1. p = 0, p = 1, p outside [0, 1], and parameters
/// outside their domain give NaN; so does, for noncentrality 0, a smaller tail below 1e-280.
///
/// Noncentrality 0: to 1e-13 of the quantile; p = 0.5 gives exactly 0. Otherwise the tail at the result gives
/// p back to 1e-12 of p or of the result, which lies in [-1e30, 1e30]; NaN where there is none.
/// Method: G. W. Hill, Algorithm 396: Student's t-quantiles, 1970; for a noncentrality the secant method on
/// the logit of the tail, from the guess of W. A. Jennett and B. L. Welch, The control of proportion
/// defective as judged by a single quality characteristic varying on a continuous scale, 1939.
ZUL_API double TInvCdf(double p, double df, double noncentrality);
/// Array form: out[i] = TInvCdf(in[i], df, noncentrality), see @ref array_forms.
ZUL_API void TInvCdf(double* out, const double* in, std::size_t count, double df, double noncentrality);

/// The quantile by the upper tail, for upper = true: the x with P(X > x) = p, for 0 < p < 1. p = 0 and p = 1
/// give NaN. For upper = false TInvCdf(p, df, noncentrality); see @ref upper_quantiles.
///
/// For noncentrality 0 the negative of the x of the lower tail p, so that p below 1e-280 gives NaN. Otherwise
/// the upper tail at the result gives p back to 1e-12 of p, down to 1e-280; NaN for a result outside [-1e30,
/// 1e30].
ZUL_API double TInvCdf(double p, double df, double noncentrality, bool upper);
/// Array form: out[i] = TInvCdf(in[i], df, noncentrality, upper), see @ref array_forms.
ZUL_API void TInvCdf(double* out, const double* in, std::size_t count, double df, double noncentrality,
                     bool upper);

/// @}

/// @defgroup triangular Triangular distribution
/// @ingroup distributions
/// The density is a triangle over [lower, upper] with its peak at mode, lower <= mode <= upper, lower <
/// upper.
///
/// | | |
/// |---|---|
/// | symbols | @f$a@f$ lower, @f$c@f$ mode, @f$b@f$ upper |
/// | density | @f$\frac{2(x-a)}{(c-a)(b-a)}@f$ up to the mode, @f$\frac{2(b-x)}{(b-c)(b-a)}@f$ above it |
/// | support | @f$a \le x \le b@f$ |
/// | mean | @f$\frac{a+b+c}{3}@f$ |
/// | variance | @f$\frac{a^2+b^2+c^2-ab-ac-bc}{18}@f$ |
/// | mode | @f$c@f$ |
///
/// @see ISampler::SampleTriangular(), @ref uniform
/// @{

/// The density 2 (x - lower) / ((mode - lower) (upper - lower)) up to the mode, 2 (upper - x) / ((upper -
/// mode) (upper - lower)) above it, 2 / (upper - lower) at it; 0 outside [lower, upper].
///
/// lower = mode = upper = x: std::runtime_error.
ZUL_API double TriangularPdf(double x, double lower, double mode, double upper);
/// Array form: out[i] = TriangularPdf(in[i], lower, mode, upper), see @ref array_forms.
ZUL_API void TriangularPdf(double* out, const double* in, std::size_t count, double lower, double mode,
                           double upper);

/// The lower tail P(X <= x), or for upperTail the upper tail P(X > x), which is the lower tail of the
/// mirrored problem; the smaller of them has all its digits.
ZUL_API double TriangularCdf(double x, double lower, double mode, double upper, bool upperTail);
/// Array form: out[i] = TriangularCdf(in[i], lower, mode, upper, upperTail), see @ref array_forms.
ZUL_API void TriangularCdf(double* out, const double* in, std::size_t count, double lower, double mode,
                           double upper, bool upperTail);

/// The quantile, for 0 <= p <= 1: lower + sqrt((upper - lower) (mode - lower) p) up to the tail at the
/// mode, above it upper - sqrt((upper - lower) (upper - mode) (1 - p)), formed so that it keeps its digits near a
/// lower end at or near 0. (mode - lower) / (upper - lower) p that underflows counts as 0.
///
/// p = 1 gives exactly upper. Other p: std::invalid_argument ("sqrt of a negative argument") where the root
/// is negative. lower = upper gives that point, with the mode above it std::runtime_error.
ZUL_API double TriangularInvCdf(double p, double lower, double mode, double upper);
/// Array form: out[i] = TriangularInvCdf(in[i], lower, mode, upper), see @ref array_forms.
ZUL_API void TriangularInvCdf(double* out, const double* in, std::size_t count, double lower, double mode,
                              double upper);

/// The quantile by the upper tail, for upperTail = true: upper - sqrt((upper - lower) (upper - mode) p) down
/// to the mode, below it lower + sqrt((upper - lower) (mode - lower) (1 - p)), for 0 <= p <= 1; formed so
/// that it keeps its digits near an upper end at or near 0. p = 0 gives exactly upper, p = 1 gives lower. For
/// upperTail = false TriangularInvCdf(p, lower, mode, upper); see @ref upper_quantiles.
///
/// Below the mode a p < 2^-54, which 1 - p has no digit of, gives the mode.
ZUL_API double TriangularInvCdf(double p, double lower, double mode, double upper, bool upperTail);
/// Array form: out[i] = TriangularInvCdf(in[i], lower, mode, upper, upperTail), see @ref array_forms.
ZUL_API void TriangularInvCdf(double* out, const double* in, std::size_t count, double lower, double mode,
                              double upper, bool upperTail);

/// @}

/// @defgroup uniform Uniform distribution
/// @ingroup distributions
/// The interval [a, b], a < b. These functions run without the floating-point frame, in the mode of the
/// caller: in the default mode nothing is thrown, a NaN x gives 0 as a density and NaN as a tail, a NaN p
/// gives NaN, a division by zero is infinite or NaN, and 1.23456e30 is a number like any other.
///
/// | | |
/// |---|---|
/// | density | @f$\frac{1}{b-a}@f$ |
/// | support | @f$a \le x \le b@f$ |
/// | mean | @f$\frac{a+b}{2}@f$ |
/// | variance | @f$\frac{(b-a)^2}{12}@f$ |
/// | mode | none: the density is the same everywhere |
///
/// @see ISampler::SampleUniform(), @ref integer_uniform, @ref triangular, @ref beta
/// @{

/// The density 1 / (b - a) for a <= x <= b, else 0.
ZUL_API double UniformPdf(double x, double a, double b);
/// Array form: out[i] = UniformPdf(in[i], a, b), see @ref array_forms.
ZUL_API void UniformPdf(double* out, const double* in, std::size_t count, double a, double b);

/// The lower tail (x - a) / (b - a) = P(X <= x), or the upper tail (b - x) / (b - a) = P(X > x).
///
/// x <= a gives 0 and 1, also for a = b; x >= b gives 1 and 0. b - a may be above the largest double.
ZUL_API double UniformCdf(double x, double a, double b, bool upper);
/// Array form: out[i] = UniformCdf(in[i], a, b, upper), see @ref array_forms.
ZUL_API void UniformCdf(double* out, const double* in, std::size_t count, double a, double b, bool upper);

/// The quantile (b - a) p + a, for 0 <= p <= 1; exactly a and b at the ends. Other p are extrapolated.
ZUL_API double UniformInvCdf(double p, double a, double b);
/// Array form: out[i] = UniformInvCdf(in[i], a, b), see @ref array_forms.
ZUL_API void UniformInvCdf(double* out, const double* in, std::size_t count, double a, double b);

/// The quantile by the upper tail, for upper = true: b - (b - a) p, for 0 <= p <= 1; exactly b and a at the
/// ends. For upper = false UniformInvCdf(p, a, b); see @ref upper_quantiles.
ZUL_API double UniformInvCdf(double p, double a, double b, bool upper);
/// Array form: out[i] = UniformInvCdf(in[i], a, b, upper), see @ref array_forms.
ZUL_API void UniformInvCdf(double* out, const double* in, std::size_t count, double a, double b, bool upper);

/// @}

/// @defgroup weibull Weibull distribution
/// @ingroup distributions
/// shape > 0; scale: the 63.2 % quantile of X - threshold, scale > 0; threshold: where the distribution
/// begins. z = (x - threshold) / scale.
///
/// | | |
/// |---|---|
/// | symbols | @f$k@f$ shape, @f$\beta@f$ scale, @f$\tau@f$ threshold |
/// | density | @f$\frac{k}{\beta} z^{k-1} e^{-z^k}, \quad z = \frac{x-\tau}{\beta}@f$ |
/// | support | @f$x > \tau@f$ |
/// | mean | @f$\tau + \beta\, \Gamma(1 + 1/k)@f$ |
/// | variance | @f$\beta^2 \left(\Gamma(1 + 2/k) - \Gamma(1 + 1/k)^2\right)@f$ |
/// | mode | @f$\tau + \beta \left(1 - 1/k\right)^{1/k}@f$ for shape > 1, else the threshold |
///
/// @see ISampler::SampleWeibull(), v2::FitWeibull(), v2::FitWeibull3(), v2::RunKelWeibullPPlot(),
/// v0::RunKelWeibullADTest(), @ref exponential, @ref smallest_extreme_value
/// @{

/// The density z^(shape - 1) exp(-z^shape) shape / scale for x > threshold, else 0, also at the threshold
/// itself.
///
/// Any failure of the computation gives NaN, among them a power of z that overflows, scale = 0 and an x
/// that is NaN.
ZUL_API double WeibullPdf(double x, double shape, double scale, double threshold);
/// Array form: out[i] = WeibullPdf(in[i], shape, scale, threshold), see @ref array_forms.
ZUL_API void WeibullPdf(double* out, const double* in, std::size_t count, double shape, double scale,
                        double threshold);

/// The lower tail 1 - exp(-z^shape) = P(X <= x), or the upper tail exp(-z^shape) = P(X > x).
///
/// x <= threshold gives 0 and 1; 1 and 0 where z^shape overflows. Relative error z^shape roundings for the
/// upper tail, 1e-13 for the lower one. scale = 0: std::runtime_error. scale < 0: std::invalid_argument for
/// a shape that is not whole.
ZUL_API double WeibullCdf(double x, double shape, double scale, double threshold, bool upper);
/// Array form: out[i] = WeibullCdf(in[i], shape, scale, threshold, upper), see @ref array_forms.
ZUL_API void WeibullCdf(double* out, const double* in, std::size_t count, double shape, double scale,
                        double threshold, bool upper);

/// The quantile threshold + scale (-log(1 - p))^(1 / shape), for 0 <= p < 1.
///
/// p = 0 gives exactly the threshold, p = 1 NaN. p > 1, and p < 0 for 1 / shape not whole:
/// std::invalid_argument. shape = 0, and a power too large for a double: std::runtime_error.
ZUL_API double WeibullInvCdf(double p, double shape, double scale, double threshold);
/// Array form: out[i] = WeibullInvCdf(in[i], shape, scale, threshold), see @ref array_forms.
ZUL_API void WeibullInvCdf(double* out, const double* in, std::size_t count, double shape, double scale,
                           double threshold);

/// The quantile by the upper tail, for upper = true: threshold + scale (-log(p))^(1 / shape), for 0 < p <= 1.
/// p = 0 gives NaN, p = 1 exactly the threshold. For upper = false WeibullInvCdf(p, shape, scale, threshold);
/// see @ref upper_quantiles.
ZUL_API double WeibullInvCdf(double p, double shape, double scale, double threshold, bool upper);
/// Array form: out[i] = WeibullInvCdf(in[i], shape, scale, threshold, upper), see @ref array_forms.
ZUL_API void WeibullInvCdf(double* out, const double* in, std::size_t count, double shape, double scale,
                           double threshold, bool upper);

/// @}

/// @defgroup discrete User-defined discrete distribution
/// @ingroup distributions
/// values, n: the n values that have a probability, in any order; the second array, of n doubles too,
/// belongs to them pair by pair. Of several equal keys (values; for the inverse cumulative probabilities)
/// the first pair counts; a pair whose key is NaN is left out. n <= 0 is an empty table. Nothing else is
/// checked: the probabilities need not add up to 1 nor the cumulative ones increase.
///
/// These functions run without the floating-point frame, in the mode of the caller, and 1.23456e30 is a
/// number like any other. Each call builds a sorted copy of the table, an array call once: std::bad_alloc
/// when there is no memory.
///
/// | | |
/// |---|---|
/// | symbols | @f$v_i@f$ the values, @f$p_i@f$ their probabilities |
/// | probability | @f$p_i@f$ at @f$x = v_i@f$ |
/// | support | the values |
/// | mean | @f$\sum p_i v_i@f$ |
/// | variance | @f$\sum p_i (v_i - \text{mean})^2@f$ |
/// | mode | the value with the largest probability |
///
/// @see ISampler::SampleDiscrete(), @ref integer_uniform
/// @{

/// The probability of x: that of the value equal to x, and 0 when there is none.
///
/// probabilities: the probability of each value. An empty table gives 0.
ZUL_API double DiscretePdf(double x, const double* values, const double* probabilities, int n);
/// Array form: out[i] = DiscretePdf(in[i], values, probabilities, n), see @ref array_forms.
ZUL_API void DiscretePdf(double* out, const double* in, std::size_t count, const double* values,
                         const double* probabilities, int n);

/// The lower tail P(X <= x), the cumulative probability of the largest value <= x, or the upper tail P(X >=
/// x), which includes the point: 1 minus the cumulative probability of the largest value < x.
///
/// cumulative: P(X <= value) for each value. x below all values gives 0 and 1, x above all values 1 and 0,
/// the smallest value itself 1 for the upper tail. An empty table, or an x that is NaN, gives NaN.
ZUL_API double DiscreteCdf(double x, const double* values, const double* cumulative, int n, bool upper);
/// Array form: out[i] = DiscreteCdf(in[i], values, cumulative, n, upper), see @ref array_forms.
ZUL_API void DiscreteCdf(double* out, const double* in, std::size_t count, const double* values,
                         const double* cumulative, int n, bool upper);

/// The quantile: the value of the smallest cumulative probability >= p.
///
/// cumulative: P(X <= value) for each value. Deliberate: a p above all of them gives the number 1, not a
/// value of the table. An empty table, or a p that is NaN, gives NaN.
ZUL_API double DiscreteInvCdf(double p, const double* values, const double* cumulative, int n);
/// Array form: out[i] = DiscreteInvCdf(in[i], values, cumulative, n), see @ref array_forms.
ZUL_API void DiscreteInvCdf(double* out, const double* in, std::size_t count, const double* values,
                            const double* cumulative, int n);

/// @}

/// @defgroup p_values P-values
/// @ingroup distributions
/// The p-value of a statistic for the side of the test. LowerTail: its lower tail. UpperTail: its upper tail.
/// TwoSided: twice the smaller of them for the continuous statistics, and a rule of their own for the two
/// exact tests. An alternative that is none of the three gives 0, unless a function says otherwise.
/// @{

/// The p-value of a chi-square statistic x with df degrees of freedom; relative error about 1e-9.
///
/// x <= 0 has the tails 0 and 1. NaN for df outside (0, 189812530], unless x <= 0.
ZUL_API double ChiSqPValue(double x, double df, EAlternative alternative);

/// The p-value of an F statistic x with df1 and df2 degrees of freedom in numerator and denominator; relative
/// error about 1e-9.
///
/// x <= 0 has the tails 0 and 1. NaN for df1 or df2 outside the domain of FCdf(), unless x <= 0.
ZUL_API double FPValue(double x, double df1, double df2, EAlternative alternative);

/// The p-value of a standard normal statistic z; relative error about 1e-9.
///
/// z = 0 gives exactly 0.5, and 1 for TwoSided.
ZUL_API double NormalPValue(double z, EAlternative alternative);

/// The p-value of a Student's t statistic with df degrees of freedom; relative error about 1e-9.
///
/// NaN for df outside the domain of TCdf().
ZUL_API double TPValue(double t, double df, EAlternative alternative);

/// The exact p-value of x successes in n trials under the proportion p0, 0 <= n <= 2147000000 and 0 <= p0 <=
/// 1; relative error as of BinomialCdf().
///
/// LowerTail and UpperTail: P(X <= x) and P(X >= x) of BinomialCdf(). TwoSided, with x cut to a whole number:
/// twice the smaller tail for p0 = 1/2 (within 1e-12), and 1 at the middle n / 2, rounded down. Else 1 if x /
/// n is p0 (within 1e-12), and otherwise the tail of x plus the tail on the other side of the mean from the
/// first count on whose likelihood ratio against p0 is at least that of x. 1.23456e30 is a count as any
/// other. p0 outside [0, 1]: NaN, for TwoSided std::invalid_argument.
/// Source of the order: S. S. Wilks, The large-sample distribution of the likelihood ratio for testing
/// composite hypotheses, 1938.
ZUL_API double BinomialPValue(double x, int n, double p0, EAlternative alternative);

/// The exact p-value of x successes in a sample of n from a population of N, M of which are successes, 0 <= M
/// <= N and 0 <= n <= N (Fisher's exact test of a two-by-two table); relative error as of
/// HypergeometricCdf().
///
/// LowerTail and UpperTail: P(X <= x) and P(X >= x) of HypergeometricCdf(). TwoSided: 1 at the mode; else the
/// tail of x plus the tail on the other side of the mode from the first count on whose probability is not
/// above that of x, within 1e-12 of itself or of 1. Deliberate: an alternative that is none of the three
/// gives NaN. N = -2: an exception, its mode being a division by zero.
/// Source: J. O. Irwin, Tests of significance for differences between percentages based on small
/// numbers, 1935.
ZUL_API double HypergeometricPValue(int x, int N, int M, int n, EAlternative alternative);

/// @}

/// @defgroup critical_values Critical values
/// @ingroup distributions
/// The critical value of a statistic at the significance level alpha, 0 < alpha < 1.
///
/// Where alpha, or the level a of each comparison, or half of it for TwoSided, is below 1.1e-16, so that 1 less it
/// has none of its digits, the quantile is sought by the upper tail itself: down to 1e-300 (chi-square), 4.2e-284
/// (normal) and 1e-280 (t); below that NaN.
/// @{

/// The quantile of the chi-square distribution with df degrees of freedom at alpha for LowerTail, at 1 -
/// alpha for UpperTail. Accuracy and NaN as ChiSqInvCdf().
///
/// Deliberate: 0 for TwoSided, for which there are two values, and for any other alternative.
ZUL_API double ChiSqCritValue(double alpha, double df, EAlternative alternative);

/// The quantile of the F distribution with df1 and df2 degrees of freedom at alpha for LowerTail, at 1 -
/// alpha for UpperTail. Accuracy and NaN as FInvCdf().
///
/// Deliberate: 0 for TwoSided, for which there are two values, and for any other alternative.
ZUL_API double FCritValue(double alpha, double df1, double df2, EAlternative alternative);

/// The quantile of the standard normal distribution at 1 - alpha for UpperTail and LowerTail, at 1 - alpha /
/// 2 for TwoSided; positive for alpha < 0.5, so that the caller of LowerTail sets the sign.
///
/// An alternative that is none of the three (for any alpha), or a probability outside (0, 1): NaN. Accuracy
/// as NormalInvCdf().
ZUL_API double NormalCritValue(double alpha, EAlternative alternative);

/// The quantile of Student's t distribution with df degrees of freedom at 1 - a for UpperTail and LowerTail,
/// at 1 - a / 2 for TwoSided, where a = alpha / comparisons is Bonferroni's level of each of so many
/// comparisons; positive for a < 0.5, so that the caller of LowerTail sets the sign.
///
/// An alternative that is none of the three, or a probability outside (0, 1): NaN. Accuracy as TInvCdf().
/// comparisons = 0: std::runtime_error ("Float exception: divide by zero.").
/// Source: O. J. Dunn, Multiple comparisons among means, 1961.
ZUL_API double TCritValue(double alpha, double df, EAlternative alternative, int comparisons);

/// The same with Sidak's level a = 1 - (1 - alpha)^(1 / comparisons), which has its digits also for a small
/// alpha. One comparison gives TCritValue() to rounding.
///
/// alpha > 1 with more than one comparison: std::invalid_argument.
/// Source: Z. Sidak, Rectangular confidence regions for the means of multivariate normal distributions, 1967.
ZUL_API double TSidakCritValue(double alpha, double df, EAlternative alternative, int comparisons);

/// @}

namespace v2 {

/// The digamma function, the derivative of log(gamma(x)), for x > 0; absolute error about 1e-11.
///
/// x <= 0 gives NaN, and so do plus infinity and NaN. Runs without the floating-point frame, in the default
/// mode never throws.
/// Method: recurrence up to x >= 10, then the asymptotic series, M. Abramowitz and I. A. Stegun, Handbook of
/// Mathematical Functions, 1964, 6.3.5 and 6.3.18.
/// @ingroup distributions
ZUL_API double Psi(double x);

}  // namespace v2

}  // namespace zul
