// Samplers: any operation with any parameters ends, returns a documented status or throws; the deviates of valid
// parameters lie in the support.
#include "zul/sampler.h"

#include <iterator>

#include "fuzz/support/parameters.h"
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
    int status = -1;
    bool returned = false;
};

template <typename Draw>
Outcome CallOnce(const std::string& name, Mode mode, Draw draw, double seed, std::size_t size,
                 unsigned count) {
    const test::SamplerPtr sampler = test::MakeSampler(seed);
    const double before = sampler->GetSeed();
    Outcome outcome{std::vector<double>(size, kUnwritten)};
    const auto run = [&] { outcome.status = draw(*sampler, outcome.values.data(), count); };
    outcome.returned = Checked(mode, run, [&] { return name; });
    const bool isNothing = outcome.returned && sampler->GetSeed() == before;
    Expect(count > 0 || isNothing, name, "drew nothing, and did something");
    return outcome;
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
    const Outcome outcome = CallOnce("Discrete", Mode::Framed, draw, Seed(input), count, count);
    if (!outcome.returned) return;
    Expect(outcome.status == 0, "SampleDiscrete: status");
    for (const double x : outcome.values)
        Expect(size > 0 ? IsWritten(x) : x != x, "SampleDiscrete: no deviate");
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
    const Outcome outcome = CallOnce(name, mode, draw, seed, count, count);
    if (!outcome.returned) return;
    const auto describe = [&, &called = name] { return Listed(called, parameters); };
    const bool fits = name != "Indices" || parameters[1] == 0 || count <= std::floor(parameters[0]);
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
    const Outcome outcome = CallOnce("MVNormal", Mode::Framed, draw, Seed(input), count * dimension, count);
    if (!outcome.returned) return;
    Expect(outcome.status == 0 && std::ranges::all_of(outcome.values, IsWritten), "SampleMVNormal");
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
    Checked(
        Mode::Framed,
        [&] {
            sampler->Reseed(other);
            sampler->SampleUniform(out.data(), count, 0, 1);
            sampler->Reseed(sampler->GetSeed());
        },
        where);
    DeleteISampler(&sampler);
    Require(sampler == nullptr, where);
    for (const double u : out)
        Require(u >= 3e-14 && u <= 1 - 3e-14, where);
}

}  // namespace

void RunInput(Input& input) {
    constexpr std::array kTargets = {Table, Rows, Seeds, Deviates, Deviates, Deviates, Deviates, Deviates};
    input.OneOf(kTargets)(input);
}

}  // namespace zul::fuzz
