// Samplers: any operation with any parameters ends, returns a documented status or throws; the deviates of valid
// parameters lie in the support.
#include "zul/sampler.h"

#include <iterator>

#include "fuzz/support/parameters.h"
#include "sampling/slots.h"

namespace zul::fuzz {
namespace {

// The operations whose time grows with a parameter get no more than this.
constexpr int kManyTrials = 2000;

// Parameters in the domains, where they give numbers: fewer degrees of freedom have quantiles beyond the doubles, and
// probabilities near 0 or 1 counts beyond the numbers.
Data Valid(const test::Slot& slot, Input& input) {
    Data p = ValidParameters(slot.domains, input, 4);
    for (std::size_t i = 0; i < p.size(); ++i)
        if (slot.domains[i] == test::Domain::Fraction) p[i] = std::clamp(p[i], 0.01, 0.99);
    if (slot.name == "T") p = {std::max(p[0], 0.5), std::fmod(p[1], 8)};
    return p;
}

// Any numbers; the time grows with counts.
Data Any(const test::Slot& slot, Input& input) {
    Data p;
    for (std::size_t i = 0; i < slot.types.size(); ++i) {
        p.push_back(slot.types[i] == test::Type::Real ? AnyReal(input) : Argument(slot.types[i], input));
        if (slot.domains[i] == test::Domain::UpToFirst) p[i] = std::fmod(p[i], kManyTrials);
        if (slot.domains[i] == test::Domain::Count) p[i] = std::abs(std::fmod(p[i], kManyTrials));
    }
    return p;
}

// What one call on a fresh sampler draws, its status being the one expected; nothing after an exception that may be.
Data CallOnce(const std::string& name, Mode mode, double seed, std::size_t size, unsigned count, int expected,
              auto draw) {
    const test::SamplerPtr sampler = test::MakeSampler(seed);
    const double before = sampler->GetSeed();
    Data out(size, kUnwritten);
    const int status = StatusOf(mode, name, {expected}, [&] { return draw(*sampler, out.data(), count); });
    Expect(count > 0 || (status >= 0 && sampler->GetSeed() == before), name, "drew nothing, did something");
    return status >= 0 ? out : Data();
}

double Seed(Input& input) {
    const double seed = input.Flag() ? input.Byte() : AnyReal(input);
    return seed == 0 || !std::isfinite(seed) ? 1 : seed;  // these take the time of day
}

void Table(Input& input) {
    const Data values = Values(input, input.Choice(20));
    const Data probabilities = Values(input, values.size());
    const auto size = static_cast<unsigned>(values.size());
    const auto count = input.Choice<unsigned>(40);
    const Data drawn =
        CallOnce("Discrete", Mode::Framed, Seed(input), count, count, 0, [&](auto& sampler, auto... to) {
            return sampler.SampleDiscrete(to..., values.data(), probabilities.data(), size);
        });
    for (const double x : drawn)
        Expect(size > 0 ? IsWritten(x) : x != x, "SampleDiscrete: no deviate");
}

void Deviates(Input& input) {
    const auto& [name, slot] = *std::next(test::Slots().begin(), input.Choice<int>(test::Slots().size()));
    if (name == "Discrete") return Table(input);
    const bool isValid = input.Byte() < 140;
    const double seed = Seed(input);
    const auto count = input.Choice<unsigned>(name == "T" ? 5 : 41);  // quantiles take their time
    const Data parameters = isValid ? Valid(slot, input) : Any(slot, input);
    const Mode mode = name != "Indices" && name != "Weibull" ? Mode::Framed : Mode::Bare;
    const bool fits = name != "Indices" || parameters[1] == 0 || count <= std::floor(parameters[0]);
    const std::string call = Listed(name, parameters);
    const auto draw = [&, &operation = slot](auto& sampler, auto... to) {
        return operation.draw(sampler, to..., parameters);
    };
    const Data drawn = CallOnce(call, mode, seed, count, count, fits ? 0 : 30011, draw);
    const auto [lowest, highest] = slot.support(parameters);
    for (const double x : drawn) {
        Expect(IsWritten(x), call);
        if (!isValid || !fits) continue;
        Expect(x >= lowest && x <= highest && x != kNA, call);
        const bool isWhole = std::isinf(x) || name.starts_with("NegBinomial") || x == std::floor(x);
        Expect(!slot.isDiscrete || isWhole, call);
    }
}

void Rows(Input& input) {
    const std::size_t dimension = input.Choice(7);
    const auto count = input.Choice<unsigned>(10);
    const bool isProper = input.Flag();
    const Data mean = Values(input, dimension);
    Data covariance = Values(input, dimension * dimension);
    // A diagonal that dominates makes it positive definite.
    for (std::size_t i = 0; isProper && i < dimension * dimension; ++i)
        covariance[i] = i % (dimension + 1) == 0 ? static_cast<double>(dimension)
                                                 : static_cast<double>(input.Byte()) / 128 - 1;
    const auto draw = [&](auto& sampler, auto... to) {
        return sampler.SampleMVNormal(to..., static_cast<unsigned>(dimension), mean.data(),
                                      covariance.data());
    };
    const Data drawn = CallOnce("MVNormal", Mode::Framed, Seed(input), count * dimension, count, 0, draw);
    Expect(std::ranges::all_of(drawn, IsWritten), "SampleMVNormal");
}

// The state of the generator, and what there is beside deviates.
void Seeds(Input& input) {
    const double seed = AnyReal(input);
    const double other = AnyReal(input);
    const auto rng =
        static_cast<BasicRng>(input.Flag() ? 10 : input.Byte() % 16);  // all that the type can hold
    const auto count = input.Choice<unsigned>(100);
    int status = -1;
    ISampler* sampler = nullptr;
    const auto where = [&] { return Call("seeds", seed, other, static_cast<int>(rng)); };
    Checked(Mode::Framed, where, [&] { sampler = MakeISampler(&status, seed, rng); });
    const int expected = rng == 10 ? 0 : rng >= 0 && rng < 10 ? 30011 : 30017;
    Expect(status == expected && (sampler != nullptr) == (status == 0), where);
    if (sampler == nullptr) return;
    Data out(count);
    Checked(Mode::Framed, where, [&] {
        sampler->Reseed(other);
        sampler->SampleUniform(out.data(), count, 0, 1);
        sampler->Reseed(sampler->GetSeed());
    });
    DeleteISampler(&sampler);
    Expect(sampler == nullptr, where);
    for (const double u : out)
        Expect(u >= 3e-14 && u <= 1 - 3e-14, where);
}

}  // namespace

void RunInput(Input& input) {
    constexpr std::array kTargets = {Table, Rows, Seeds, Deviates, Deviates, Deviates, Deviates, Deviates};
    input.OneOf(kTargets)(input);
}

}  // namespace zul::fuzz
