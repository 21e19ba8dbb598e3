// The exported distribution functions, p-values and critical values, through the table of tests/distributions.
#include "distributions/families.h"
#include "fuzz/support/parameters.h"
#include "support/float_mode.h"

namespace zul::fuzz {
namespace {

using test::Applied, test::Distribution, test::Domain, test::Family, test::Function;

constexpr double kNA = 1.23456e30;

// The text of a function with its arguments, and the numbers about it.
template <typename... Numbers>
auto About(const Function& function, test::Arguments arguments, const char* what, const Numbers&... numbers) {
    return [=, &function] { return Listed(function.name, arguments) + Call(what, numbers...); };
}

// Some of the arguments replaced by any.
void MakeWild(const Function& function, Data& arguments, Input& input) {
    const std::size_t replaced = input.Choice(16);
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if ((replaced >> i & 1) != 0) arguments[i] = Argument(function.types[i], input);
}

bool HasNoncentrality(const Family& family) {
    return family.name == "T" || family.domains.back() == Domain::Noncentrality;
}

// The time of a noncentral tail grows with the root of the noncentrality, of t with itself: few are large.
void LimitTime(const Family& family, Data& parameters, Input& input) {
    constexpr double kQuick = 100;
    constexpr double kRefused = 1e11;
    const std::size_t index = family.domains.size() - 1;
    if (!HasNoncentrality(family) || index >= parameters.size() || input.Byte() % 64 == 63) return;
    if (std::abs(parameters[index]) < kRefused) parameters[index] = std::fmod(parameters[index], kQuick);
}

// The result and whether there is one.
struct Outcome {
    bool returns;
    double value;
};

// Framed calls come in a mode that they have to replace.
template <typename Evaluate, typename Describe>
bool CheckedCall(bool bare, Evaluate evaluate, Describe describe, int calls = 1) {
    const auto run = [&] {
        if (!bare) _mm_setcsr(test::kForeignMode);
        evaluate();
    };
    return Checked(bare ? Mode::Bare : Mode::Framed, run, describe, calls);
}

Outcome Evaluate(const Function& function, bool bare, test::Arguments arguments) {
    Outcome outcome{false, kNaN};
    const auto run = [&] { outcome.value = function.call(arguments); };
    outcome.returns = CheckedCall(bare, run, About(function, arguments, ""));
    Require(bare || outcome.value != kNA, About(function, arguments, " gave the missing value"));
    return outcome;
}

Outcome Evaluate(const Applied& f, bool bare, double x) {
    Data arguments = {x};
    arguments.insert(arguments.end(), f.parameters.begin(), f.parameters.end());
    return Evaluate(*f.function, bare, arguments);
}

constexpr std::size_t kArrayLimit = 4;
using Array = std::array<double, kArrayLimit + 1>;  // with a guard behind

// What the array call makes of `out`: the bits of the scalar calls up to the first that throws, the elements
// from there on as they were.
void CheckArray(const Applied& f, bool bare, const Array& in, std::size_t count, bool inPlace) {
    Array expected;
    expected.fill(kUnwritten);
    if (inPlace) std::copy_n(in.begin(), count, expected.begin());
    Array out = expected;
    const auto run = [&] { f(out.data(), inPlace ? out.data() : in.data(), count); };
    const bool returns =
        CheckedCall(bare, run, About(*f.function, f.parameters, " on an array"), kArrayLimit);
    std::size_t written = 0;
    for (; written < count; ++written) {
        const Outcome outcome = Evaluate(f, bare, in[written]);
        if (!outcome.returns) break;
        expected[written] = outcome.value;
    }
    Require(returns == (written == count),
            About(*f.function, f.parameters, " on an array is unlike the scalar", in[written]));
    for (std::size_t i = 0; i < out.size(); ++i)
        Require(SameBits(out[i], expected[i]),
                About(*f.function, f.parameters, " on an array", i, in[i], out[i], expected[i]));
}

void CheckTails(const Distribution& d, const Family& family, double x) {
    const double lower = Evaluate(d.lower, family.bare, x).value;
    const double upper = Evaluate(d.upper, family.bare, x).value;
    const double density = Evaluate(d.pdf, family.bare, x).value;
    const double mass = family.kind == test::Kind::Discrete ? density : 0;
    const bool inRange = !(density < 0 || lower < 0 || lower > 1 || upper < 0 || upper > 1);
    Require(inRange && !(std::abs(lower + upper - 1 - mass) > 2e-9 + 1e-5 * mass),
            About(*d.lower.function, d.lower.parameters, " of", x, lower, upper, density));
}

// The tail passes p at the quantile, but for the rounding of the quantile and of locations in it.
void CheckQuantile(const Distribution& d, const Family& family, double p, double x, bool upper) {
    const bool discrete = family.kind == test::Kind::Discrete;
    // Those quantiles are searched to 1e-12 of themselves.
    const bool noncentral = HasNoncentrality(family) && d.quantile.parameters.back() != 0;
    double size = std::abs(x);
    for (const double parameter : d.quantile.parameters)
        size = std::max(size, std::abs(parameter));
    const double rounding = size * (noncentral ? 2e-12 : 1e-15);
    const Applied& tail = upper ? d.upper : d.lower;
    const Applied& quantile = upper ? d.upperQuantile : d.quantile;
    // Of a count the two tails that p lies between: the upper ones include the point.
    const double less = Evaluate(tail, family.bare, discrete ? (upper ? x : x - 1) : x - rounding).value;
    const double more = Evaluate(tail, family.bare, discrete ? (upper ? x + 1 : x) : x + rounding).value;
    Require(!(std::min(less, more) > p + 2e-9 || std::max(less, more) < p - 2e-9),
            About(*quantile.function, quantile.parameters, " at", p, x, less, more));
}

void CheckValid(const Family& family, Input& input) {
    if (family.name == "Discrete") return;  // the user's table may be any
    Data parameters = ValidParameters(family.domains, input);
    LimitTime(family, parameters, input);
    const Distribution d = family.With(parameters);
    const double p = input.Fraction();
    for (const bool upper : {false, true}) {
        const double x = Evaluate(upper ? d.upperQuantile : d.quantile, family.bare, p).value;
        if (!std::isfinite(x) || x == 0 || std::abs(x) >= 1e29) continue;  // or beyond the range of a double
        CheckTails(d, family, x);
        CheckQuantile(d, family, p, x, upper);
    }
    const double any = input.Real();
    CheckTails(d, family, family.kind == test::Kind::Discrete ? std::floor(any) : any);
}

void CheckAny(const Family& family, Input& input) {
    const Distribution d = family.With(family.parameters[input.Choice(family.parameters.size())]);
    Applied f = d.Functions()[input.Choice(4)];
    const bool bare = family.bare;
    Data arguments = {0};
    arguments.insert(arguments.end(), f.parameters.begin(), f.parameters.end());
    MakeWild(*f.function, arguments, input);
    f.parameters.assign(arguments.begin() + 1, arguments.end());
    LimitTime(family, f.parameters, input);
    Array in{};
    const std::size_t count = input.Choice(in.size());
    for (std::size_t i = 0; i < count; ++i) {
        const double p = input.Fraction();
        in[i] = input.Flag()                   ? input.Real()
                : f.function == &family.invCdf ? p
                                               : Evaluate(d.quantile, bare, p).value;
    }
    const bool inPlace = input.Flag();
    CheckArray(f, bare, in, count, inPlace);
    if (f.function != &family.invCdf || !family.tailInvCdf.call) return;
    f.function = &family.tailInvCdf;
    f.parameters.push_back(1);
    CheckArray(f, bare, in, count, inPlace);
}

// Of a statistic outside its domain: a p-value is in [0, 1] or NaN still.
void CheckStatistic(const test::Statistic& statistic, Input& input) {
    Data arguments = statistic.arguments;
    MakeWild(statistic.function, arguments, input);
    const bool bare = statistic.function.name == "Psi";
    const double value = Evaluate(statistic.function, bare, arguments).value;
    const bool probability = statistic.function.name.ends_with("PValue");
    Require(!probability || IsProbability(value), About(statistic.function, arguments, " gave", value));
}

// A critical value, and its p-value.
void CheckCriticalValue(Input& input) {
    const std::string name = input.OneOf(std::array{"ChiSq", "F", "Normal", "T"});
    const double level = input.Fraction();
    const double side = static_cast<double>(input.Choice(3)) - 1;
    const double comparisons = name == "T" ? static_cast<double>(1 + input.Choice(20)) : 1;
    Data df(name == "F" ? 2 : name == "Normal" ? 0 : 1);
    for (double& value : df)
        value = ValidParameter(Domain::Positive, {}, false, input);
    Data arguments = df;
    arguments.insert(arguments.begin(), level);
    arguments.insert(arguments.end(), {side, comparisons});
    const Function& critical = test::FunctionOf(name + "CritValue");
    arguments.resize(critical.types.size());
    const double x = Evaluate(critical, false, arguments).value;
    if (std::isnan(x)) return;
    df.insert(df.begin(), x);
    df.push_back(side);
    const double p = Evaluate(test::FunctionOf(name + "PValue"), false, df).value;
    Require(IsProbability(p), About(critical, arguments, " gave", x, p));
}

}  // namespace

void RunInput(Input& input) {
    const auto& families = test::Families();
    const auto& statistics = test::Statistics();
    const std::size_t subject = input.Choice(families.size() + statistics.size() + 1);
    if (subject < families.size())
        input.Flag() ? CheckValid(families[subject], input) : CheckAny(families[subject], input);
    else if (subject < families.size() + statistics.size())
        CheckStatistic(statistics[subject - families.size()], input);
    else
        CheckCriticalValue(input);
}

}  // namespace zul::fuzz
