#include "sample.h"

#include <zul/descriptive.h>
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
#include "families.h"
#include "text.h"

namespace analyze {
namespace {

using Draw = std::function<int(zul::ISampler& sampler, Numbers& deviates, const Numbers& parameters)>;

constexpr int kMomentDigits = 8;
constexpr int kDensityDigits = 5;
// The deviates in the farthest hundredth on either side are counted, not shown.
constexpr double kHidden = 0.01;
constexpr int kRows = 20;
constexpr int kBarLength = 40;
constexpr int kPlaceWidth = 14;
constexpr int kDensityWidth = 12;

// The sampler's operation for a family. It takes as many of the first parameters of the family as it has.
struct Operation {
    std::string name;
    std::size_t parameters;
    Draw draw;
};

template <typename Type>
Type Next(Numbers::const_iterator& parameter) {
    const double value = *parameter++;
    if constexpr (std::is_integral_v<Type>) {
        // Whole and in the range of int, but some operations have counts without a sign.
        const auto whole = static_cast<long long>(value);
        if (!std::in_range<Type>(whole)) throw InputError(AsGiven(value) + " is out of range");
        return static_cast<Type>(whole);
    } else {
        return value;
    }
}

template <typename... Types>
Operation Make(const std::string& name, int (zul::ISampler::*operation)(double*, unsigned, Types...)) {
    const auto draw = [operation](zul::ISampler& sampler, Numbers& deviates, const Numbers& parameters) {
        auto next = parameters.begin();
        const std::tuple<Types...> values{Next<Types>(next)...};
        return std::apply(
            [&](Types... each) {
                return (sampler.*operation)(deviates.data(), static_cast<unsigned>(deviates.size()), each...);
            },
            values);
    };
    return {name, sizeof...(Types), draw};
}

std::vector<Operation> MakeOperations() {
    using S = zul::ISampler;
    return {
        Make("Beta", &S::SampleBeta),
        Make("Binomial", &S::SampleBinomial),
        Make("Cauchy", &S::SampleCauchy),
        Make("ChiSq", &S::SampleChiSquare),
        Make("Exponential", &S::SampleExponential),
        Make("F", &S::SampleF),
        Make("Gamma", &S::SampleGamma),
        Make("Hypergeometric", &S::SampleHypergeometric),
        Make("IntegerUniform", &S::SampleIntegerUniform),
        Make("Lambda", &S::SampleLambda),
        Make("Laplace", &S::SampleLaplace),
        Make("LargestExtremeValue", &S::SampleLargestExtremeValue),
        Make("Logistic", &S::SampleLogistic),
        Make("LogLogistic", &S::SampleLogLogistic),
        Make("LogNormal", &S::SampleLognormal),
        Make("NegBinomial", &S::SampleNegBinomial),
        Make("Normal", &S::SampleNormal),
        Make("Poisson", &S::SamplePoisson),
        Make("SmallestExtremeValue", &S::SampleSmallestExtremeValue),
        Make("T", &S::SampleT),
        Make("Triangular", &S::SampleTriangular),
        Make("Uniform", &S::SampleUniform),
        Make("Weibull", &S::SampleWeibull),
    };
}

struct Release {
    void operator()(zul::ISampler* sampler) const { zul::DeleteISampler(&sampler); }
};

struct Sample {
    double seed = 0;  // of the state before the deviates
    Numbers deviates;
};

Sample DrawSample(const Operation& operation, const SampleOptions& options) {
    int status = 0;
    const std::unique_ptr<zul::ISampler, Release> sampler(
        zul::MakeISampler(&status, options.seed.value_or(zul::Seeder()), zul::CombinedCongruential));
    // The library takes a seed of 0 for none at all.
    if (sampler && options.seed) sampler->Reseed(*options.seed);
    Sample sample{sampler ? sampler->GetSeed() : 0, Numbers(static_cast<std::size_t>(options.n))};
    if (sampler) status = operation.draw(*sampler, sample.deviates, options.parameters);
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
        const double probability = family.cdf(last, parameters, false) - family.cdf(first, parameters, false);
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
    const std::vector<Operation> operations = MakeOperations();
    const Operation& operation = FindByName(operations, options.family);
    const Family& family = FindByName(Families(), options.family);
    CheckParameters(family, operation.parameters, options.parameters);
    const std::string distribution = Described(family, options.parameters);
    try {
        Sample sample = DrawSample(operation, options);
        Numbers& deviates = sample.deviates;
        const auto isMissing = [](double x) { return !std::isfinite(x); };
        if (std::ranges::any_of(deviates, isMissing)) throw InputError("there are no deviates");
        double mean = 0;
        double variance = 0;
        zul::v1::GetSampleMeanAndVariance(deviates.data(), static_cast<unsigned>(deviates.size()), &mean,
                                          &variance);
        std::ranges::sort(deviates);
        Numbers parameters = options.parameters;
        parameters.resize(family.parameters.size());  // what the sampler does not have is a noncentrality, 0
        const auto rows = MakeHistogram(family, deviates, parameters);
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
