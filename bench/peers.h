#pragma once

// The libraries to compare with, each of them optional. ZUL_BENCH_GSL(...) is the row of a table that begins
// with the name of the library, and an empty row, which AddBenchmark() skips, where GSL is absent; likewise
// for the others.

#ifdef ZUL_BENCH_WITH_FENV
#include <fenv.h>
#define ZUL_BENCH_FENV(...) \
    { "fenv", __VA_ARGS__ }
#else
#define ZUL_BENCH_FENV(...) \
    {}
#endif

#ifdef ZUL_BENCH_WITH_BOOST
#include <boost/math/distributions/normal.hpp>
#define ZUL_BENCH_BOOST(...) \
    { "Boost.Math", __VA_ARGS__ }

namespace zul::bench {

// In double throughout, as the other libraries compute; the default is long double.
using BoostPolicy = boost::math::policies::policy<boost::math::policies::promote_double<false>>;
using BoostNormal = boost::math::normal_distribution<double, BoostPolicy>;

}  // namespace zul::bench
#else
#define ZUL_BENCH_BOOST(...) \
    {}
#endif

#ifdef ZUL_BENCH_WITH_GSL
#include <gsl/gsl_cdf.h>
#include <gsl/gsl_errno.h>
#include <gsl/gsl_randist.h>
#include <gsl/gsl_statistics_double.h>
#define ZUL_BENCH_GSL(...) \
    { "GSL", __VA_ARGS__ }

namespace zul::bench {

// Its own handler ends the process where an inverse does not converge.
inline gsl_error_handler_t* const kGslHandler = gsl_set_error_handler_off();

}  // namespace zul::bench
#else
#define ZUL_BENCH_GSL(...) \
    {}
#endif

// The names alone: what they take is asked by SecondsInPython().
namespace zul::bench {

#ifdef ZUL_BENCH_WITH_SCIPY
inline constexpr const char* kScipy = "SciPy";
#else
inline constexpr const char* kScipy = nullptr;
#endif
#ifdef ZUL_BENCH_WITH_FASTCLUSTER
inline constexpr const char* kFastcluster = "fastcluster";
#else
inline constexpr const char* kFastcluster = nullptr;
#endif

}  // namespace zul::bench

// Last: it defines many short macros.
#ifdef ZUL_BENCH_WITH_RMATH
#define MATHLIB_STANDALONE
#include <Rmath.h>
#define ZUL_BENCH_RMATH(...) \
    { "R", __VA_ARGS__ }
#else
#define ZUL_BENCH_RMATH(...) \
    {}
#endif
