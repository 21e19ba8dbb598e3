// Samplers: any operation with any parameters ends, returns a documented status or throws; the deviates of valid
// parameters lie in the support; the same seed gives the same deviates.
#include "zul/sampler.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>
#include <string_view>

#include "fuzz/support/check.h"
#include "fuzz/support/input.h"
#include "fuzz/support/values.h"
#include "sampling/slots.h"

namespace zul::fuzz {
namespace {

using test::Parameters;

constexpr double kNA = 1.23456e30;
// The operations whose time grows with a parameter get no more than this.
constexpr int kManyTrials = 2000;

struct Support {
    double least;
    double greatest;
    bool isWhole = false;
};

// An operation and its parameters, one letter for each: s a scale or a shape, r a real number, p a probability,
// i an integer, c a count of trials, m a size of a population.
struct Operation {
    std::string_view name;
    std::string_view parameters;
    Support (*support)(const Parameters&);
    unsigned maxCount = 40;
};

Support Line(const Parameters&) {
    return {-kInf, kInf};
}

Support Unit(const Parameters&) {
    return {0, 1};
}

Support Positive(const Parameters&) {
    return {0, kInf};
}

template <std::size_t place>
Support From(const Parameters& p) {
    return {p[place], kInf};
}

Support Hull(const Parameters& p) {
    const auto [least, greatest] = std::minmax_element(p.begin(), p.end());
    return {*least, *greatest};
}

Support UpToFirst(const Parameters& p) {
    return {0, std::max(p[0], 0.0)};
}

Support BelowFirst(const Parameters& p) {
    return {0, std::max(p[0] - 1, 0.0)};
}

Support Overlap(const Parameters& p) {
    return {std::max(0.0, p[1] + p[2] - p[0]), std::max(0.0, std::min(p[1], p[2]))};
}

Support FailuresOrTrials(const Parameters& p) {
    return {p[0] != 0 ? 0 : p[2], kInf};
}

template <Support (*support)(const Parameters&)>
Support Whole(const Parameters& p) {
    const Support all = support(p);
    return {all.least, all.greatest, true};
}

const Operation kOperations[] = {
    {"Beta", "ss", Unit},
    {"Cauchy", "rs", Line},
    {"ChiSquare", "s", Positive},
    {"Exponential", "sr", From<1>},
    {"F", "ss", Positive},
    {"Gamma", "ssr", From<2>},
    {"Lambda", "rrs", Line},
    {"Laplace", "rs", Line},
    {"LargestExtremeValue", "rs", Line},
    {"Logistic", "rs", Line},
    {"LogLogistic", "rsr", From<2>},
    {"Lognormal", "rsr", From<2>},
    {"Normal", "rs", Line},
    {"SmallestExtremeValue", "rs", Line},
    {"T", "sr", Line, 4},
    {"Triangular", "rrr", Hull},
    {"Uniform", "rr", Hull},
    {"Weibull", "ssr", From<2>},
    {"IntegerUniform", "ii", Whole<Hull>},
    {"Bernoulli", "p", Whole<Unit>},
    {"Binomial", "cp", Whole<UpToFirst>},
    {"Hypergeometric", "mcc", Whole<Overlap>},
    {"NegBinomial", "ps", From<1>},
    {"NegBinomialTrials", "ips", FailuresOrTrials},
    {"Poisson", "s", Whole<Positive>},
    {"Indices", "mi", Whole<BelowFirst>},
};

// Any number, or one for which the operation is made.
double Parameter(char kind, bool isValid, Input& input) {
    switch (kind) {
        case 's':
            return isValid ? static_cast<double>(input.Word() >> 48) * 0x1p-10 + 0x1p-6 : AnyReal(input);
        case 'r':
            return isValid ? static_cast<double>(input.Integer() % 1000) / 16 : AnyReal(input);
        case 'p':
            return isValid ? (input.Byte() + 1) / 258.0 : AnyReal(input);
        case 'i':
            return input.Integer();
        case 'm':
            return static_cast<double>(input.Word() % kManyTrials);
        default:
            return isValid ? static_cast<double>(input.Byte()) : input.Integer() % kManyTrials;
    }
}

// Changes what the letters leave open, so that the parameters are valid.
void Correct(std::string_view name, Parameters* p) {
    if (name == "Triangular" || name == "Uniform" || name == "IntegerUniform")
        std::sort(p->begin(), p->end());
    if ((name == "Triangular" || name == "Uniform") && p->front() == p->back()) p->back() += 1;
    if (name == "Hypergeometric") {
        (*p)[1] = std::min((*p)[1], (*p)[0]);
        (*p)[2] = std::min((*p)[2], (*p)[0]);
    }
    if (name == "Lambda") (*p)[0] = std::fmod((*p)[0], 4);
    if (name == "T") {  // with fewer degrees of freedom quantiles pass the largest double
        (*p)[0] = std::max((*p)[0], 0.5);
        (*p)[1] = std::fmod((*p)[1], 8);
    }
}

std::string NameOf(std::string_view operation) {
    return std::string("Sample").append(operation);
}

// What one call on a fresh sampler does.
struct Outcome {
    std::vector<double> values;
    double seed = 0;  // after it
    int status = -1;
    bool returned = false;
};

using Draw = std::function<int(ISampler&, double* out, unsigned count)>;

Outcome DrawOnce(std::string_view name, Mode mode, const Draw& draw, double seed, std::size_t size,
                 unsigned count) {
    const test::SamplerPtr sampler = test::MakeSampler(seed);
    Require(sampler != nullptr, [] { return std::string("no sampler"); });
    const double before = sampler->GetSeed();
    Guarded<double> out(size, kUnwritten);
    Outcome outcome;
    const auto run = [&] { outcome.status = draw(*sampler, out.Data(), count); };
    outcome.returned = Checked(mode, run, [&] { return NameOf(name); });
    outcome.values = out.Values();
    outcome.seed = sampler->GetSeed();
    Require(out.IsIntact(), [&] { return NameOf(name) + " wrote outside"; });
    if (count == 0)
        Require(outcome.returned && out.IsUntouched() && outcome.seed == before,
                [&] { return NameOf(name) + " drew nothing, and did something"; });
    return outcome;
}

// Twice, with the same outcome.
Outcome CallTwice(std::string_view name, Mode mode, const Draw& draw, double seed, std::size_t size,
                  unsigned count) {
    Outcome first = DrawOnce(name, mode, draw, seed, size, count);
    const Outcome second = DrawOnce(name, mode, draw, seed, size, count);
    const bool isSame = first.status == second.status && first.returned == second.returned &&
                        first.seed == second.seed &&
                        std::equal(first.values.begin(), first.values.end(), second.values.begin(), SameBits);
    Require(isSame, [&] { return NameOf(name) + " differs for one seed"; });
    return first;
}

double Seed(Input& input) {
    const double seed = input.Flag() ? input.Byte() : AnyReal(input);
    return seed == 0 || !std::isfinite(seed) ? 1 : seed;  // these take the time of day
}

void Deviates(Input& input) {
    const Operation& operation = kOperations[input.Choice(std::size(kOperations))];
    const bool isValid = input.Byte() < 140;
    const double seed = Seed(input);
    const auto count = static_cast<unsigned>(input.Choice(operation.maxCount + 1));
    Parameters parameters;
    for (const char kind : operation.parameters)
        parameters.push_back(Parameter(kind, isValid, input));
    if (isValid) Correct(operation.name, &parameters);
    const test::Slot& slot = test::Slots().at(std::string(operation.name));
    const bool isFramed = operation.name != "Indices" && operation.name != "Weibull";
    const auto draw = [&](ISampler& sampler, double* out, unsigned n) {
        return slot.draw(sampler, out, n, parameters);
    };
    const Outcome outcome =
        CallTwice(operation.name, isFramed ? Mode::Framed : Mode::Bare, draw, seed, count, count);
    if (!outcome.returned) return;
    const auto describe = [&] {
        std::string text = NameOf(operation.name);
        for (const double p : parameters)
            text.append(" ").append(std::to_string(p));
        return text;
    };
    if (operation.name == "Indices") {
        const bool fits = parameters[1] == 0 || count <= parameters[0];
        const std::set<double> distinct(outcome.values.begin(), outcome.values.end());
        Require(outcome.status == (fits ? 0 : 30011), describe);
        Require(!fits || parameters[1] == 0 || distinct.size() == count, describe);
        Require(fits || (distinct.size() == 1 && *distinct.begin() == 4294967295.0), describe);
        if (!fits) return;
    } else {
        Require(outcome.status == 0, describe);
    }
    for (const double x : outcome.values)
        Require(IsWritten(x), describe);
    if (!isValid) return;
    const Support support = operation.support(parameters);
    for (const double x : outcome.values) {
        Require(x >= support.least && x <= support.greatest && x != kNA, describe);
        Require(!support.isWhole || std::isinf(x) || x == std::floor(x), describe);
    }
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
    Require(outcome.status == 0, [] { return std::string("SampleDiscrete: status"); });
    const bool isTable =
        std::all_of(probabilities.begin(), probabilities.end(), [](double p) { return p >= 0; });
    for (const double x : outcome.values) {
        if (size == 0) Require(x != x, [] { return std::string("SampleDiscrete of nothing"); });
        bool isDrawn = size == 0 || !isTable;
        for (unsigned i = 0; i < size && !isDrawn; ++i)
            isDrawn = Same(values[i], x) && probabilities[i] > 0;
        Require(isDrawn, [] { return std::string("SampleDiscrete drew what has no probability"); });
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
    Require(outcome.status == 0, [] { return std::string("SampleMVNormal: status"); });
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
    if (sampler != nullptr) {
        Guarded<double> out(count, kUnwritten);
        std::vector<double> again(count);
        double state = 0;
        double stateAgain = 0;
        const auto run = [&] {
            sampler->Reseed(other);
            sampler->SampleUniform(out.Data(), count, 0, 1);
            state = sampler->GetSeed();
            sampler->Reseed(other);
            sampler->Reseed(sampler->GetSeed());
            for (unsigned i = 0; i < count; ++i)  // one at a time
                sampler->SampleUniform(&again[i], 1, 0, 1);
            stateAgain = sampler->GetSeed();
            Require(sampler->Reserved17() == 30011 && sampler->Reserved18() == 30011, where);
        };
        Checked(Mode::Framed, run, where);
        Require(state >= 0 && state < 3.25e13 + 1e11 && state == std::floor(state) && state == stateAgain,
                where);
        Require(out.IsIntact() && out.Values() == again, where);
        for (const double u : again)
            Require(u >= 3e-14 && u <= 1 - 3e-14, where);
    }
    DeleteISampler(&sampler);
    Require(sampler == nullptr, where);
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
