// The exported distribution functions, p-values and critical values, through the table of tests/distributions.
#include "distributions/families.h"
#include "fuzz/support/parameters.h"

namespace zul::fuzz {
namespace {

using test::Applied, test::Distribution, test::Domain, test::Family;

// The text of a function with its arguments, and the numbers about it.
auto About(const Applied& f, const char* what, const auto&... numbers) {
    return [=, &f] { return Listed(f.function->name, f.parameters) + Call(what, numbers...); };
}

// Some of the arguments replaced by any.
void MakeWild(Applied& f, Input& input) {
    const std::size_t replaced = input.Choice(16);
    for (std::size_t i = 0; i < f.parameters.size(); ++i)
        if ((replaced >> i & 1) != 0) f.parameters[i] = Argument(f.function->types[i], input);
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

// The result; unwritten, which is a NaN, after an exception.
double Evaluate(const Applied& f, bool bare) {
    double value = kUnwritten;
    Checked(bare ? Mode::Bare : Mode::Foreign, About(f, ""), [&] { value = f.function->call(f.parameters); });
    Expect(bare || value != kNA, About(f, " gave the missing value"));
    return value;
}

double Evaluate(const Applied& f, bool bare, double x) {
    return Evaluate({f.function, Joined({{x}, f.parameters})}, bare);
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
    const auto describe = About(f, " on an array");
    const bool returns = Checked(bare ? Mode::Bare : Mode::Foreign, describe, run, kArrayLimit);
    std::size_t written = 0;
    for (; written < count; ++written) {
        const double value = Evaluate(f, bare, in[written]);
        if (!IsWritten(value)) break;
        expected[written] = value;
    }
    Expect(returns == (written == count), About(f, " on an array is unlike the scalar", in[written]));
    for (std::size_t i = 0; i < out.size(); ++i)
        Expect(SameBits(out[i], expected[i]), About(f, " on an array", i, in[i], out[i], expected[i]));
}

void CheckTails(const Distribution& d, const Family& family, double x) {
    const double lower = Evaluate(d.lower, family.bare, x);
    const double upper = Evaluate(d.upper, family.bare, x);
    const double density = Evaluate(d.pdf, family.bare, x);
    const double mass = family.kind == test::Kind::Discrete ? density : 0;
    const bool inRange = !(density < 0 || lower < 0 || lower > 1 || upper < 0 || upper > 1);
    Expect(inRange && !(std::abs(lower + upper - 1 - mass) > 2e-9 + 1e-5 * mass),
           About(d.lower, " of", x, lower, upper, density));
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
    const double less = Evaluate(tail, family.bare, discrete ? (upper ? x : x - 1) : x - rounding);
    const double more = Evaluate(tail, family.bare, discrete ? (upper ? x + 1 : x) : x + rounding);
    Expect(!(std::min(less, more) > p + 2e-9 || std::max(less, more) < p - 2e-9),
           About(quantile, " at", p, x, less, more));
}

void CheckValid(const Family& family, Input& input) {
    if (family.name == "Discrete") return;  // the user's table may be any
    Data parameters = ValidParameters(family.domains, input);
    LimitTime(family, parameters, input);
    const Distribution d = family.With(parameters);
    const double p = input.Fraction();
    for (const bool upper : {false, true}) {
        const double x = Evaluate(upper ? d.upperQuantile : d.quantile, family.bare, p);
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
    f.parameters.insert(f.parameters.begin(), 0);
    MakeWild(f, input);
    f.parameters.erase(f.parameters.begin());
    LimitTime(family, f.parameters, input);
    Array in{};
    const std::size_t count = input.Choice(in.size());
    for (std::size_t i = 0; i < count; ++i) {
        const double p = input.Fraction();
        in[i] = input.Flag()                   ? input.Real()
                : f.function == &family.invCdf ? p
                                               : Evaluate(d.quantile, bare, p);
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
    Applied f = {&statistic.function, statistic.arguments};
    MakeWild(f, input);
    const double value = Evaluate(f, f.function->name == "Psi");
    const bool probability = f.function->name.ends_with("PValue") && IsWritten(value);
    if (probability) ExpectWithin(About(f, ""), 0, 1, {value});
}

// A critical value, and its p-value.
void CheckCriticalValue(Input& input) {
    const std::string name = input.OneOf(std::array{"ChiSq", "F", "Normal", "T"});
    const double level = input.Fraction();
    const double side = input.Choice<double>(3) - 1;
    const double comparisons = name == "T" ? 1 + input.Choice<double>(20) : 1;
    Data df(name == "F" ? 2 : name == "Normal" ? 0 : 1);
    for (double& value : df)
        value = ValidParameter(Domain::Positive, {}, false, 8, input);
    Applied critical = {&test::FunctionOf(name + "CritValue"), Joined({{level}, df, {side, comparisons}})};
    critical.parameters.resize(critical.function->types.size());
    const double x = Evaluate(critical, false);
    if (std::isnan(x)) return;
    const double p = Evaluate({&test::FunctionOf(name + "PValue"), Joined({{x}, df, {side}})}, false);
    if (IsWritten(p)) ExpectWithin(About(critical, " of", x), 0, 1, {p});
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
