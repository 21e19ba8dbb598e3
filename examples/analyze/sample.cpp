#include "sample.h"

#include <zul/descriptive.h>
#include <zul/frame.h>
#include <zul/sampler.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <exception>
#include <iomanip>
#include <iterator>
#include <limits>
#include <memory>

#include "csv_table.h"
#include "families.h"
#include "text.h"

namespace analyze {
namespace {

constexpr int kMomentDigits = 8;
constexpr int kDensityDigits = 5;
// The deviates in the farthest hundredth on either side are counted, not shown.
constexpr double kHidden = 0.01;
constexpr int kRows = 20;
constexpr int kBarLength = 40;
constexpr int kPlaceWidth = 14;
constexpr int kDensityWidth = 12;

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
    std::vector<Family> sampled;
    std::ranges::copy_if(Families(), std::back_inserter(sampled),
                         [](const Family& f) { return f.operation.draw != nullptr; });
    const Family& family = FindByName(sampled, options.family);
    CheckParameters(family, family.operation.parameters, options.parameters);
    const std::string distribution = Described(family, options.parameters);
    try {
        Sample sample = DrawSample(family.operation, options);
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
