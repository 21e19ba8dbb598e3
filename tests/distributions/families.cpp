#include "distributions/families.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <map>
#include <sstream>
#include <stdexcept>
#include <tuple>
#include <type_traits>

#include "zul/distributions.h"

namespace zul::test {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();

template <typename T>
constexpr Type kTypeOf = std::is_same_v<T, double>                           ? Type::Real
                         : std::is_same_v<T, bool>                           ? Type::Flag
                         : std::is_same_v<std::remove_cv_t<T>, EAlternative> ? Type::Alternative
                                                                             : Type::Integer;

template <typename T>
T As(double value) {
    if constexpr (std::is_same_v<T, double>)
        return value;
    else if constexpr (std::is_same_v<T, bool>)
        return value != 0;
    else
        return static_cast<T>(static_cast<int>(value));
}

template <typename... Types>
std::tuple<Types...> Converted(Arguments arguments) {
    if (arguments.size() != sizeof...(Types)) throw std::logic_error("wrong number of arguments");
    [[maybe_unused]] auto next = arguments.begin();
    return {As<Types>(*next++)...};
}

template <typename... Types>
Function Scalar(std::string name, double (*function)(Types...)) {
    return {std::move(name),
            {kTypeOf<Types>...},
            [function](Arguments arguments) { return std::apply(function, Converted<Types...>(arguments)); },
            {}};
}

// From the two overloads of one name: both have the same parameters, or it does not compile.
template <typename... Types>
Function Both(const std::string& name, double (*function)(double, Types...),
              void (*each)(double*, const double*, std::size_t, Types...)) {
    Function both = Scalar(name, function);
    both.each = [each](double* out, const double* in, std::size_t count, Arguments parameters) {
        std::apply(each, std::tuple_cat(std::tuple(out, in, count), Converted<Types...>(parameters)));
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

// Where the density has a kink its lower tail is a multiple of 0.1.
std::vector<Family> AllFamilies() {
    using enum Kind;
    using enum Domain;
// The functions of a family from its name.
#define ZUL_TEST_FAMILY(family, kind)                                                                      \
    std::string(#family), kind, Both(#family "Pdf", family##Pdf, family##Pdf),                             \
        Both(#family "Cdf", family##Cdf, family##Cdf),                                                     \
        Inverse(InverseTypes(family##Pdf, family##Cdf), #family "InvCdf", family##InvCdf, family##InvCdf), \
        TailInverse(InverseTypes(family##Pdf, family##Cdf), #family "InvCdf", family##InvCdf,              \
                    family##InvCdf)
    return {
        {ZUL_TEST_FAMILY(Beta, Continuous),
         {Positive, Positive},
         {{{2, 5}, 0, 1}, {{0.5, 0.5}, 0, 1}, {{30, 0.7}, 0, 1}, {{400, 600}, 0, 1}}},
        {ZUL_TEST_FAMILY(Binomial, Discrete),
         {Count, Fraction},
         {{{10, 0.5}, 0, 10}, {{40, 0.03}, 0, 40}, {{1000, 0.7}, 0, 1000}}},
        {ZUL_TEST_FAMILY(Cauchy, Continuous),
         {Real, Positive},
         {{{0, 1}, -kInf, kInf}, {{-3, 0.2}, -kInf, kInf}}},
        {ZUL_TEST_FAMILY(ChiSq, Continuous),
         {Positive, Noncentrality},
         {{{1, 0}, 0, kInf}, {{7, 0}, 0, kInf}, {{250, 0}, 0, kInf}, {{4, 6}, 0, kInf}}},
        {ZUL_TEST_FAMILY(Exponential, Continuous),
         {Positive, Real},
         {{{1, 0}, 0, kInf}, {{40, -3}, -3, kInf}}},
        {ZUL_TEST_FAMILY(F, Continuous),
         {Positive, Positive, Noncentrality},
         {{{1, 1, 0}, 0, kInf}, {{5, 12, 0}, 0, kInf}, {{40, 7, 0}, 0, kInf}, {{3, 9, 4}, 0, kInf}}},
        {ZUL_TEST_FAMILY(Gamma, Continuous),
         {Positive, Positive, Real},
         {{{1, 1, 0}, 0, kInf}, {{0.3, 2, 0}, 0, kInf}, {{7.5, 0.1, 10}, 10, kInf}, {{900, 1, 0}, 0, kInf}}},
        {ZUL_TEST_FAMILY(Geometric, Discrete), {Fraction}, {{{0.3}, 1, kInf}, {{0.01}, 1, kInf}}},
        {ZUL_TEST_FAMILY(HalfNormal, Continuous), {Positive, Real}, {{{1, 0}, 0, kInf}, {{4, -2}, -2, kInf}}},
        {ZUL_TEST_FAMILY(Hypergeometric, Discrete),
         {Count, UpToFirst, UpToFirst},
         {{{20, 7, 12}, 0, 7}, {{50, 40, 30}, 20, 30}, {{100000, 40000, 700}, 0, 700}}},
        {ZUL_TEST_FAMILY(IntegerUniform, Discrete), {Count, Above}, {{{1, 6}, 1, 6}, {{-10, 90}, -10, 90}}},
        {ZUL_TEST_FAMILY(Lambda, Continuous),
         {Exponent, Real, Positive},
         {{{0.14, 0, 1}, -1 / 0.14, 1 / 0.14},
          {{-0.5, 3, 2}, -kInf, kInf},
          {{0, 0, 1}, -kInf, kInf},
          {{1, 0, 1}, -1, 1},
          {{2, 0, 3}, -1.5, 1.5},
          {{3.5, -1, 0.5}, -1 - 0.5 / 3.5, -1 + 0.5 / 3.5}}},
        {ZUL_TEST_FAMILY(Laplace, Continuous),
         {Real, Positive},
         {{{0, 1}, -kInf, kInf}, {{-2, 3}, -kInf, kInf}}},
        {ZUL_TEST_FAMILY(LargestExtremeValue, Continuous),
         {Real, Positive},
         {{{0, 1}, -kInf, kInf}, {{10, 0.5}, -kInf, kInf}}},
        {ZUL_TEST_FAMILY(Logistic, Continuous),
         {Real, Positive},
         {{{0, 1}, -kInf, kInf}, {{4, 0.1}, -kInf, kInf}}},
        {ZUL_TEST_FAMILY(LogLogistic, Continuous),
         {Real, Positive, Real},
         {{{0, 1, 0}, 0, kInf}, {{1, 0.3, -2}, -2, kInf}}},
        {ZUL_TEST_FAMILY(LogNormal, Continuous),
         {Real, Positive, Real},
         {{{0, 1, 0}, 0, kInf}, {{1, 0.3, -2}, -2, kInf}}},
        {ZUL_TEST_FAMILY(NegBinomial, Discrete),
         {Fraction, Count},
         {{{0.5, 3}, 3, kInf}, {{0.1, 1}, 1, kInf}, {{0.3, 20}, 20, kInf}}},
        {ZUL_TEST_FAMILY(Normal, Continuous),
         {Real, Positive},
         {{{0, 1}, -kInf, kInf}, {{-3, 0.1}, -kInf, kInf}}},
        {ZUL_TEST_FAMILY(Poisson, Discrete),
         {Positive},
         {{{0.3}, 0, kInf}, {{4.5}, 0, kInf}, {{200}, 0, kInf}}},
        {ZUL_TEST_FAMILY(SmallestExtremeValue, Continuous),
         {Real, Positive},
         {{{0, 1}, -kInf, kInf}, {{10, 0.5}, -kInf, kInf}}},
        {ZUL_TEST_FAMILY(T, Continuous),
         {Positive, Real},
         {{{1, 0}, -kInf, kInf}, {{5, 0}, -kInf, kInf}, {{30, 1}, -kInf, kInf}, {{8, -2}, -kInf, kInf}}},
        {ZUL_TEST_FAMILY(Triangular, Continuous),
         {Real, Above, Above},
         {{{0, 2, 5}, 0, 5}, {{0, 0, 1}, 0, 1}, {{-1, 3, 3}, -1, 3}}},
        {ZUL_TEST_FAMILY(Weibull, Continuous),
         {Positive, Positive, Real},
         {{{1, 1, 0}, 0, kInf}, {{0.5, 2, 1}, 1, kInf}, {{4, 3, -1}, -1, kInf}}},
        {"Discrete",
         Discrete,
         Both("DiscretePdf", DiscretePdf, DiscretePdf),
         Both("DiscreteCdf", DiscreteCdf, DiscreteCdf),
         Both("DiscreteInvCdf", DiscreteInvCdf, DiscreteInvCdf),
         {},
         {Count},
         {{{6}, -1, 11}},
         true},
        {ZUL_TEST_FAMILY(Uniform, Continuous), {Real, Above}, {{{0, 1}, 0, 1}, {{-3, 8}, -3, 8}}, true},
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
    return {test::With(pdf, chosen.values),
            test::With(cdf, chosen.values, 0),
            test::With(cdf, chosen.values, 1),
            test::With(invCdf, chosen.values),
            tailInvCdf.call ? test::With(tailInvCdf, chosen.values, 1) : Applied{},
            chosen.lowest,
            chosen.highest};
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
    std::vector<std::string> tables = {"pvalues", "critvalues", "psi", "upper_quantiles"};
    for (const Family& family : Families())
        if (family.name != "Discrete") tables.push_back(family.name);  // its user has the table
    return tables;
}

}  // namespace zul::test
