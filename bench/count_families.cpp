#include "distribution_peers.h"

namespace zul::bench {
namespace {

Family Poisson(const std::string& name, const std::vector<Parameters>& parameters) {
    return {name,
            parameters,
            {ZUL_BENCH_BOOST_FAMILY(poisson_distribution, p[0]),
             ZUL_BENCH_GSL({ZUL_BENCH_AT(gsl_ran_poisson_pdf(static_cast<unsigned>(x), p[0])),
                            ZUL_BENCH_AT(gsl_cdf_poisson_P(static_cast<unsigned>(x), p[0])), nullptr}),
             ZUL_BENCH_R_FAMILY(dpois(x, p[0], 0), ppois(x, p[0], 1, 0), qpois(x, p[0], 1, 0))}};
}

Family Binomial(const std::string& name, const std::vector<Parameters>& parameters) {
    return {
        name,
        parameters,
        {ZUL_BENCH_BOOST_FAMILY(binomial_distribution, p[0], p[1]),
         ZUL_BENCH_GSL(
             {ZUL_BENCH_AT(gsl_ran_binomial_pdf(static_cast<unsigned>(x), p[1], static_cast<unsigned>(p[0]))),
              ZUL_BENCH_AT(gsl_cdf_binomial_P(static_cast<unsigned>(x), p[1], static_cast<unsigned>(p[0]))),
              nullptr}),
         ZUL_BENCH_R_FAMILY(dbinom(x, p[0], p[1], 0), pbinom(x, p[0], p[1], 1, 0),
                            qbinom(x, p[0], p[1], 1, 0))}};
}

#ifdef ZUL_BENCH_WITH_BOOST
auto OfFailures(test::Arguments p) {
    return InDouble<boost::math::negative_binomial_distribution>(p[1], p[0]);
}
#endif

// The number of trials; the peers count the failures.
Family NegBinomial(const std::string& name, const std::vector<Parameters>& parameters) {
    return {name,
            parameters,
            {ZUL_BENCH_BOOST(
                 {Each([](double x, test::Arguments p) { return pdf(OfFailures(p), x - p[1]); }),
                  Each([](double x, test::Arguments p) { return cdf(OfFailures(p), x - p[1]); }),
                  Each([](double x, test::Arguments p) { return quantile(OfFailures(p), x) + p[1]; })}),
             ZUL_BENCH_GSL(
                 {ZUL_BENCH_AT(gsl_ran_negative_binomial_pdf(static_cast<unsigned>(x - p[1]), p[0], p[1])),
                  ZUL_BENCH_AT(gsl_cdf_negative_binomial_P(static_cast<unsigned>(x - p[1]), p[0], p[1])),
                  nullptr}),
             ZUL_BENCH_R_FAMILY(dnbinom(x - p[1], p[1], p[0], 0), pnbinom(x - p[1], p[1], p[0], 1, 0),
                                qnbinom(x, p[1], p[0], 1, 0) + p[1])}};
}

Family Hypergeometric() {
    return {
        "Hypergeometric",
        {{40, 12, 8}, {500, 200, 50}, {100'000, 20'000, 1000}},
        {ZUL_BENCH_GSL({ZUL_BENCH_AT(gsl_ran_hypergeometric_pdf(
                            static_cast<unsigned>(x), static_cast<unsigned>(p[1]),
                            static_cast<unsigned>(p[0] - p[1]), static_cast<unsigned>(p[2]))),
                        ZUL_BENCH_AT(gsl_cdf_hypergeometric_P(
                            static_cast<unsigned>(x), static_cast<unsigned>(p[1]),
                            static_cast<unsigned>(p[0] - p[1]), static_cast<unsigned>(p[2]))),
                        nullptr}),
         ZUL_BENCH_R_FAMILY(dhyper(x, p[1], p[0] - p[1], p[2], 0), phyper(x, p[1], p[0] - p[1], p[2], 1, 0),
                            qhyper(x, p[1], p[0] - p[1], p[2], 1, 0))}};
}

}  // namespace

std::vector<Family> CountFamilies() {
    return {Poisson("Poisson", {{0.3}, {2}, {4.5}, {12}}),
            Binomial("Binomial", {{10, 0.5}, {40, 0.03}, {200, 0.3}, {1000, 0.7}}),
            NegBinomial("NegBinomial", {{0.3, 1}, {0.3, 5}, {0.9, 30}, {0.02, 8}}), Hypergeometric()};
}

std::vector<Family> LargeCountFamilies() {
    return {Poisson("(1e5) Poisson", {{1e5}}), Binomial("(1e6, 0.2) Binomial", {{1'000'000, 0.2}}),
            NegBinomial("(0.01, 50) NegBinomial", {{0.01, 50}})};
}

}  // namespace zul::bench
