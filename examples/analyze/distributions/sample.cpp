#include "distributions/sample.h"

#include <zul/frame.h>
#include <zul/sampler.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "command/options.h"
#include "describe/moments.h"
#include "distributions/families.h"
#include "distributions/histogram.h"
#include "input/input_error.h"
#include "output/text.h"

namespace analyze {
namespace {

constexpr int kMomentDigits = 8;

struct SampleOptions {
    std::string family;
    std::vector<double> parameters;  // in the order of the library's sampler
    double n = 1000;                 // number of deviates, a whole number from 1 to 10,000,000
    std::optional<double> seed;      // absent: from the clock
    bool values = false;             // the deviates alone
};

struct Release {
    void operator()(zul::ISampler* sampler) const { zul::DeleteISampler(&sampler); }
};

struct Drawn {
    double seed = 0;  // of the state before the deviates
    Numbers deviates;
};

Drawn Draw(const Operation& operation, const SampleOptions& options) {
    int status = 0;
    const std::unique_ptr<zul::ISampler, Release> sampler(
        zul::MakeISampler(&status, options.seed.value_or(zul::Seeder()), zul::CombinedCongruential));
    // The library takes a seed of 0 for none at all.
    if (sampler && options.seed) sampler->Reseed(*options.seed);
    Drawn drawn{sampler ? sampler->GetSeed() : 0, Numbers(static_cast<std::size_t>(options.n))};
    if (sampler) status = operation.draw(*sampler, drawn.deviates, options.parameters);
    if (status != 0) throw std::runtime_error("the sampler failed with status " + std::to_string(status));
    const auto isMissing = [](double x) { return !std::isfinite(x); };
    if (std::ranges::any_of(drawn.deviates, isMissing)) throw InputError("there are no deviates");
    return drawn;
}

// A column of a file, with all digits.
void PrintValues(std::ostream& out, const Numbers& deviates) {
    out << "x\n";
    for (const double x : deviates) {
        std::array<char, 32> digits{};
        std::snprintf(digits.data(), digits.size(), "%.17g\n", x);
        out << digits.data();
    }
}

void PrintDrawn(std::ostream& out, const Family& family, const std::string& distribution, Drawn drawn,
                Numbers parameters) {
    const Moments moments = MomentsOf(drawn.deviates);
    std::ranges::sort(drawn.deviates);
    out << "Sample of " << distribution << '\n';
    PrintRow(out, "n", std::to_string(moments.n));
    PrintRow(out, "seed", AsGiven(drawn.seed));
    PrintRow(out, "mean", Significant(moments.mean, kMomentDigits));
    PrintRow(out, "sd", Significant(moments.sd, kMomentDigits, kTooFewForSd));
    out << '\n';
    // What the sampler does not have is a noncentrality, 0.
    const Family& whole = FindFamily(Families(), family.name);
    parameters.resize(whole.parameters.size());
    PrintHistogram(out, whole, drawn.deviates, parameters);
}

void PrintSample(std::ostream& out, const SampleOptions& options) {
    const std::vector<Family> families = SampledFamilies();
    const Family& family = FindFamily(families, options.family);
    CheckParameters(family, options.parameters);
    const std::string distribution = Described(family, options.parameters);
    try {
        const Drawn drawn = Draw(family.operation, options);
        if (options.values)
            PrintValues(out, drawn.deviates);
        else
            PrintDrawn(out, family, distribution, drawn, options.parameters);
    } catch (const std::exception& error) {
        zul::ResetFpuStates();
        throw InputError(distribution + ": " + error.what());
    }
}

bool IsSampleSize(double x) {
    constexpr double kMost = 10'000'000;
    return x >= 1 && x <= kMost && x == std::trunc(x);
}

}  // namespace

void AddSample(const Command& app) {
    const auto options = std::make_shared<SampleOptions>();
    const Command command = app.AddCommand("sample", "Random deviates, their histogram beside the density");
    AddFamily(command, options->family);
    AddNumbers(command, "--parameters", options->parameters, "Its parameters, all of them",
               Number("a number", IsAny));
    AddNumber(command, "--n", options->n, Number("a whole number from 1 to 10000000", IsSampleSize),
              "Number of deviates (default: 1000)");
    AddNumber(command, "--seed", options->seed, Number("a number", IsAny), "Seed (default: the clock)");
    command.AddFlag("--values", options->values, "The deviates alone, a line each");
    command.SetFooter(FamilyList(SampledFamilies()));
    command.OnCall([options] { PrintSample(std::cout, *options); });
}

}  // namespace analyze
