#include <cmath>
#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <zul/distributions.h>

#include "bench.h"
#include "distribution_peers.h"

namespace zul::bench {
namespace {

// So many values that the processor cannot learn the branches that each of them takes; fewer where a value
// takes a microsecond.
constexpr std::size_t kManyValues = 100'000;
constexpr std::size_t kSomeValues = 20'000;
constexpr std::size_t kFewValues = 2'000;

// Ours, of the family by its last word; of the upper ones the inverse with its flag set alone.
Functions Ours(const Family& family, Evaluate test::Function::*form) {
    const std::string name = family.name.substr(family.name.rfind(' ') + 1);
    if (family.name.starts_with("upper ")) {
        const std::size_t arguments = family.parameters.front().size() + 2;
        const Evaluate evaluate = test::FunctionOf(name + "InvCdf", arguments).*form;
        return {nullptr, nullptr,
                [evaluate](double* out, const double* in, std::size_t count, test::Arguments p) {
                    Parameters withFlag(p.begin(), p.end());
                    withFlag.push_back(1);
                    evaluate(out, in, count, withFlag);
                }};
    }
    return {test::FunctionOf(name + "Pdf").*form, test::FunctionOf(name + "Cdf").*form,
            test::FunctionOf(name + "InvCdf").*form};
}

std::vector<Family> ClosedForms() {
    const std::vector<Parameters> location = {{0, 1}, {-3, 0.2}, {100, 15}};
    return {
        {"Exponential",
         {{1, 0}, {0.02, 0}, {70, 0}},
         {ZUL_BENCH_BOOST_FAMILY(exponential_distribution, 1 / p[0]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_exponential_pdf(x, p[0]), gsl_cdf_exponential_P(x, p[0]),
                               gsl_cdf_exponential_Pinv(x, p[0])),
          ZUL_BENCH_R_FAMILY(dexp(x, p[0], 0), pexp(x, p[0], 1, 0), qexp(x, p[0], 1, 0))}},
        {"Logistic",
         location,
         {ZUL_BENCH_BOOST_FAMILY(logistic_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_logistic_pdf(x - p[0], p[1]), gsl_cdf_logistic_P(x - p[0], p[1]),
                               gsl_cdf_logistic_Pinv(x, p[1]) + p[0]),
          ZUL_BENCH_R_FAMILY(dlogis(x, p[0], p[1], 0), plogis(x, p[0], p[1], 1, 0),
                             qlogis(x, p[0], p[1], 1, 0))}},
        {"Cauchy",
         location,
         {ZUL_BENCH_BOOST_FAMILY(cauchy_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_cauchy_pdf(x - p[0], p[1]), gsl_cdf_cauchy_P(x - p[0], p[1]),
                               gsl_cdf_cauchy_Pinv(x, p[1]) + p[0]),
          ZUL_BENCH_R_FAMILY(dcauchy(x, p[0], p[1], 0), pcauchy(x, p[0], p[1], 1, 0),
                             qcauchy(x, p[0], p[1], 1, 0))}},
        {"Weibull",
         {{0.7, 1, 0}, {2, 30, 0}, {11, 0.5, 0}},
         {ZUL_BENCH_BOOST_FAMILY(weibull_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_weibull_pdf(x, p[1], p[0]), gsl_cdf_weibull_P(x, p[1], p[0]),
                               gsl_cdf_weibull_Pinv(x, p[1], p[0])),
          ZUL_BENCH_R_FAMILY(dweibull(x, p[0], p[1], 0), pweibull(x, p[0], p[1], 1, 0),
                             qweibull(x, p[0], p[1], 1, 0))}},
        {"LargestExtremeValue",
         location,
         {ZUL_BENCH_BOOST_FAMILY(extreme_value_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_gumbel1_pdf(x - p[0], 1 / p[1], 1),
                               gsl_cdf_gumbel1_P(x - p[0], 1 / p[1], 1),
                               gsl_cdf_gumbel1_Pinv(x, 1 / p[1], 1) + p[0])}},
        {"Triangular",
         {{0, 2, 5}, {-1, 0, 1}, {10, 10, 12}},
         {ZUL_BENCH_BOOST_FAMILY(triangular_distribution, p[0], p[1], p[2])}},
        {"Uniform",
         {{0, 1}, {-3, 8}, {100, 100.5}},
         {ZUL_BENCH_BOOST_FAMILY(uniform_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_flat_pdf(x, p[0], p[1]), gsl_cdf_flat_P(x, p[0], p[1]),
                               gsl_cdf_flat_Pinv(x, p[0], p[1])),
          ZUL_BENCH_R_FAMILY(dunif(x, p[0], p[1], 0), punif(x, p[0], p[1], 1, 0),
                             qunif(x, p[0], p[1], 1, 0))}},
        {"LogNormal",
         {{0, 1, 0}, {3, 0.2, 0}, {-1, 2, 0}},
         {ZUL_BENCH_BOOST_FAMILY(lognormal_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_lognormal_pdf(x, p[0], p[1]), gsl_cdf_lognormal_P(x, p[0], p[1]),
                               gsl_cdf_lognormal_Pinv(x, p[0], p[1])),
          ZUL_BENCH_R_FAMILY(dlnorm(x, p[0], p[1], 0), plnorm(x, p[0], p[1], 1, 0),
                             qlnorm(x, p[0], p[1], 1, 0))}},
        {"Laplace",
         location,
         {ZUL_BENCH_BOOST_FAMILY(laplace_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_laplace_pdf(x - p[0], p[1]), gsl_cdf_laplace_P(x - p[0], p[1]),
                               gsl_cdf_laplace_Pinv(x, p[1]) + p[0])}},
    };
}

std::vector<Family> GammaFamilies() {
    return {
        {"Normal",
         {{0, 1}, {-3, 0.2}, {100, 15}},
         {ZUL_BENCH_BOOST_FAMILY(normal_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_gaussian_pdf(x - p[0], p[1]), gsl_cdf_ugaussian_P((x - p[0]) / p[1]),
                               gsl_cdf_ugaussian_Pinv(x) * p[1] + p[0]),
          ZUL_BENCH_R_FAMILY(dnorm4(x, p[0], p[1], 0), pnorm5(x, p[0], p[1], 1, 0),
                             qnorm5(x, p[0], p[1], 1, 0))}},
        {"Gamma",
         {{0.4, 2, 0}, {1.5, 1, 0}, {4, 0.3, 0}, {9, 1, 0}},
         {ZUL_BENCH_BOOST_FAMILY(gamma_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_gamma_pdf(x, p[0], p[1]), gsl_cdf_gamma_P(x, p[0], p[1]),
                               gsl_cdf_gamma_Pinv(x, p[0], p[1])),
          ZUL_BENCH_R_FAMILY(dgamma(x, p[0], p[1], 0), pgamma(x, p[0], p[1], 1, 0),
                             qgamma(x, p[0], p[1], 1, 0))}},
        {"ChiSq",
         {{1, 0}, {3, 0}, {8, 0}, {20, 0}},
         {ZUL_BENCH_BOOST_FAMILY(chi_squared_distribution, p[0]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_chisq_pdf(x, p[0]), gsl_cdf_chisq_P(x, p[0]),
                               gsl_cdf_chisq_Pinv(x, p[0])),
          ZUL_BENCH_R_FAMILY(dchisq(x, p[0], 0), pchisq(x, p[0], 1, 0), qchisq(x, p[0], 1, 0))}},
    };
}

Family Beta(const std::string& name, const std::vector<Parameters>& parameters) {
    return {name,
            parameters,
            {ZUL_BENCH_BOOST_FAMILY(beta_distribution, p[0], p[1]),
             ZUL_BENCH_GSL_FAMILY(gsl_ran_beta_pdf(x, p[0], p[1]), gsl_cdf_beta_P(x, p[0], p[1]),
                                  gsl_cdf_beta_Pinv(x, p[0], p[1])),
             ZUL_BENCH_R_FAMILY(dbeta(x, p[0], p[1], 0), pbeta(x, p[0], p[1], 1, 0),
                                qbeta(x, p[0], p[1], 1, 0))}};
}

std::vector<Family> BetaFamilies() {
    return {
        Beta("Beta", {{0.5, 0.5}, {2, 5}, {30, 4}, {400, 600}}),
        {"T",
         {{1, 0}, {4, 0}, {11.5, 0}, {200, 0}},
         {ZUL_BENCH_BOOST_FAMILY(students_t_distribution, p[0]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_tdist_pdf(x, p[0]), gsl_cdf_tdist_P(x, p[0]),
                               gsl_cdf_tdist_Pinv(x, p[0])),
          ZUL_BENCH_R_FAMILY(dt(x, p[0], 0), pt(x, p[0], 1, 0), qt(x, p[0], 1, 0))}},
        {"F",
         {{1, 8, 0}, {3, 20, 0}, {12, 12, 0}, {60, 200, 0}},
         {ZUL_BENCH_BOOST_FAMILY(fisher_f_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_FAMILY(gsl_ran_fdist_pdf(x, p[0], p[1]), gsl_cdf_fdist_P(x, p[0], p[1]),
                               gsl_cdf_fdist_Pinv(x, p[0], p[1])),
          ZUL_BENCH_R_FAMILY(df(x, p[0], p[1], 0), pf(x, p[0], p[1], 1, 0), qf(x, p[0], p[1], 1, 0))}},
    };
}

// One shape each, from few terms to many, for their tails alone.
std::vector<Family> BetaShapes() {
    return {Beta("(2, 5) Beta", {{2, 5}}), Beta("(30, 4) Beta", {{30, 4}}),
            Beta("(400, 600) Beta", {{400, 600}})};
}

// Without the densities, which ours are of the central distributions or nobody's.
std::vector<Family> NoncentralFamilies() {
    return {
        {"noncentral ChiSq",
         {{1, 0.5}, {4, 6}, {30, 100}},
         {ZUL_BENCH_BOOST_FAMILY(non_central_chi_squared_distribution, p[0], p[1]),
          ZUL_BENCH_R_FAMILY(dnchisq(x, p[0], p[1], 0), pnchisq(x, p[0], p[1], 1, 0),
                             qnchisq(x, p[0], p[1], 1, 0))}},
        {"noncentral F",
         {{1, 8, 0.5}, {3, 20, 4}, {12, 60, 50}},
         {ZUL_BENCH_BOOST_FAMILY(non_central_f_distribution, p[0], p[1], p[2]),
          ZUL_BENCH_R_FAMILY(0, pnf(x, p[0], p[1], p[2], 1, 0), qnf(x, p[0], p[1], p[2], 1, 0))}},
        {"noncentral T",
         {{4, 0.5}, {11.5, -2}, {200, 8}},
         {ZUL_BENCH_BOOST_FAMILY(non_central_t_distribution, p[0], p[1]),
          ZUL_BENCH_R_FAMILY(0, pnt(x, p[0], p[1], 1, 0), qnt(x, p[0], p[1], 1, 0))}},
    };
}

std::vector<Family> UpperQuantiles() {
    return {
        {"upper Exponential",
         {{1, 0}, {0.02, 0}, {70, 0}},
         {ZUL_BENCH_BOOST_UPPER(exponential_distribution, 1 / p[0]),
          ZUL_BENCH_GSL_UPPER(gsl_cdf_exponential_Qinv(x, p[0])), ZUL_BENCH_R_UPPER(qexp(x, p[0], 0, 0))}},
        {"upper Logistic",
         {{0, 1}, {-3, 0.2}, {100, 15}},
         {ZUL_BENCH_BOOST_UPPER(logistic_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_UPPER(gsl_cdf_logistic_Qinv(x, p[1]) + p[0]),
          ZUL_BENCH_R_UPPER(qlogis(x, p[0], p[1], 0, 0))}},
        {"upper Normal",
         {{0, 1}, {-3, 0.2}, {100, 15}},
         {ZUL_BENCH_BOOST_UPPER(normal_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_UPPER(gsl_cdf_ugaussian_Qinv(x) * p[1] + p[0]),
          ZUL_BENCH_R_UPPER(qnorm5(x, p[0], p[1], 0, 0))}},
        {"upper Gamma",
         {{0.4, 2, 0}, {1.5, 1, 0}, {4, 0.3, 0}, {9, 1, 0}},
         {ZUL_BENCH_BOOST_UPPER(gamma_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_UPPER(gsl_cdf_gamma_Qinv(x, p[0], p[1])),
          ZUL_BENCH_R_UPPER(qgamma(x, p[0], p[1], 0, 0))}},
        {"upper ChiSq",
         {{1, 0}, {3, 0}, {8, 0}, {20, 0}},
         {ZUL_BENCH_BOOST_UPPER(chi_squared_distribution, p[0]),
          ZUL_BENCH_GSL_UPPER(gsl_cdf_chisq_Qinv(x, p[0])), ZUL_BENCH_R_UPPER(qchisq(x, p[0], 0, 0))}},
        {"upper Beta",
         {{0.5, 0.5}, {2, 5}, {30, 4}, {400, 600}},
         {ZUL_BENCH_BOOST_UPPER(beta_distribution, p[0], p[1]),
          ZUL_BENCH_GSL_UPPER(gsl_cdf_beta_Qinv(x, p[0], p[1])),
          ZUL_BENCH_R_UPPER(qbeta(x, p[0], p[1], 0, 0))}},
        {"upper T",
         {{1, 0}, {4, 0}, {11.5, 0}, {200, 0}},
         {ZUL_BENCH_BOOST_UPPER(students_t_distribution, p[0]),
          ZUL_BENCH_GSL_UPPER(gsl_cdf_tdist_Qinv(x, p[0])), ZUL_BENCH_R_UPPER(qt(x, p[0], 0, 0))}},
        {"upper Poisson",
         {{0.3}, {2}, {4.5}, {12}},
         {ZUL_BENCH_BOOST_UPPER(poisson_distribution, p[0]), ZUL_BENCH_R_UPPER(qpois(x, p[0], 0, 0))}},
    };
}

std::vector<Family> NoncentralUpperQuantiles() {
    return {
        {"upper noncentral ChiSq",
         {{1, 0.5}, {4, 6}, {30, 100}},
         {ZUL_BENCH_BOOST_UPPER(non_central_chi_squared_distribution, p[0], p[1]),
          ZUL_BENCH_R_UPPER(qnchisq(x, p[0], p[1], 0, 0))}},
    };
}

// The distribution functions alone, of one shape each, with which their cost grows.
std::vector<Family> GammaShapes() {
    std::vector<Family> shapes;
    for (const auto& [name, shape] :
         {std::pair{"shape 1.5 Gamma", 1.5}, {"shape 50 Gamma", 50.0}, {"shape 400 Gamma", 400.0}})
        shapes.push_back({name,
                          {{shape, 1, 0}},
                          {ZUL_BENCH_BOOST_FAMILY(gamma_distribution, p[0], p[1]),
                           ZUL_BENCH_GSL_FAMILY(0, gsl_cdf_gamma_P(x, p[0], p[1]), 0),
                           ZUL_BENCH_R_FAMILY(0, pgamma(x, p[0], p[1], 1, 0), 0)}});
    return shapes;
}

// For each parameter set its input.
using Inputs = std::vector<std::pair<Parameters, std::vector<double>>>;

void Add(const std::string& workload, const char* library, const std::shared_ptr<const Inputs>& inputs,
         const Evaluate& evaluate) {
    if (!evaluate) return;
    const std::size_t count = inputs->front().second.size();
    AddBenchmark(workload, library, static_cast<std::int64_t>(inputs->size() * count),
                 [inputs, evaluate, out = std::vector<double>(count)]() mutable {
                     for (const auto& [parameters, in] : *inputs) {
                         evaluate(out.data(), in.data(), in.size(), parameters);
                         benchmark::DoNotOptimize(out.data());
                         benchmark::ClobberMemory();
                     }
                 });
}

// The peers have scalar functions only: they stand beside both our forms.
void AddFunction(const Family& family, const std::string& function, Evaluate Functions::*member,
                 const std::shared_ptr<const Inputs>& inputs) {
    const auto add = [&](const std::string& form, const Functions& ours) {
        const std::string workload = family.name + function + form;
        Add(workload, kOurs, inputs, ours.*member);
        for (const auto& [library, functions] : family.peers)
            Add(workload, library, inputs, functions.*member);
    };
    add(" array", Ours(family, &test::Function::each));
    add(" scalar", Ours(family, &test::Function::loop));
}

struct Samples {
    std::shared_ptr<const Inputs> probabilities;
    std::shared_ptr<const Inputs> values;
};

// Uniform probabilities, and values drawn from the distribution.
Samples SamplesOf(const Family& family, std::size_t count) {
    std::mt19937_64 generator(20);
    std::uniform_real_distribution<> uniform;
    Inputs probabilities;
    Inputs values;
    for (const Parameters& parameters : family.parameters) {
        std::vector<double> p(count);
        for (double& probability : p)
            probability = uniform(generator);
        std::vector<double> x(count);
        Ours(family, &test::Function::each).invCdf(x.data(), p.data(), count, parameters);
        probabilities.emplace_back(parameters, std::move(p));
        values.emplace_back(parameters, std::move(x));
    }
    return {std::make_shared<const Inputs>(std::move(probabilities)),
            std::make_shared<const Inputs>(std::move(values))};
}

void AddFamily(const Family& family, std::size_t count) {
    const Samples at = SamplesOf(family, count);
    if (!family.name.starts_with("noncentral")) AddFunction(family, "Pdf", &Functions::pdf, at.values);
    AddFunction(family, "Cdf", &Functions::cdf, at.values);
    AddFunction(family, "InvCdf", &Functions::invCdf, at.probabilities);
}

}  // namespace

void AddDistributionBenchmarks() {
    const auto add = [](const std::vector<Family>& families, std::size_t count) {
        for (const Family& family : families)
            AddFamily(family, count);
    };
    add(ClosedForms(), kManyValues);
    add(GammaFamilies(), kSomeValues);
    for (const Family& family : GammaShapes())
        AddFunction(family, "Cdf", &Functions::cdf, SamplesOf(family, kSomeValues).values);
    add(BetaFamilies(), kSomeValues);
    add(CountFamilies(), kSomeValues);
    for (const Family& family : LargeCountFamilies())
        AddFunction(family, "InvCdf", &Functions::invCdf, SamplesOf(family, kSomeValues).probabilities);
    for (const Family& family : BetaShapes())
        AddFunction(family, "Cdf", &Functions::cdf, SamplesOf(family, kSomeValues).values);
    add(NoncentralFamilies(), kFewValues);
    add(UpperQuantiles(), kSomeValues);
    add(NoncentralUpperQuantiles(), kFewValues);
}

}  // namespace zul::bench
