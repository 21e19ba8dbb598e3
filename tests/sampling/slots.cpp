#include "sampling/slots.h"

#include <limits>

namespace zul::test {
namespace {

int DrawIndices(ISampler& sampler, double* out, unsigned count, Arguments p) {
    std::vector<unsigned> indices(count);
    const int status = sampler.SampleIndices(indices.data(), static_cast<unsigned>(p[0]), count, p[1] != 0);
    std::copy(indices.begin(), indices.end(), out);
    return status;
}

// The values, then their probabilities.
int DrawDiscrete(ISampler& sampler, double* out, unsigned count, Arguments p) {
    const std::size_t size = p.size() / 2;
    return sampler.SampleDiscrete(out, count, p.data(), p.data() + size, static_cast<unsigned>(size));
}

double CdfOfTable(double x, const Parameters& p) {
    const std::size_t size = p.size() / 2;
    double below = 0;
    double all = 0;
    for (std::size_t i = 0; i < size; ++i) {
        all += p[size + i];
        if (p[i] <= x) below += p[size + i];
    }
    return below / all;
}

double CdfOfTrials(double x, const Parameters& p) {
    return NegBinomialCdf(x + (p[0] != 0 ? p[2] : 0), p[1], p[2], false);
}

Slot SlotOf(const Family& family) {
    const auto cdf = [&family](double x, const Parameters& parameters) {
        Parameters all = parameters;
        all.insert(all.begin(), x);
        return family.cdf.call(all);
    };
    return {family.operation, cdf, family.kind == Kind::Discrete, family.domains, family.support};
}

std::map<std::string, Slot> AllSlots() {
    using enum Type;
    constexpr auto kUnit = [](Arguments) { return Support{0, 1}; };
    constexpr auto kBelowFirst = [](Arguments p) { return Support{0, p[0] - 1}; };
    constexpr auto kTrials = [](Arguments p) {
        return Support{p[0] != 0 ? 0 : p[2], std::numeric_limits<double>::infinity()};
    };
    const auto bernoulli = [](double x, const Parameters& p) { return BinomialCdf(x, 1, p[0], false); };
    std::map<std::string, Slot> slots;
    const auto add = [&slots](Slot slot) { slots[slot.name] = std::move(slot); };
    for (const Family& family : Families())
        if (!family.operation.name.empty()) add(SlotOf(family));
    add({Drawn("Bernoulli", &ISampler::SampleBernoulli), bernoulli, true, {Domain::Fraction}, kUnit});
    add({Drawn("NegBinomialTrials", &ISampler::SampleNegBinomialTrials),
         CdfOfTrials,
         true,
         {Domain::Real, Domain::Fraction, Domain::Count},
         kTrials});
    add({{"Discrete", {}, DrawDiscrete}, CdfOfTable, true});
    add({{"Indices", {Integer, Flag}, DrawIndices},
         nullptr,
         true,
         {Domain::Count, Domain::Real},
         kBelowFirst});
    return slots;
}

}  // namespace

const std::map<std::string, Slot>& Slots() {
    static const std::map<std::string, Slot> slots = AllSlots();
    return slots;
}

}  // namespace zul::test
