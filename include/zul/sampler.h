/// @file
/// Random sampling: a seeded uniform generator and deviates of the distribution families drawn from it.
#pragma once

#include <zul/export.h>

/// @defgroup sampler Random sampling
/// Random sampling: a seeded uniform generator and deviates of the distribution families drawn from it.
///
/// The caller owns a sampler from MakeISampler() to DeleteISampler(). Its state advances by one step for
/// every uniform drawn, and by nothing else; the seed determines every sequence.
///
/// The uniforms u come from three multiplicative congruential generators with the multipliers 157, 146, 142
/// and the prime moduli 32363, 31727, 31657: the fractional part of the sum of the three states divided by
/// their moduli. The period is about 8.1e12. u lies in (0, 1), at least 3e-14 from both ends.
/// Source: P. L'Ecuyer, Efficient and portable combined random number generators, 1988.
///
/// | status | meaning |
/// |---|---|
/// | 0 | success |
/// | 30001 | memory could not be obtained |
/// | 30011 | not built, or too many values asked for |
/// | 30017 | no such generator |

namespace zul {

/// @addtogroup sampler
/// @{

/// The uniform generators. 0 to 9 are known but not built.
enum BasicRng : int {
    CombinedCongruential = 10  ///< three multiplicative congruential generators
};

/// A source of random deviates, made by MakeISampler().
///
/// Every Sample operation writes `count` deviates to `out`, an array of at least so many values, and returns
/// a status; `count` 0 writes nothing and draws nothing. What it remembers beside the state of the generator,
/// such as the second of a pair of normal deviates, ends with the call: two calls for an odd number of normal
/// deviates give other values than one call for both.
///
/// Parameters are those of the functions in distributions.h, and are not checked. For Beta, ChiSquare, F,
/// Gamma, central T and both NegBinomial operations, whose methods would try for ever with a bad parameter (a
/// shape, degrees of freedom or a scale that is not positive, prob outside (0, 1), NaN), all deviates are
/// then NaN, no uniform is drawn and the status is 0. Elsewhere the formula is computed as it stands: a
/// deviate that does not exist is written as the library's missing value 1.23456e30 or as NaN, and an invalid
/// operation, a division by zero or an overflow is one of the standard exceptions listed in frame.h.
///
/// Operations compute in the frame of frame.h and leave the thread in the default floating-point mode, except
/// Reseed, GetSeed, Reserved17, Reserved18, SampleWeibull and SampleIndices, which compute in the mode of the
/// caller and leave it alone. An exception ends the call: `out` may be partly written, also with unfinished
/// values, and the state is that after some of the uniforms of the call; Reseed() makes it a known one.
///
/// An object serves one thread at a time; different samplers are independent. The order of the operations is frozen.
class ZUL_API ISampler {
public:
    virtual ~ISampler();

    /// Moves the generator to the state of a seed.
    /// @param seed any number; its sign and its fraction are ignored, and seeds that differ by a multiple of
    ///   32362 * 31726 * 31656, about 3.25e13, are the same. 0, infinity and NaN: the first state.
    virtual void Reseed(double seed) = 0;

    /// The seed that reproduces the present state: a whole number in [0, 3.25e13).
    virtual double GetSeed() const = 0;

    /// Beta deviates in [0, 1].
    /// Uniforms: two for each try.
    /// Method: R. C. H. Cheng, Generating beta variates with nonintegral shape parameters, 1978: algorithm BB if
    /// both shapes are above 1, else BC.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param a first shape, a > 0
    /// @param b second shape, b > 0
    /// @return 0
    virtual int SampleBeta(double* out, unsigned count, double a, double b) = 0;

    /// Cauchy deviates, by the quantile at one uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param location the median
    /// @param scale half of the distance between the quartiles, scale > 0
    /// @return 0
    virtual int SampleCauchy(double* out, unsigned count, double location, double scale) = 0;

    /// Central chi-square deviates: gamma deviates with shape df / 2 and scale 2, see SampleGamma().
    /// @param out out: count values
    /// @param count number of deviates
    /// @param df degrees of freedom, df > 0
    /// @return 0
    virtual int SampleChiSquare(double* out, unsigned count, double df) = 0;

    /// Exponential deviates threshold - scale log(1 - u), from one uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param scale the mean above the threshold (not the rate), scale > 0
    /// @param threshold the lower end
    /// @return 0
    virtual int SampleExponential(double* out, unsigned count, double scale, double threshold) = 0;

    /// Central F deviates B / (1 - B) * (df2 / df1), where B is a beta deviate with the shapes df1 / 2 and
    /// df2 / 2, held at 0.999999999999.
    /// Uniforms: as SampleBeta().
    /// @param out out: count values
    /// @param count number of deviates
    /// @param df1 numerator degrees of freedom, df1 > 0
    /// @param df2 denominator degrees of freedom, df2 > 0
    /// @return 0
    virtual int SampleF(double* out, unsigned count, double df1, double df2) = 0;

    /// Gamma deviates.
    /// Uniforms: shape 1 (within a relative 1e-12), one; other shapes below 4, two for each try; from 4 on,
    /// one for each try, then two (tail) or those of a normal deviate and perhaps one more (body).
    /// Method: J. H. Ahrens and U. Dieter, Computer methods for sampling from gamma, beta, Poisson and
    /// binomial distributions, 1974: algorithm GS for shapes below 1, GO from 4 on; between, rejection from a
    /// uniform body and an exponential tail.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param shape shape > 0
    /// @param scale scale (not the rate), scale > 0
    /// @param threshold the lower end
    /// @return 0
    virtual int SampleGamma(double* out, unsigned count, double shape, double scale, double threshold) = 0;

    /// Deviates of Tukey's lambda distribution, by the quantile at one uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param lambda lambda; 0 is the logistic distribution, 1 and 2 are uniform
    /// @param location the median
    /// @param scale scale > 0
    /// @return 0
    virtual int SampleLambda(double* out, unsigned count, double lambda, double location, double scale) = 0;

    /// Laplace (double exponential) deviates, by the quantile at one uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param location the median
    /// @param scale the mean distance from the median, scale > 0
    /// @return 0
    virtual int SampleLaplace(double* out, unsigned count, double location, double scale) = 0;

    /// Deviates location - scale log(-log(u)) of the largest extreme value distribution, from one uniform
    /// each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param location the mode
    /// @param scale scale > 0
    /// @return 0
    virtual int SampleLargestExtremeValue(double* out, unsigned count, double location, double scale) = 0;

    /// Logistic deviates location - (log(1 - u) - log(u)) scale, from one uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param location the mean
    /// @param scale scale (not the standard deviation), scale > 0
    /// @return 0
    virtual int SampleLogistic(double* out, unsigned count, double location, double scale) = 0;

    /// Log-logistic deviates: a threshold and the exponentials of logistic deviates, from one uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param location mean of the logarithm of the distance from the threshold
    /// @param scale scale of that logarithm, scale > 0
    /// @param threshold the lower end
    /// @return 0
    virtual int SampleLogLogistic(double* out, unsigned count, double location, double scale,
                                  double threshold) = 0;

    /// Lognormal deviates: a threshold and the exponentials of normal deviates, with the uniforms of
    /// SampleNormal(). One that overflows ends the call: those before it stand, and the state is that after its
    /// uniforms.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param location mean of the logarithm of the distance from the threshold
    /// @param scale standard deviation of that logarithm, scale > 0
    /// @param threshold the lower end
    /// @return 0
    virtual int SampleLognormal(double* out, unsigned count, double location, double scale,
                                double threshold) = 0;

    /// Deviates of the multivariate normal distribution: mean + L z, L being the lower Cholesky factor of the
    /// covariance matrix and z standard normal deviates in the order of their indices, with the uniforms of
    /// SampleNormal() for all rows together.
    ///
    /// A matrix that is singular within rounding will do: a pivot of 0 gives a column of zeros, without a look
    /// at the covariances in it. Where a pivot is clearly negative, or the matrix holds NaN or infinity, every
    /// value is NaN and no uniform is drawn.
    /// Source: G. H. Golub and C. F. Van Loan, Matrix Computations, 4th edition, 2013.
    /// @param out out: count rows of dimension values, row by row
    /// @param count number of rows
    /// @param dimension number of variables
    /// @param mean in: dimension values
    /// @param covariance in: dimension rows of dimension values; only those up to the diagonal are read
    /// @return 0 or 30001, which leaves out as it was
    virtual int SampleMVNormal(double* out, unsigned count, unsigned dimension, const double* mean,
                               const double* covariance) = 0;

    /// Normal deviates.
    /// Uniforms: two for each try, which succeeds with the probability pi / 4 and gives two deviates.
    /// Method: G. Marsaglia and T. A. Bray, A convenient method for generating normal variables, 1964.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param mean the mean
    /// @param standardDeviation the standard deviation (not the variance), > 0
    /// @return 0
    virtual int SampleNormal(double* out, unsigned count, double mean, double standardDeviation) = 0;

    /// Not built.
    /// @return 30011
    virtual int Reserved17() = 0;

    /// Not built.
    /// @return 30011
    virtual int Reserved18() = 0;

    /// Deviates location + scale log(-log(1 - u)) of the smallest extreme value distribution, from one
    /// uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param location the mode
    /// @param scale scale > 0
    /// @return 0
    virtual int SampleSmallestExtremeValue(double* out, unsigned count, double location, double scale) = 0;

    /// Deviates of Student's t distribution. Noncentrality 0: the square root of an F(1, df) deviate,
    /// negative if one more uniform is 0.5 or more. Other noncentralities: the quantile at one uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param df degrees of freedom, df > 0
    /// @param noncentrality the mean of the normal numerator
    /// @return 0
    virtual int SampleT(double* out, unsigned count, double df, double noncentrality) = 0;

    /// Triangular deviates, by the quantile at one uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param minimum the lower end, minimum < maximum
    /// @param mode minimum <= mode <= maximum
    /// @param maximum the upper end
    /// @return 0
    virtual int SampleTriangular(double* out, unsigned count, double minimum, double mode,
                                 double maximum) = 0;

    /// Whole numbers of equal probability, ceil(low + (high - low + 1) u - 1), from one uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param low the smallest number
    /// @param high the largest number, high >= low
    /// @return 0
    virtual int SampleIntegerUniform(double* out, unsigned count, int low, int high) = 0;

    /// Uniform deviates low + (high - low) u, from one uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param low the lower end
    /// @param high the upper end, high > low
    /// @return 0
    virtual int SampleUniform(double* out, unsigned count, double low, double high) = 0;

    /// Weibull deviates threshold + scale (-log(1 - u))^(1 / shape), from one uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param shape shape > 0
    /// @param scale scale > 0
    /// @param threshold the lower end
    /// @return 0
    virtual int SampleWeibull(double* out, unsigned count, double shape, double scale, double threshold) = 0;

    /// 1 where u <= p, else 0; from one uniform each.
    /// @param out out: count values, 0 or 1
    /// @param count number of deviates
    /// @param p probability of 1
    /// @return 0
    virtual int SampleBernoulli(double* out, unsigned count, double p) = 0;

    /// Binomial deviates: the number of successes among so many trials, from one uniform for each trial.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param trials number of trials; 0 and less give 0
    /// @param p probability of success in one trial
    /// @return 0
    virtual int SampleBinomial(double* out, unsigned count, int trials, double p) = 0;

    /// Values of a table with given probabilities, from one uniform each.
    /// Method: A. J. Walker, An efficient method for generating discrete random variables with general
    /// distributions, 1977; M. D. Vose, A linear algorithm for generating random numbers with a given
    /// distribution, 1991.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param values in: tableSize values
    /// @param probabilities in: tableSize values, >= 0, of any positive sum; a NaN among them
    ///   or a sum of 0: std::invalid_argument
    /// @param tableSize number of values; 0: every deviate is NaN
    /// @return 0 or 30001, which leaves out as it was
    virtual int SampleDiscrete(double* out, unsigned count, const double* values, const double* probabilities,
                               unsigned tableSize) = 0;

    /// Negative binomial deviates: the trial on which the r-th success falls. For r that is not whole: r and
    /// a Poisson deviate with a gamma mean.
    ///
    /// Uniforms: those of a gamma deviate with shape r and scale (1 - prob) / prob, see SampleGamma(), then
    /// one for the Poisson quantile at that mean.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param prob probability of success in one trial, 0 < prob < 1
    /// @param r number of successes, r > 0
    /// @return 0
    virtual int SampleNegBinomial(double* out, unsigned count, double prob, double r) = 0;

    /// Hypergeometric deviates: the number of successes in a sample without replacement. Each member of the
    /// sample takes one uniform, until no success or nothing but successes is left.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param population number of members of the population
    /// @param successes number of successes in it, 0 <= successes <= population
    /// @param draws size of the sample, draws <= population; 0 and less give 0
    /// @return 0
    virtual int SampleHypergeometric(double* out, unsigned count, unsigned population, int successes,
                                     int draws) = 0;

    /// SampleNegBinomial() with a choice of what is counted.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param failuresOnly other than 0: the failures before the r-th success; 0: the trial on which it falls
    /// @param prob probability of success in one trial, 0 < prob < 1
    /// @param r number of successes, r > 0
    /// @return 0
    virtual int SampleNegBinomialTrials(double* out, unsigned count, int failuresOnly, double prob,
                                        double r) = 0;

    /// Poisson deviates, by the quantile at one uniform each.
    /// @param out out: count values
    /// @param count number of deviates
    /// @param mean the mean, mean > 0
    /// @return 0
    virtual int SamplePoisson(double* out, unsigned count, double mean) = 0;

    /// Indices below the size of a population, all of equal probability, from one uniform each; without
    /// replacement no index comes twice. Those of an empty population with replacement are 0. The memory that
    /// the method without replacement takes is in proportion to `count` if that is at most a 64th of the
    /// population, else to the population.
    /// Method without replacement: R. Durstenfeld, Algorithm 235: Random permutation, 1964.
    /// @param out out: count indices
    /// @param population size of the population
    /// @param count number of indices
    /// @param withoutReplacement whether an index comes once at most; then count <= population
    /// @return 0; without replacement 30011 for more indices than there are, and 30001. Where it is not 0 no
    ///   uniform is drawn and every index has all bits set (4294967295)
    virtual int SampleIndices(unsigned* out, unsigned population, unsigned count,
                              bool withoutReplacement) = 0;
};

/// A new sampler, to be released with DeleteISampler(). Runs in the frame of frame.h.
/// @param status out: 0; 30001; 30011 for a generator that is known but not built; 30017 for any other
/// @param seed as for Reseed(); exactly 0, infinity and NaN take the seed from Seeder()
/// @param rng the uniform generator, CombinedCongruential
/// @return the sampler; null if the status is not 0
ZUL_API ISampler* MakeISampler(int* status, double seed, BasicRng rng);

/// Destroys a sampler and sets the caller's pointer to null. Null, and a pointer to null, do nothing.
/// @param sampler in and out: the sampler
ZUL_API void DeleteISampler(ISampler** sampler);

/// A seed from the local time of day, which changes every hundredth of a second: the seven digits of the
/// hundredths since midnight, read backwards, times 3250000.
ZUL_API double Seeder();

/// @}

}  // namespace zul
