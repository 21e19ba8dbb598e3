#include "distributions/families.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <map>
#include <sstream>
#include <string_view>
#include <tuple>

#include "zul/distributions.h"
#include "zul/multiple_comparison.h"

namespace zul::test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

template <typename... Types>
Function Scalar(std::string name, double (*function)(Types...)) {
    return {std::move(name),
            {kTypeOf<Types>...},
            [function](Arguments arguments) { return std::apply(function, Typed<Types...>(arguments)); },
            {},
            {}};
}

// From the two overloads of one name: both have the same parameters, or it does not compile.
template <typename... Types>
Function Both(const std::string& name, double (*function)(double, Types...),
              void (*each)(double*, const double*, std::size_t, Types...)) {
    Function both = Scalar(name, function);
    both.each = [each](double* out, const double* in, std::size_t count, Arguments parameters) {
        std::apply(each, std::tuple_cat(std::tuple(out, in, count), Typed<Types...>(parameters)));
    };
    both.loop = [function](double* out, const double* in, std::size_t count, Arguments parameters) {
        const auto typed = Typed<Types...>(parameters);
        for (std::size_t i = 0; i < count; ++i)
            out[i] = std::apply([=](Types... values) { return function(in[i], values...); }, typed);
    };
    return both;
}

template <typename... Types>
struct TypeList {};

// The types of the parameters of an inverse, by which its overloads are told apart: those of the density and,
// where that is central, the noncentrality.
template <typename... Pdf, typename... Cdf>
auto InverseTypes(double (*)(double, Pdf...), double (*)(double, Cdf...)) {
    if constexpr (sizeof...(Cdf) == sizeof...(Pdf) + 1)
        return TypeList<Pdf...>{};
    else
        return TypeList<Pdf..., double>{};
}

template <typename... Types>
Function Inverse(TypeList<Types...> /*types*/, const std::string& name,
                 std::type_identity_t<double (*)(double, Types...)> function,
                 std::type_identity_t<void (*)(double*, const double*, std::size_t, Types...)> each) {
    return Both(name, function, each);
}

template <typename... Types>
Function TailInverse(
    TypeList<Types...> /*types*/, const std::string& name,
    std::type_identity_t<double (*)(double, Types..., bool)> function,
    std::type_identity_t<void (*)(double*, const double*, std::size_t, Types..., bool)> each) {
    return Both(name, function, each);
}

// The user-defined family with the first n entries of a table.
constexpr std::array kValues = {-1.0, 0.0, 2.0, 3.0, 7.0, 11.0};
constexpr std::array kMasses = {0.0625, 0.25, 0.125, 0.3125, 0.1875, 0.0625};
constexpr std::array kSums = {0.0625, 0.3125, 0.4375, 0.75, 0.9375, 1.0};

int Entries(int n) {
    return std::min(n, static_cast<int>(kValues.size()));
}

double DiscretePdf(double x, int n) {
    return zul::DiscretePdf(x, kValues.data(), kMasses.data(), Entries(n));
}

double DiscreteCdf(double x, int n, bool upper) {
    return zul::DiscreteCdf(x, kValues.data(), kSums.data(), Entries(n), upper);
}

double DiscreteInvCdf(double p, int n) {
    return zul::DiscreteInvCdf(p, kValues.data(), kSums.data(), Entries(n));
}

void DiscretePdf(double* out, const double* in, std::size_t count, int n) {
    zul::DiscretePdf(out, in, count, kValues.data(), kMasses.data(), Entries(n));
}

void DiscreteCdf(double* out, const double* in, std::size_t count, int n, bool upper) {
    zul::DiscreteCdf(out, in, count, kValues.data(), kSums.data(), Entries(n), upper);
}

void DiscreteInvCdf(double* out, const double* in, std::size_t count, int n) {
    zul::DiscreteInvCdf(out, in, count, kValues.data(), kSums.data(), Entries(n));
}

Support Line(Arguments) {
    return {-kInf, kInf};
}

Support Unit(Arguments) {
    return {0, 1};
}

Support Positive(Arguments) {
    return {0, kInf};
}

Support OneAndMore(Arguments) {
    return {1, kInf};
}

template <std::size_t place>
Support From(Arguments p) {
    return {p[place], kInf};
}

Support Hull(Arguments p) {
    return {p.front(), p.back()};
}

Support UpToFirst(Arguments p) {
    return {0, p[0]};
}

Support Overlap(Arguments p) {
    return {std::max(0.0, p[1] + p[2] - p[0]), std::min(p[1], p[2])};
}

Support OfLambda(Arguments p) {
    const double size = p[0] > 0 ? p[2] / p[0] : kInf;
    return {p[1] - size, p[1] + size};
}

Support OfTable(Arguments) {
    return {kValues.front(), kValues.back()};
}

std::vector<Parameters> Members(const std::string& text) {
    std::vector<Parameters> members;
    std::istringstream all(text);
    for (std::string one; std::getline(all, one, ';');) {
        std::istringstream numbers(one);
        members.emplace_back(std::istream_iterator<double>(numbers), std::istream_iterator<double>());
    }
    return members;
}

Family Make(std::string name, Function pdf, Function cdf, Function invCdf, Function tailInvCdf, Kind kind,
            std::string_view domains, Support (*support)(Arguments), const std::string& members,
            Operation operation = {}, bool bare = false) {
    Family family{std::move(name),
                  kind,
                  std::move(pdf),
                  std::move(cdf),
                  std::move(invCdf),
                  std::move(tailInvCdf),
                  {},
                  support,
                  Members(members),
                  std::move(operation),
                  bare};
    for (const char letter : domains)
        family.domains.push_back(static_cast<Domain>(letter));
    return family;
}

// Domains of the parameters, support, ordinary members, operation. Where the density has a kink its lower tail is a
// multiple of 0.1.
std::vector<Family> AllFamilies() {
    using enum Kind;
    using S = ISampler;
// The functions of a family from its name.
#define ZUL_TEST_FAMILY(family, ...)                                                                        \
    Make(#family, Both(#family "Pdf", family##Pdf, family##Pdf),                                            \
         Both(#family "Cdf", family##Cdf, family##Cdf),                                                     \
         Inverse(InverseTypes(family##Pdf, family##Cdf), #family "InvCdf", family##InvCdf, family##InvCdf), \
         TailInverse(InverseTypes(family##Pdf, family##Cdf), #family "InvCdf", family##InvCdf,              \
                     family##InvCdf),                                                                       \
         __VA_ARGS__)
    return {
        ZUL_TEST_FAMILY(Beta, Continuous, "pp", Unit, "2 5; 0.5 0.5; 30 0.7; 400 600",
                        Drawn("Beta", &S::SampleBeta)),
        ZUL_TEST_FAMILY(Binomial, Discrete, "cf", UpToFirst, "10 0.5; 40 0.03; 1000 0.7",
                        Drawn("Binomial", &S::SampleBinomial)),
        ZUL_TEST_FAMILY(Cauchy, Continuous, "rp", Line, "0 1; -3 0.2", Drawn("Cauchy", &S::SampleCauchy)),
        ZUL_TEST_FAMILY(ChiSq, Continuous, "pn", Positive, "1 0; 7 0; 250 0; 4 6",
                        Drawn("ChiSquare", &S::SampleChiSquare)),
        ZUL_TEST_FAMILY(Exponential, Continuous, "pr", From<1>, "1 0; 40 -3",
                        Drawn("Exponential", &S::SampleExponential)),
        ZUL_TEST_FAMILY(F, Continuous, "ppn", Positive, "1 1 0; 5 12 0; 40 7 0; 3 9 4",
                        Drawn("F", &S::SampleF)),
        ZUL_TEST_FAMILY(Gamma, Continuous, "ppr", From<2>, "1 1 0; 0.3 2 0; 7.5 0.1 10; 900 1 0",
                        Drawn("Gamma", &S::SampleGamma)),
        ZUL_TEST_FAMILY(Geometric, Discrete, "f", OneAndMore, "0.3; 0.01"),
        ZUL_TEST_FAMILY(HalfNormal, Continuous, "pr", From<1>, "1 0; 4 -2"),
        ZUL_TEST_FAMILY(Hypergeometric, Discrete, "cuu", Overlap, "20 7 12; 50 40 30; 100000 40000 700",
                        Drawn("Hypergeometric", &S::SampleHypergeometric)),
        ZUL_TEST_FAMILY(IntegerUniform, Discrete, "ca", Hull, "1 6; -10 90",
                        Drawn("IntegerUniform", &S::SampleIntegerUniform)),
        ZUL_TEST_FAMILY(Lambda, Continuous, "erp", OfLambda,
                        "0.14 0 1; -0.5 3 2; 0 0 1; 1 0 1; 2 0 3; 3.5 -1 0.5",
                        Drawn("Lambda", &S::SampleLambda)),
        ZUL_TEST_FAMILY(Laplace, Continuous, "rp", Line, "0 1; -2 3", Drawn("Laplace", &S::SampleLaplace)),
        ZUL_TEST_FAMILY(LargestExtremeValue, Continuous, "rp", Line, "0 1; 10 0.5",
                        Drawn("LargestExtremeValue", &S::SampleLargestExtremeValue)),
        ZUL_TEST_FAMILY(Logistic, Continuous, "rp", Line, "0 1; 4 0.1",
                        Drawn("Logistic", &S::SampleLogistic)),
        ZUL_TEST_FAMILY(LogLogistic, Continuous, "rpr", From<2>, "0 1 0; 1 0.3 -2",
                        Drawn("LogLogistic", &S::SampleLogLogistic)),
        ZUL_TEST_FAMILY(LogNormal, Continuous, "rpr", From<2>, "0 1 0; 1 0.3 -2",
                        Drawn("Lognormal", &S::SampleLognormal)),
        ZUL_TEST_FAMILY(NegBinomial, Discrete, "fc", From<1>, "0.5 3; 0.1 1; 0.3 20",
                        Drawn("NegBinomial", &S::SampleNegBinomial)),
        ZUL_TEST_FAMILY(Normal, Continuous, "rp", Line, "0 1; -3 0.1", Drawn("Normal", &S::SampleNormal)),
        ZUL_TEST_FAMILY(Poisson, Discrete, "p", Positive, "0.3; 4.5; 200",
                        Drawn("Poisson", &S::SamplePoisson)),
        ZUL_TEST_FAMILY(SmallestExtremeValue, Continuous, "rp", Line, "0 1; 10 0.5",
                        Drawn("SmallestExtremeValue", &S::SampleSmallestExtremeValue)),
        ZUL_TEST_FAMILY(T, Continuous, "pr", Line, "1 0; 5 0; 30 1; 8 -2", Drawn("T", &S::SampleT)),
        ZUL_TEST_FAMILY(Triangular, Continuous, "raa", Hull, "0 2 5; 0 0 1; -1 3 3",
                        Drawn("Triangular", &S::SampleTriangular)),
        ZUL_TEST_FAMILY(Weibull, Continuous, "ppr", From<2>, "1 1 0; 0.5 2 1; 4 3 -1",
                        Drawn("Weibull", &S::SampleWeibull)),
        Make("Discrete", Both("DiscretePdf", DiscretePdf, DiscretePdf),
             Both("DiscreteCdf", DiscreteCdf, DiscreteCdf),
             Both("DiscreteInvCdf", DiscreteInvCdf, DiscreteInvCdf), {}, Discrete, "c", OfTable, "6", {},
             true),
        ZUL_TEST_FAMILY(Uniform, Continuous, "ra", Hull, "0 1; -3 8", Drawn("Uniform", &S::SampleUniform),
                        true),
    };
#undef ZUL_TEST_FAMILY
}

std::vector<Statistic> AllStatistics() {
    return {
        {Scalar("ChiSqPValue", ChiSqPValue), {5, 3, 1}},
        {Scalar("FPValue", FPValue), {2, 3, 8, 1}},
        {Scalar("NormalPValue", NormalPValue), {1.5, 0}},
        {Scalar("TPValue", TPValue), {1.5, 7, 0}},
        {Scalar("BinomialPValue", BinomialPValue), {3, 20, 0.3, 0}},
        {Scalar("HypergeometricPValue", HypergeometricPValue), {3, 20, 7, 12, 0}},
        {Scalar("ChiSqCritValue", ChiSqCritValue), {0.05, 3, 1}},
        {Scalar("FCritValue", FCritValue), {0.05, 3, 8, 1}},
        {Scalar("NormalCritValue", NormalCritValue), {0.05, 0}},
        {Scalar("TCritValue", TCritValue), {0.05, 7, 0, 3}},
        {Scalar("TSidakCritValue", TSidakCritValue), {0.05, 7, 0, 3}},
        {Scalar("Psi", v2::Psi), {2.5}},
        {Scalar("GetStudentizedRangePValue", GetStudentizedRangePValue), {3.5, 5, 12}},
        {Scalar("GetStudentizedRangeCritValue", GetStudentizedRangeCritValue), {0.05, 5, 12}},
        {Scalar("GetStudentizedMaximumModulusPValue", GetStudentizedMaximumModulusPValue), {2.5, 5, 12}},
        {Scalar("GetStudentizedMaximumModulusCritValue", GetStudentizedMaximumModulusCritValue),
         {0.05, 5, 12}},
    };
}

// The function with the first of the parameters, as many as it has; the flag of a tail comes last.
Applied With(const Function& function, const std::vector<double>& values, double flag = 0) {
    const bool hasFlag = function.types.back() == Type::Flag;
    const std::size_t count = function.types.size() - (hasFlag ? 2 : 1);
    Applied applied{&function, {values.begin(), values.begin() + static_cast<std::ptrdiff_t>(count)}};
    if (hasFlag) applied.parameters.push_back(flag);
    return applied;
}

}  // namespace

double Applied::operator()(double x) const {
    std::vector<double> arguments = {x};
    arguments.insert(arguments.end(), parameters.begin(), parameters.end());
    return function->call(arguments);
}

void Applied::operator()(double* out, const double* in, std::size_t count) const {
    function->each(out, in, count, parameters);
}

std::string Applied::Name() const {
    std::ostringstream text;
    text << function->name << "(x";
    for (const double parameter : parameters)
        text << ", " << parameter;
    text << ")";
    return text.str();
}

std::vector<Applied> Distribution::Functions() const {
    std::vector<Applied> functions = {pdf, lower, upper, quantile};
    if (upperQuantile.function != nullptr) functions.push_back(upperQuantile);
    return functions;
}

std::vector<const Function*> Family::Functions() const {
    std::vector<const Function*> functions = {&pdf, &cdf, &invCdf};
    if (tailInvCdf.call) functions.push_back(&tailInvCdf);
    return functions;
}

Distribution Family::With(const Parameters& chosen) const {
    const Support ends = support(chosen);
    return {test::With(pdf, chosen),
            test::With(cdf, chosen, 0),
            test::With(cdf, chosen, 1),
            test::With(invCdf, chosen),
            tailInvCdf.call ? test::With(tailInvCdf, chosen, 1) : Applied{},
            ends.lowest,
            ends.highest};
}

const std::vector<Family>& Families() {
    static const std::vector<Family> families = AllFamilies();
    return families;
}

const std::vector<Statistic>& Statistics() {
    static const std::vector<Statistic> statistics = AllStatistics();
    return statistics;
}

const Function& FunctionOf(const std::string& name, std::size_t arguments) {
    static const auto byName = [] {
        std::multimap<std::string, const Function*> functions;
        for (const Family& family : Families())
            for (const Function* function : family.Functions())
                functions.emplace(function->name, function);
        for (const Statistic& statistic : Statistics())
            functions.emplace(statistic.function.name, &statistic.function);
        return functions;
    }();
    const auto [first, last] = byName.equal_range(name);
    if (first == last) throw std::out_of_range(name);
    const bool isFirst = std::next(first) == last || arguments != std::next(first)->second->types.size();
    return isFirst ? *first->second : *std::next(first)->second;
}

std::vector<std::string> ReferenceTables() {
    std::vector<std::string> tables = {"pvalues", "critvalues", "psi", "multiple_range", "upper_quantiles"};
    for (const Family& family : Families())
        if (family.name != "Discrete") tables.push_back(family.name);  // its user has the table
    return tables;
}

}  // namespace zul::test
