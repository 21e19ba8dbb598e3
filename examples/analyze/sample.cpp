#include "sample.h"

#include <zul/descriptive.h>
#include <zul/distributions.h>
#include <zul/frame.h>
#include <zul/sampler.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <exception>
#include <functional>
#include <iomanip>
#include <limits>
#include <memory>
#include <tuple>
#include <type_traits>
#include <utility>

#include "csv_table.h"
#include "text.h"

namespace analyze {
namespace {

using Numbers = std::vector<double>;
using Draw = std::function<int(zul::ISampler& sampler, Numbers& deviates, const Numbers& parameters)>;
using LowerTail = std::function<double(double x, const Numbers& parameters)>;

constexpr int kMomentDigits = 8;
constexpr int kDensityDigits = 5;
// The deviates in the farthest hundredth on either side are counted, not shown.
constexpr double kHidden = 0.01;
constexpr int kRows = 20;
constexpr int kBarLength = 40;
constexpr int kPlaceWidth = 14;
constexpr int kDensityWidth = 12;

struct Family {
    std::string name;
    bool discrete;
    std::vector<std::string> parameters;
    std::vector<bool> whole;  // which of them are whole numbers
    Draw draw;
    LowerTail lowerTail;
};

// The next of a list of parameters; behind its end 0, which is no noncentrality and the lower tail.
template <typename Type>
Type Next(const Numbers& parameters, std::size_t& place) {
    const double value = place < parameters.size() ? parameters[place] : 0;
    ++place;
    return static_cast<Type>(value);
}

template <typename... Types>
Draw Listed(int (zul::ISampler::*operation)(double*, unsigned, Types...)) {
    return [operation](zul::ISampler& sampler, Numbers& deviates, const Numbers& parameters) {
        std::size_t place = 0;
        const std::tuple<Types...> values{Next<Types>(parameters, place)...};
        return std::apply(
            [&](Types... each) {
                return (sampler.*operation)(deviates.data(), static_cast<unsigned>(deviates.size()), each...);
            },
            values);
    };
}

template <typename... Types>
LowerTail Listed(double (*function)(double, Types...)) {
    return [function](double x, const Numbers& parameters) {
        std::size_t place = 0;
        return std::apply(function, std::tuple<double, Types...>{x, Next<Types>(parameters, place)...});
    };
}

template <typename... Types, typename... TailTypes>
Family Make(std::string name, bool discrete, std::vector<std::string> parameters,
            int (zul::ISampler::*operation)(double*, unsigned, Types...),
            double (*tail)(double, TailTypes...)) {
    return {std::move(name),   discrete,    std::move(parameters), {std::is_integral_v<Types>...},
            Listed(operation), Listed(tail)};
}

std::vector<Family> MakeFamilies() {
    using S = zul::ISampler;
    return {
        Make("Beta", false, {"a", "b"}, &S::SampleBeta, zul::BetaCdf),
        Make("Binomial", true, {"n", "prob"}, &S::SampleBinomial, zul::BinomialCdf),
        Make("Cauchy", false, {"location", "scale"}, &S::SampleCauchy, zul::CauchyCdf),
        Make("ChiSq", false, {"df"}, &S::SampleChiSquare, zul::ChiSqCdf),
        Make("Exponential", false, {"scale", "threshold"}, &S::SampleExponential, zul::ExponentialCdf),
        Make("F", false, {"df1", "df2"}, &S::SampleF, zul::FCdf),
        Make("Gamma", false, {"shape", "scale", "threshold"}, &S::SampleGamma, zul::GammaCdf),
        Make("Hypergeometric", true, {"N", "M", "n"}, &S::SampleHypergeometric, zul::HypergeometricCdf),
        Make("IntegerUniform", true, {"a", "b"}, &S::SampleIntegerUniform, zul::IntegerUniformCdf),
        Make("Lambda", false, {"lambda", "location", "scale"}, &S::SampleLambda, zul::LambdaCdf),
        Make("Laplace", false, {"location", "scale"}, &S::SampleLaplace, zul::LaplaceCdf),
        Make("LargestExtremeValue", false, {"location", "scale"}, &S::SampleLargestExtremeValue,
             zul::LargestExtremeValueCdf),
        Make("Logistic", false, {"location", "scale"}, &S::SampleLogistic, zul::LogisticCdf),
        Make("LogLogistic", false, {"location", "scale", "threshold"}, &S::SampleLogLogistic,
             zul::LogLogisticCdf),
        Make("LogNormal", false, {"location", "scale", "threshold"}, &S::SampleLognormal, zul::LogNormalCdf),
        Make("NegBinomial", true, {"prob", "r"}, &S::SampleNegBinomial, zul::NegBinomialCdf),
        Make("Normal", false, {"mean", "sd"}, &S::SampleNormal, zul::NormalCdf),
        Make("Poisson", true, {"mean"}, &S::SamplePoisson, zul::PoissonCdf),
        Make("SmallestExtremeValue", false, {"location", "scale"}, &S::SampleSmallestExtremeValue,
             zul::SmallestExtremeValueCdf),
        Make("T", false, {"df", "noncentrality"}, &S::SampleT, zul::TCdf),
        Make("Triangular", false, {"lower", "mode", "upper"}, &S::SampleTriangular, zul::TriangularCdf),
        Make("Uniform", false, {"a", "b"}, &S::SampleUniform, zul::UniformCdf),
        Make("Weibull", false, {"shape", "scale", "threshold"}, &S::SampleWeibull, zul::WeibullCdf),
    };
}

std::string Joined(const std::vector<std::string>& words) {
    std::string list;
    for (const std::string& word : words)
        list += (list.empty() ? "" : ", ") + word;
    return list;
}

Family FindFamily(const std::string& name) {
    const std::vector<Family> families = MakeFamilies();
    const auto found = std::ranges::find(families, name, &Family::name);
    if (found != families.end()) return *found;
    std::vector<std::string> names;
    for (const Family& family : families)
        names.push_back(family.name);
    throw InputError("no distribution " + Quoted(name) + "; the distributions are " + Joined(names));
}

void CheckParameters(const Family& family, const Numbers& values) {
    const std::size_t count = family.parameters.size();
    if (values.size() != count)
        throw InputError(family.name + " has " + std::to_string(count) + " parameters, not " +
                         std::to_string(values.size()) + ": " + Joined(family.parameters));
    constexpr int kLargest = std::numeric_limits<int>::max();
    for (std::size_t i = 0; i < count; ++i) {
        const bool isInt = values[i] == std::trunc(values[i]) && std::abs(values[i]) <= kLargest;
        if (family.whole[i] && !isInt)
            throw InputError(family.name + ": " + family.parameters[i] + " = " + AsGiven(values[i]) +
                             " is not a whole number, or too large");
    }
}

std::string Described(const Family& family, const Numbers& values) {
    std::vector<std::string> words;
    for (std::size_t i = 0; i < values.size(); ++i)
        words.push_back(family.parameters[i] + " " + AsGiven(values[i]));
    return family.name + "(" + Joined(words) + ")";
}

struct Release {
    void operator()(zul::ISampler* sampler) const { zul::DeleteISampler(&sampler); }
};

struct Sample {
    double seed = 0;  // of the state before the deviates
    Numbers deviates;
};

Sample DrawSample(const Family& family, const SampleOptions& options) {
    int status = 0;
    const std::unique_ptr<zul::ISampler, Release> sampler(
        zul::MakeISampler(&status, options.seed.value_or(zul::Seeder()), zul::CombinedCongruential));
    // The library takes a seed of 0 for none at all.
    if (sampler && options.seed) sampler->Reseed(*options.seed);
    Sample sample{sampler ? sampler->GetSeed() : 0, Numbers(static_cast<std::size_t>(options.n))};
    if (sampler) status = family.draw(*sampler, sample.deviates, options.parameters);
    if (status != 0) throw std::runtime_error("the sampler failed with status " + std::to_string(status));
    return sample;
}

// Cells of equal width from `start` on. Those of a discrete family hold whole numbers, both ends included.
struct Cells {
    double start;
    double width;
    int count;
};

Cells MakeCells(const Numbers& sorted, bool discrete) {
    const auto hidden = static_cast<std::size_t>(kHidden * static_cast<double>(sorted.size()));
    const double low = sorted[hidden];
    const double high = sorted[sorted.size() - 1 - hidden];
    if (discrete) {
        const double width = std::ceil((high - low + 1) / kRows);
        return {low, width, static_cast<int>(std::ceil((high - low + 1) / width))};
    }
    return high > low ? Cells{low, (high - low) / kRows, kRows} : Cells{low - 0.5, 1, 1};
}

struct HistogramRow {
    std::string place;
    double observed;  // densities
    double expected;
};

std::vector<HistogramRow> MakeHistogram(const Family& family, const Numbers& sorted,
                                        const Numbers& parameters) {
    const Cells cells = MakeCells(sorted, family.discrete);
    const auto size = static_cast<double>(sorted.size());
    // Up to the end of a cell; whole numbers are centred, so that no number is an end.
    const double shift = family.discrete ? 0.5 : 0;
    std::vector<HistogramRow> rows;
    for (int i = 0; i < cells.count; ++i) {
        const double from = cells.start + i * cells.width;
        const double first = from - shift;
        const double last = from + cells.width - shift;
        const auto count = std::ranges::upper_bound(sorted, last) - std::ranges::upper_bound(sorted, first);
        const double probability = family.lowerTail(last, parameters) - family.lowerTail(first, parameters);
        rows.push_back({Significant(family.discrete ? from : from + cells.width / 2, kDensityDigits),
                        static_cast<double>(count) / size / cells.width, probability / cells.width});
        if (family.discrete) rows.back().place = AsGiven(from);
    }
    return rows;
}

// A bar as long as what was observed, and a mark at what is expected: at 0 if parameters outside their domain
// give no density.
std::string Bar(double observed, double expected, double largest) {
    const auto place = [largest](double value) {
        const double share = value > 0 ? std::min(value / largest, 1.0) : 0;
        return static_cast<std::size_t>(std::lround(share * kBarLength));
    };
    std::string bar(kBarLength + 1, ' ');
    std::fill_n(bar.begin(), place(observed), '#');
    bar[place(expected)] = '|';
    return bar.substr(0, bar.find_last_not_of(' ') + 1);
}

void PrintHistogram(std::ostream& out, const std::vector<HistogramRow>& rows) {
    double largest = std::numeric_limits<double>::min();
    for (const HistogramRow& row : rows)
        largest = std::max({largest, row.observed, row.expected});
    out << std::setw(kPlaceWidth) << "x" << std::setw(kDensityWidth) << "sample" << std::setw(kDensityWidth)
        << "density" << '\n';
    for (const HistogramRow& row : rows)
        out << std::setw(kPlaceWidth) << row.place << std::setw(kDensityWidth)
            << Significant(row.observed, kDensityDigits) << std::setw(kDensityWidth)
            << Significant(row.expected, kDensityDigits) << "  " << Bar(row.observed, row.expected, largest)
            << '\n';
}

}  // namespace

void PrintSample(std::ostream& out, const SampleOptions& options) {
    const Family family = FindFamily(options.family);
    CheckParameters(family, options.parameters);
    const std::string distribution = Described(family, options.parameters);
    try {
        Sample sample = DrawSample(family, options);
        Numbers& deviates = sample.deviates;
        const auto isMissing = [](double x) { return !std::isfinite(x); };
        if (std::ranges::any_of(deviates, isMissing)) throw InputError("there are no deviates");
        double mean = 0;
        double variance = 0;
        zul::v1::GetSampleMeanAndVariance(deviates.data(), static_cast<unsigned>(deviates.size()), &mean,
                                          &variance);
        std::ranges::sort(deviates);
        const auto rows = MakeHistogram(family, deviates, options.parameters);
        out << distribution << ", n " << deviates.size() << ", seed " << AsGiven(sample.seed) << "\n"
            << "mean " << Significant(mean, kMomentDigits) << ", sd "
            << Significant(std::sqrt(variance), kMomentDigits) << "\n\n";
        PrintHistogram(out, rows);
    } catch (const std::exception& error) {
        zul::ResetFpuStates();
        throw InputError(distribution + ": " + error.what());
    }
}

}  // namespace analyze
