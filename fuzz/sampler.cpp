// Samplers: any operation with any parameters ends, returns a documented status or throws; the deviates of valid
// parameters lie in the support; the same seed gives the same deviates.
#include "zul/sampler.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <set>

#include "fuzz/support/check.h"
#include "fuzz/support/input.h"
#include "fuzz/support/parameters.h"
#include "fuzz/support/values.h"
#include "sampling/slots.h"

namespace zul::fuzz {
namespace {

using test::Parameters;

constexpr double kNA = 1.23456e30;
// The operations whose time grows with a parameter get no more than this.
constexpr int kManyTrials = 2000;

// Parameters in the domains, where they give numbers: fewer degrees of freedom have quantiles beyond the doubles, and
// probabilities near 0 or 1 counts beyond the numbers.
Parameters Valid(const test::Slot& slot, Input& input) {
    Parameters p = ValidParameters(slot.domains, input, 4);
    for (std::size_t i = 0; i < p.size(); ++i)
        if (slot.domains[i] == test::Domain::Fraction) p[i] = std::clamp(p[i], 0.01, 0.99);
    if (slot.name == "T") p = {std::max(p[0], 0.5), std::fmod(p[1], 8)};
    return p;
}

// Any numbers; the time grows with counts.
Parameters Any(const test::Slot& slot, Input& input) {
    Parameters p;
    for (std::size_t i = 0; i < slot.types.size(); ++i) {
        p.push_back(slot.types[i] == test::Type::Real ? AnyReal(input) : Argument(slot.types[i], input));
        if (slot.domains[i] == test::Domain::UpToFirst) p[i] = std::fmod(p[i], kManyTrials);
        if (slot.domains[i] == test::Domain::Count) p[i] = std::abs(std::fmod(p[i], kManyTrials));
    }
    return p;
}

// What one call on a fresh sampler does.
struct Outcome {
    std::vector<double> values;
    double seed = 0;  // after it
    int status = -1;
    bool returned = false;
    bool operator==(const Outcome& other) const {
        return std::equal(values.begin(), values.end(), other.values.begin(), SameBits) &&
               seed == other.seed && status == other.status && returned == other.returned;
    }
};

// Twice, with the same outcome.
template <typename Draw>
Outcome CallTwice(const std::string& name, Mode mode, Draw draw, double seed, std::size_t size,
                  unsigned count) {
    std::array<Outcome, 2> outcomes;
    for (Outcome& outcome : outcomes) {
        const test::SamplerPtr sampler = test::MakeSampler(seed);
        const double before = sampler->GetSeed();
        Guarded<double> out(size, kUnwritten);
        const auto run = [&] { outcome.status = draw(*sampler, out.Data(), count); };
        outcome.returned = Checked(mode, run, [&] { return name; });
        outcome.values = out.Values();
        outcome.seed = sampler->GetSeed();
        Expect(out.IsIntact(), name, "wrote outside");
        const bool isNothing = outcome.returned && out.IsUntouched() && outcome.seed == before;
        Expect(count > 0 || isNothing, name, "drew nothing, and did something");
    }
    Expect(outcomes[0] == outcomes[1], name, "differs for one seed");
    return outcomes[0];
}

double Seed(Input& input) {
    const double seed = input.Flag() ? input.Byte() : AnyReal(input);
    return seed == 0 || !std::isfinite(seed) ? 1 : seed;  // these take the time of day
}

void Table(Input& input) {
    const std::vector<double> values = Values(input, input.Choice(20));
    const std::vector<double> probabilities = Values(input, values.size());
    const auto size = static_cast<unsigned>(values.size());
    const auto count = static_cast<unsigned>(input.Choice(40));
    const auto draw = [&](ISampler& sampler, double* out, unsigned n) {
        return sampler.SampleDiscrete(out, n, values.data(), probabilities.data(), size);
    };
    const Outcome outcome = CallTwice("Discrete", Mode::Framed, draw, Seed(input), count, count);
    if (!outcome.returned) return;
    Expect(outcome.status == 0, "SampleDiscrete: status");
    const bool isTable =
        std::all_of(probabilities.begin(), probabilities.end(), [](double p) { return p >= 0; });
    for (const double x : outcome.values) {
        Expect(size > 0 || x != x, "SampleDiscrete of nothing");
        bool isDrawn = size == 0 || !isTable;
        for (unsigned i = 0; i < size && !isDrawn; ++i)
            isDrawn = Same(values[i], x) && probabilities[i] > 0;
        Expect(isDrawn, "SampleDiscrete drew what has no probability");
    }
}

void Deviates(Input& input) {
    const auto& [name, slot] =
        *std::next(test::Slots().begin(), static_cast<int>(input.Choice(test::Slots().size())));
    if (name == "Discrete") return Table(input);
    const bool isValid = input.Byte() < 140;
    const double seed = Seed(input);
    const auto count =
        static_cast<unsigned>(input.Choice(name == "T" ? 5 : 41));  // quantiles take their time
    const Parameters parameters = isValid ? Valid(slot, input) : Any(slot, input);
    const Mode mode = name != "Indices" && name != "Weibull" ? Mode::Framed : Mode::Bare;
    const auto draw = [&, &operation = slot](ISampler& sampler, double* out, unsigned n) {
        return operation.draw(sampler, out, n, parameters);
    };
    const Outcome outcome = CallTwice(name, mode, draw, seed, count, count);
    if (!outcome.returned) return;
    const auto describe = [&, &called = name] { return Listed(called, parameters); };
    bool fits = true;
    if (name == "Indices") {
        fits = parameters[1] == 0 || count <= std::floor(parameters[0]);
        const std::set<double> distinct(outcome.values.begin(), outcome.values.end());
        Require(!fits || parameters[1] == 0 || distinct.size() == count, describe);
        Require(fits || (distinct.size() == 1 && *distinct.begin() == 4294967295.0), describe);
    }
    Require(outcome.status == (fits ? 0 : 30011), describe);
    const auto [lowest, highest] = slot.support(parameters);
    for (const double x : outcome.values) {
        Require(IsWritten(x), describe);
        if (!isValid || !fits) continue;
        Require(x >= lowest && x <= highest && x != kNA, describe);
        Require(!slot.isDiscrete || std::isinf(x) || name.starts_with("NegBinomial") || x == std::floor(x),
                describe);
    }
}

void Rows(Input& input) {
    const std::size_t dimension = input.Choice(7);
    const auto count = static_cast<unsigned>(input.Choice(10));
    const bool isProper = input.Flag();
    const std::vector<double> mean = Values(input, dimension);
    std::vector<double> covariance = Values(input, dimension * dimension);
    // A diagonal that dominates makes it positive definite.
    for (std::size_t i = 0; isProper && i < dimension * dimension; ++i)
        covariance[i] = i % (dimension + 1) == 0 ? static_cast<double>(dimension)
                                                 : static_cast<double>(input.Byte()) / 128 - 1;
    const auto draw = [&](ISampler& sampler, double* out, unsigned n) {
        return sampler.SampleMVNormal(out, n, static_cast<unsigned>(dimension), mean.data(),
                                      covariance.data());
    };
    const Outcome outcome = CallTwice("MVNormal", Mode::Framed, draw, Seed(input), count * dimension, count);
    if (!outcome.returned) return;
    Expect(outcome.status == 0, "SampleMVNormal: status");
    const bool isValid = isProper && AreModerate(mean);
    for (const double x : outcome.values)
        Require(IsWritten(x) && (!isValid || std::isfinite(x)),
                [&] { return Call("SampleMVNormal", count, dimension, isValid, x); });
}

// The state of the generator, and what there is beside deviates.
void Seeds(Input& input) {
    const double seed = AnyReal(input);
    const double other = AnyReal(input);
    const auto rng =
        static_cast<BasicRng>(input.Flag() ? 10 : input.Byte() % 16);  // what an enumeration of 10 can hold
    const auto count = static_cast<unsigned>(input.Choice(100));
    int status = -1;
    ISampler* sampler = nullptr;
    Checked(
        Mode::Framed, [&] { sampler = MakeISampler(&status, seed, rng); },
        [&] { return Call("MakeISampler", seed, static_cast<int>(rng)); });
    const int expected = rng == 10 ? 0 : rng >= 0 && rng < 10 ? 30011 : 30017;
    const auto where = [&] { return Call("seeds", seed, other, static_cast<int>(rng)); };
    Require(status == expected && (sampler != nullptr) == (status == 0), where);
    if (sampler == nullptr) return;
    std::vector<double> out(count);
    std::vector<double> again(count);
    std::array<double, 2> states{};
    Checked(
        Mode::Framed,
        [&] {
            sampler->Reseed(other);
            sampler->SampleUniform(out.data(), count, 0, 1);
            states[0] = sampler->GetSeed();
            sampler->Reseed(other);
            sampler->Reseed(sampler->GetSeed());
            for (double& u : again)  // one at a time
                sampler->SampleUniform(&u, 1, 0, 1);
            states[1] = sampler->GetSeed();
        },
        where);
    DeleteISampler(&sampler);
    Require(
        sampler == nullptr && out == again && states[0] == states[1] && states[0] == std::floor(states[0]),
        where);
    for (const double u : out)
        Require(u >= 3e-14 && u <= 1 - 3e-14, where);
}

}  // namespace
}  // namespace zul::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zul::fuzz;
    Input input(data, size);
    switch (input.Byte() % 8) {
        case 0:
            Table(input);
            break;
        case 1:
            Rows(input);
            break;
        case 2:
            Seeds(input);
            break;
        default:
            Deviates(input);
    }
    return 0;
}
