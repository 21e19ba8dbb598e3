// The special functions without the frame, each call with parameters of its own.
#include <cmath>
#include <random>
#include <vector>

#include "bench.h"
#include "numerics/beta/beta_quantiles.h"
#include "numerics/beta/noncentral_beta.h"
#include "numerics/beta/noncentral_t.h"
#include "numerics/beta/student_t.h"
#include "numerics/gamma/gamma_quantiles.h"
#include "numerics/gamma/noncentral_gamma.h"
#include "peers.h"

#ifdef ZUL_BENCH_WITH_BOOST
#include <boost/math/distributions/non_central_chi_squared.hpp>
#include <boost/math/distributions/non_central_f.hpp>
#include <boost/math/distributions/non_central_t.hpp>
#include <boost/math/distributions/students_t.hpp>
#include <boost/math/special_functions/beta.hpp>
#include <boost/math/special_functions/gamma.hpp>
#endif

namespace zul::bench {
namespace {

constexpr std::size_t kCount = 2'000;

// A probability or a point, and up to three parameters.
struct Arguments {
    double x;
    double a;
    double b;
    double c;
};

using Function = double (*)(const Arguments&);

struct Entry {
    const char* library;
    Function function;
};

struct Row {
    const char* workload;
    std::vector<Arguments> arguments;
    std::vector<Entry> entries;
};

class Draw {
public:
    double Uniform() { return uniform_(generator_); }
    // Between low and high, every order of magnitude alike.
    double LogUniform(double low, double high) { return low * std::pow(high / low, Uniform()); }

private:
    std::mt19937_64 generator_{22};
    std::uniform_real_distribution<> uniform_;
};

template <typename Make>
std::vector<Arguments> Drawn(Make make) {
    Draw draw;
    std::vector<Arguments> arguments(kCount);
    for (Arguments& a : arguments)
        a = make(draw);
    return arguments;
}

template <auto kRoutine>
double Lower(double x, auto... parameters) {
    double lower = 0;
    double upper = 0;
    kRoutine(x, parameters..., &lower, &upper);
    return lower;
}

double NoncentralF(const Arguments& v) {
    double lower = 0;
    double upper = 0;
    numerics::F_ncdf(v.x, v.a, v.b, v.c, &lower, &upper);
    return lower;
}

std::vector<Row> QuantileRows() {
    return {
        {"gamma quantile",
         Drawn([](Draw& d) {
             return Arguments{d.Uniform(), d.LogUniform(0.1, 1e3), 0, 0};
         }),
         {{kOurs,
           [](const Arguments& v) {
               double x = 0;
               numerics::gamma_lower_quant(v.x, v.a, &x);
               return x;
           }},
          ZUL_BENCH_BOOST(
              [](const Arguments& v) { return boost::math::gamma_p_inv(v.a, v.x, BoostPolicy()); }),
          ZUL_BENCH_GSL([](const Arguments& v) { return gsl_cdf_gamma_Pinv(v.x, v.a, 1); }),
          ZUL_BENCH_RMATH([](const Arguments& v) { return qgamma(v.x, v.a, 1, 1, 0); })}},
        {"beta quantile",
         Drawn([](Draw& d) {
             return Arguments{d.Uniform(), d.LogUniform(0.3, 300), d.LogUniform(0.3, 300), 0};
         }),
         {{kOurs,
           [](const Arguments& v) {
               double x = 0;
               double complement = 0;
               numerics::beta_lower_quant(v.x, numerics::BetaShapes(v.a, v.b), &x, &complement);
               return x;
           }},
          ZUL_BENCH_BOOST(
              [](const Arguments& v) { return boost::math::ibeta_inv(v.a, v.b, v.x, BoostPolicy()); }),
          ZUL_BENCH_GSL([](const Arguments& v) { return gsl_cdf_beta_Pinv(v.x, v.a, v.b); }),
          ZUL_BENCH_RMATH([](const Arguments& v) { return qbeta(v.x, v.a, v.b, 1, 0); })}},
        {"t quantile",
         Drawn([](Draw& d) {
             return Arguments{d.Uniform(), d.LogUniform(0.5, 1e3), 0, 0};
         }),
         {{kOurs,
           [](const Arguments& v) {
               double t = 0;
               numerics::t_lower_qt(v.x, v.a, &t);
               return t;
           }},
          ZUL_BENCH_BOOST([](const Arguments& v) {
              return quantile(boost::math::students_t_distribution<double, BoostPolicy>(v.a), v.x);
          }),
          ZUL_BENCH_GSL([](const Arguments& v) { return gsl_cdf_tdist_Pinv(v.x, v.a); }),
          ZUL_BENCH_RMATH([](const Arguments& v) { return qt(v.x, v.a, 1, 0); })}},
    };
}

std::vector<Row> NoncentralRows() {
    return {
        {"noncentral chi-square tails",
         Drawn([](Draw& d) {
             const double df = d.LogUniform(1, 100);
             const double noncentrality = d.LogUniform(0.1, 1e3);
             return Arguments{(df + noncentrality) * d.LogUniform(0.5, 2), df, noncentrality, 0};
         }),
         {{kOurs, [](const Arguments& v) { return Lower<numerics::chi2_ncdf>(v.x, v.a, v.b); }},
          ZUL_BENCH_BOOST([](const Arguments& v) {
              return cdf(boost::math::non_central_chi_squared_distribution<double, BoostPolicy>(v.a, v.b),
                         v.x);
          }),
          ZUL_BENCH_RMATH([](const Arguments& v) { return pnchisq(v.x, v.a, v.b, 1, 0); })}},
        {"noncentral F tails",
         Drawn([](Draw& d) {
             const double df1 = d.LogUniform(1, 50);
             const double noncentrality = d.LogUniform(0.1, 300);
             return Arguments{(1 + noncentrality / df1) * d.LogUniform(0.5, 2), df1, d.LogUniform(2, 200),
                              noncentrality};
         }),
         {{kOurs, [](const Arguments& v) { return NoncentralF(v); }},
          ZUL_BENCH_BOOST([](const Arguments& v) {
              return cdf(boost::math::non_central_f_distribution<double, BoostPolicy>(v.a, v.b, v.c), v.x);
          }),
          ZUL_BENCH_RMATH([](const Arguments& v) { return pnf(v.x, v.a, v.b, v.c, 1, 0); })}},
        {"noncentral t tails",
         Drawn([](Draw& d) {
             const double delta = d.LogUniform(0.1, 30);
             return Arguments{delta * d.LogUniform(0.5, 2), d.LogUniform(1, 200), delta, 0};
         }),
         {{kOurs, [](const Arguments& v) { return Lower<numerics::t_ncdf>(v.x, v.a, v.b); }},
          ZUL_BENCH_BOOST([](const Arguments& v) {
              return cdf(boost::math::non_central_t_distribution<double, BoostPolicy>(v.a, v.b), v.x);
          }),
          ZUL_BENCH_RMATH([](const Arguments& v) { return pnt(v.x, v.a, v.b, 1, 0); })}},
    };
}

void Add(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        for (const auto& [library, function] : row.entries) {
            AddBenchmark(row.workload, library, kCount, [function = function, arguments = row.arguments] {
                for (const Arguments& a : arguments)
                    benchmark::DoNotOptimize(function(a));
            });
        }
    }
}

}  // namespace

void AddNumericsBenchmarks() {
    Add(QuantileRows());
    Add(NoncentralRows());
}

}  // namespace zul::bench

int main(int argc, char** argv) {
    return zul::bench::RunAtLevel(argc, argv, {zul::bench::AddNumericsBenchmarks});
}
