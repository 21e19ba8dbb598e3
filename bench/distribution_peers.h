// The families of distributions that are timed, with the functions of the peers.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "distributions/families.h"
#include "peers.h"

#ifdef ZUL_BENCH_WITH_BOOST
#include <boost/math/distributions.hpp>
#endif

namespace zul::bench {

using test::Parameters;

// Evaluates a function of a family on each value of an array.
using Evaluate = test::Each;

// Absent functions are empty.
struct Functions {
    Evaluate pdf;
    Evaluate cdf;
    Evaluate invCdf;
};

struct Peer {
    const char* library;
    Functions functions;
};

struct Family {
    std::string name;
    std::vector<Parameters> parameters;
    std::vector<Peer> peers;
};

// Those on whole numbers, and large ones for their quantiles alone.
std::vector<Family> CountFamilies();
std::vector<Family> LargeCountFamilies();

template <typename Operation>
Evaluate Each(Operation function) {
    return [function](double* out, const double* in, std::size_t count, test::Arguments p) {
        for (std::size_t i = 0; i < count; ++i)
            out[i] = function(in[i], p);
    };
}

#ifdef ZUL_BENCH_WITH_BOOST
template <template <typename, typename> typename Distribution>
using InDouble = Distribution<double, BoostPolicy>;

// The distribution is made anew for each value, as in a call of its own.
template <typename Make>
Functions OfBoost(Make make) {
    return {Each([make](double x, test::Arguments p) { return pdf(make(p), x); }),
            Each([make](double x, test::Arguments p) { return cdf(make(p), x); }),
            Each([make](double x, test::Arguments p) { return quantile(make(p), x); })};
}

template <typename Make>
Functions UpperQuantileOfBoost(Make make) {
    const auto upperQuantile = [make](double x, test::Arguments p) {
        return quantile(boost::math::complement(make(p), x));
    };
    return {nullptr, nullptr, Each(upperQuantile)};
}
#endif

// The functions of a peer, as expressions in x and the parameters p.
#define ZUL_BENCH_AT(expression) \
    Each([]([[maybe_unused]] double x, [[maybe_unused]] test::Arguments p) { return expression; })
#define ZUL_BENCH_BOOST_FAMILY(distribution, ...) \
    ZUL_BENCH_BOOST(                              \
        OfBoost([](test::Arguments p) { return InDouble<boost::math::distribution>(__VA_ARGS__); }))
#define ZUL_BENCH_GSL_FAMILY(pdf, cdf, invCdf) \
    ZUL_BENCH_GSL({ZUL_BENCH_AT(pdf), ZUL_BENCH_AT(cdf), ZUL_BENCH_AT(invCdf)})
#define ZUL_BENCH_R_FAMILY(pdf, cdf, invCdf) \
    ZUL_BENCH_RMATH({ZUL_BENCH_AT(pdf), ZUL_BENCH_AT(cdf), ZUL_BENCH_AT(invCdf)})
// The quantiles by the upper tail alone.
#define ZUL_BENCH_BOOST_UPPER(distribution, ...) \
    ZUL_BENCH_BOOST(UpperQuantileOfBoost(        \
        [](test::Arguments p) { return InDouble<boost::math::distribution>(__VA_ARGS__); }))
#define ZUL_BENCH_GSL_UPPER(invCdf) ZUL_BENCH_GSL({nullptr, nullptr, ZUL_BENCH_AT(invCdf)})
#define ZUL_BENCH_R_UPPER(invCdf) ZUL_BENCH_RMATH({nullptr, nullptr, ZUL_BENCH_AT(invCdf)})

}  // namespace zul::bench
