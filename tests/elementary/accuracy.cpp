// zul_elementary_accuracy [COUNT [RANGE]]: the largest errors of the elementary functions, in units of the last place,
// of COUNT arguments from each range (10,000,000 unless given), or from those whose names begin with RANGE, against the
// C library's functions of 64 bits, which add at most 0.001 to them. Fails where a range's limit is exceeded.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "elementary/arguments.h"
#include "elementary/error_function.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "elementary/trigonometric.h"

namespace {

using namespace zul::elementary;
using zul::test::RandomArguments;

long double Place(long double x) {
    int exponent = 0;
    std::frexp(static_cast<double>(x), &exponent);
    return std::ldexp(1.0L, (exponent < -1021 ? -1021 : exponent) - 53);
}

struct Pair {
    double x;
    double y;
};

struct Range {
    const char* name;
    double limit;
    double (*function)(Pair);
    long double (*reference)(Pair);
    Pair (*argument)(RandomArguments&);
};

#define FUNCTION(own, exact)         \
    [](Pair p) { return own(p.x); }, \
        [](Pair p) -> long double { return exact(static_cast<long double>(p.x)); }
#define POWER                                                                          \
    [](Pair p) { return Pow(p.x, p.y); }, [](Pair p) -> long double {                  \
        return std::pow(static_cast<long double>(p.x), static_cast<long double>(p.y)); \
    }
#define FROM(expression) [](RandomArguments& a) { return Pair{expression, 0}; }

Pair PowerWithLog(double x, double logOfPower) {
    return {x, logOfPower / std::log(x)};
}

const Range kRanges[] = {
    {"exp -708 to 709.78", 0.51, FUNCTION(Exp, std::exp), FROM(a.Uniform(-708, 709.78))},
    {"exp -1 to 1", 0.51, FUNCTION(Exp, std::exp), FROM(a.Uniform(-1, 1))},
    {"exp, denormal results", 0.51, FUNCTION(Exp, std::exp), FROM(a.Uniform(-745.13, -708))},
    {"exp, any double to 700", 0.51, FUNCTION(Exp, std::exp), FROM(a.Signed(a.AnyDouble(0x1p-60, 700)))},
    {"expm1 -40 to 709.78", 0.51, FUNCTION(Expm1, std::expm1), FROM(a.Uniform(-40, 709.78))},
    {"expm1 -1 to 1", 0.51, FUNCTION(Expm1, std::expm1), FROM(a.Uniform(-1, 1))},
    {"expm1 -0.02 to 0.02", 0.51, FUNCTION(Expm1, std::expm1), FROM(a.Uniform(-0.02, 0.02))},
    {"expm1, any double to 1", 0.51, FUNCTION(Expm1, std::expm1), FROM(a.Signed(a.AnyDouble(0x1p-60, 1)))},
    {"log, any double", 0.505, FUNCTION(Log, std::log), FROM(a.AnyDouble(0x1p-1074, 0x1.fffffffffffffp1023))},
    {"log 0.5 to 2", 0.505, FUNCTION(Log, std::log), FROM(a.Uniform(0.5, 2))},
    {"log 0.99 to 1.01", 0.505, FUNCTION(Log, std::log), FROM(a.Uniform(0.99, 1.01))},
    {"log, 1 and any double to 0.5", 0.505, FUNCTION(Log, std::log),
     FROM(1 + a.Signed(a.AnyDouble(0x1p-52, 0.5)))},
    {"log1p, any double to 1", 0.505, FUNCTION(Log1p, std::log1p), FROM(a.Signed(a.AnyDouble(0x1p-60, 1)))},
    {"log1p -1 to 2", 0.505, FUNCTION(Log1p, std::log1p), FROM(a.Uniform(-1, 2))},
    {"log1p, any large double", 0.505, FUNCTION(Log1p, std::log1p),
     FROM(a.AnyDouble(1, 0x1.fffffffffffffp1023))},
    {"pow, results -690 to 690", 0.51, POWER,
     [](RandomArguments& a) { return PowerWithLog(a.AnyDouble(0x1p-60, 0x1p60), a.Uniform(-690, 690)); }},
    {"pow near 1", 0.51, POWER,
     [](RandomArguments& a) {
         return PowerWithLog(1 + a.Signed(a.AnyDouble(0x1p-40, 0.25)), a.Uniform(-690, 690));
     }},
    {"pow, denormal results", 0.51, POWER,
     [](RandomArguments& a) { return PowerWithLog(a.AnyDouble(0x1p-1074, 0.9), a.Uniform(-745, -690)); }},
    {"pow, small exponents", 0.51, POWER,
     [](RandomArguments& a) {
         return Pair{a.AnyDouble(0x1p-1074, 0x1p1023), a.Uniform(-0.9, 0.9)};
     }},
    {"sin -4 to 4", 1, FUNCTION(Sin, std::sin), FROM(a.Uniform(-4, 4))},
    {"sin, any double to 1", 1, FUNCTION(Sin, std::sin), FROM(a.Signed(a.AnyDouble(0x1p-40, 1)))},
    {"sin to 823549", 1, FUNCTION(Sin, std::sin), FROM(a.Uniform(-823549, 823549))},
    {"sin, any large double", 1, FUNCTION(Sin, std::sin),
     FROM(a.Signed(a.AnyDouble(1, 0x1.fffffffffffffp1023)))},
    {"cos -4 to 4", 1, FUNCTION(Cos, std::cos), FROM(a.Uniform(-4, 4))},
    {"cos to 823549", 1, FUNCTION(Cos, std::cos), FROM(a.Uniform(-823549, 823549))},
    {"cos, any large double", 1, FUNCTION(Cos, std::cos),
     FROM(a.Signed(a.AnyDouble(1, 0x1.fffffffffffffp1023)))},
    {"tan -4 to 4", 1, FUNCTION(Tan, std::tan), FROM(a.Uniform(-4, 4))},
    {"tan, any double to 1", 1, FUNCTION(Tan, std::tan), FROM(a.Signed(a.AnyDouble(0x1p-40, 1)))},
    {"tan to 823549", 1, FUNCTION(Tan, std::tan), FROM(a.Uniform(-823549, 823549))},
    {"tan, any large double", 1, FUNCTION(Tan, std::tan),
     FROM(a.Signed(a.AnyDouble(1, 0x1.fffffffffffffp1023)))},
    {"atan, any double", 1, FUNCTION(Atan, std::atan), FROM(a.Signed(a.AnyDouble(0x1p-40, 0x1p70)))},
    {"atan -1 to 1", 1, FUNCTION(Atan, std::atan), FROM(a.Uniform(-1, 1))},
    {"atan 0.05 to 0.2", 1, FUNCTION(Atan, std::atan), FROM(a.Uniform(0.05, 0.2))},
    {"atan -40 to 40", 1, FUNCTION(Atan, std::atan), FROM(a.Uniform(-40, 40))},
    {"erfc -7 to 0", 1, FUNCTION(Erfc, std::erfc), FROM(a.Uniform(-7, 0))},
    {"erfc 0 to 2", 1, FUNCTION(Erfc, std::erfc), FROM(a.Uniform(0, 2))},
    {"erfc 2 to 26.54", 1, FUNCTION(Erfc, std::erfc), FROM(a.Uniform(2, 26.54))},
    {"erfc, denormal results", 1, FUNCTION(Erfc, std::erfc), FROM(a.Uniform(26.54, 27.22))},
    {"erfc, any double to 1", 1, FUNCTION(Erfc, std::erfc), FROM(a.Signed(a.AnyDouble(0x1p-60, 1)))},
};

bool Measure(const Range& range, long count) {
    RandomArguments arguments;
    double worst = 0;
    Pair at{};
    for (long k = 0; k < count; ++k) {
        const Pair p = range.argument(arguments);
        const long double exact = range.reference(p);
        const double error =
            static_cast<double>(std::abs(static_cast<long double>(range.function(p)) - exact) / Place(exact));
        if (error <= worst) continue;
        worst = error;
        at = p;
    }
    const bool good = worst <= range.limit;
    std::printf("%-30s %.4f at %a %a%s\n", range.name, worst, at.x, at.y, good ? "" : "  TOO LARGE");
    return good;
}

}  // namespace

int main(int argc, char** argv) {
    const long count = argc > 1 ? std::strtol(argv[1], nullptr, 10) : 10'000'000;
    const std::string chosen = argc > 2 ? argv[2] : "";
    bool good = true;
    for (const Range& range : kRanges)
        if (std::strncmp(range.name, chosen.c_str(), chosen.size()) == 0)
            good = Measure(range, count) && good;
    return good ? 0 : 1;
}
