// The descriptive statistics of any numbers: what can be said of a result without computing it in the same way.
#include "zul/descriptive.h"

#include <map>

#include "fuzz/support/target.h"

namespace zul::fuzz {
namespace {

constexpr std::size_t kMaxCount = 100;

double Largest(const Data& x) {
    constexpr auto kSize = [](double value) { return std::abs(value); };
    return x.empty() ? 0 : kSize(std::ranges::max(x, {}, kSize));
}

// Between the smallest and the largest value, but for rounding, if these are finite.
bool IsBetween(double value, const Data& x) {
    if (x.empty() || !AreFinite(x)) return true;
    const auto [least, greatest] = std::minmax_element(x.begin(), x.end());
    const double rounding = Largest(x) * 1e-15 + 2e-323;
    return std::isfinite(value) && value >= *least - rounding && value <= *greatest + rounding;
}

// Whether the differences of any two values are finite.
bool HasFiniteRange(const Data& x) {
    return AreFinite(x) && Largest(x) < 8e307;
}

void Sums(Input&, const Data& x, unsigned n) {
    Data running(n, kUnwritten);
    Data shares(n, kUnwritten);
    double sum = 0;
    double sumOfShares = 0;
    Run("sums", [&] {
        sum = v1::GetSum(x.data(), n);
        v1::GetCumulativeSums(x.data(), n, running.data());
        sumOfShares = v1::GetProportions(x.data(), n, shares.data());
    });
    Expect(Same(sum, sumOfShares) && (n == 0 || Same(running.back(), sum)), "the sums differ");
}

void Moments(Input& input, const Data& x, unsigned n) {
    const double given = input.Flag() ? AnyReal(input) : 0;
    const auto k = input.Choice<unsigned>(8);
    const Data y = Values(input, n);
    Data powers(k, kUnwritten);
    v1::SecondSampleMoments record;
    record.count = n;
    std::array variances = {kUnwritten, kUnwritten};
    std::array<double, 2> shape{};
    std::array<double, 4> results{};
    std::array statuses = {-1, -1};
    Run("moments", [&] {
        v1::GetSecondSampleMoments(&record, x.data());
        statuses[0] = v1::GetCenteredOrderKPowerSums(x.data(), n, powers.data(), k);
        v1::GetKelSkewnessAndKurtosis(x.data(), n, &shape[0], &shape[1]);
        v1::GetCovariance(x.data(), y.data(), n, &variances[0], &variances[1]);
        results = {v1::GetSampleMean(x.data(), n), v1::GetSampleVariance(x.data(), n, given),
                   v1::GetPearsonCorrelation(x.data(), y.data(), n),
                   v1::GetSpearmanCorrelation(x.data(), y.data(), n, &statuses[1])};
    });
    const auto [mean, about, pearson, spearman] = results;
    Expect(statuses == std::array{k > 4 ? 30011 : 0, 0}, "moments: status");
    Expect(!(variances[0] < 0 || variances[1] < 0 || record.variance < 0), "negative variance");
    Expect(!HasFiniteRange(x) || IsBetween(mean, x), "the mean is outside the data");
    Expect(!(std::abs(spearman) > 1 + 1e-12), "correlation");
}

void Ranks(Input&, const Data& x, unsigned n) {
    std::vector<unsigned> order(n, 0xABABABABU);
    Data ranks(n, kUnwritten);
    StatusOf(Mode::Bare, "ranks", {0}, [&] {
        v1::GetOrder(x.data(), n, order.data());
        return v1::GetRank(x.data(), n, ranks.data());
    });
    double last = 0;
    for (const unsigned index : order) {
        Expect(index < n && ranks[index] >= last, "the order does not ascend");
        last = ranks[index];
    }
}

void Quantiles(Input& input, const Data& x, unsigned n) {
    const int method = input.Byte() < 8 ? input.Integer() : input.Choice<int>(11);
    const auto count = input.Choice<unsigned>(6);
    Data probabilities(count);
    for (double& p : probabilities)
        p = input.Byte() < 8 ? AnyReal(input) : input.Fraction();
    Data out(count, kUnwritten);
    const bool known = method >= 1 && method <= 9;
    StatusOf(Mode::Bare, "quantiles", {known ? 0 : 30017}, [&] {
        return v1::GetSampleQuantiles(x.data(), n, method, out.data(), probabilities.data(), count);
    });
    for (unsigned j = 0; known && j < count; ++j)
        Expect(!(probabilities[j] >= 0 && probabilities[j] <= 1) || IsBetween(out[j], x), "quantile outside");
}

void TrimmedMeans(Input& input, const Data& x, unsigned n) {
    const double fraction = input.Flag() ? AnyReal(input) : input.Fraction() / 2;
    std::array statuses = {-1, -1};
    double usual = 0;
    double trimmed = 0;
    StatusOf(Mode::Bare, "trimmed means", {0}, [&] {
        usual = v1::GetKelTrimmedMean(x.data(), n, &statuses[0]);
        trimmed = v1::GetTrimmedMean(x.data(), n, fraction, &statuses[1]);
        return statuses[0] | statuses[1];
    });
    const bool areBetween = IsBetween(usual, x) && (trimmed != trimmed || IsBetween(trimmed, x));
    Expect(!HasFiniteRange(x) || areBetween, "a trimmed mean is outside the data");
}

void Modes(Input& input, const Data& x, unsigned n) {
    const auto room = input.Choice<unsigned>(8);
    Data out(room, kUnwritten);
    unsigned count = 77;
    unsigned frequency = 77;
    StatusOf(Mode::Bare, "modes", {0},
             [&] { return v1::GetMode(x.data(), n, out.data(), room, &count, &frequency); });
    std::map<double, unsigned> frequencies;
    unsigned highest = 2;
    for (const double value : x)
        if (value == value) highest = std::max(highest, ++frequencies[value]);
    std::erase_if(frequencies, [=](const auto& entry) { return entry.second < highest; });
    const bool any = room > 0 && !frequencies.empty();
    Expect(count == std::min<std::size_t>(frequencies.size(), room), "wrong count of modes");
    Expect(frequency == (any ? highest : 0), "wrong frequency of modes");
    for (auto next = frequencies.begin(); const double mode : out)
        Expect(next == frequencies.end() ? mode != mode : mode == next++->first, "wrong mode");
}

void Summaries(Input& input, const Data& x, unsigned n) {
    const double confidence = input.Byte() < 200 ? input.Fraction() : AnyReal(input);
    v1::FiveNumberSummary five;
    v1::FiveNumberSummary extended;
    v1::SecondSampleMoments moments;
    v1::KelBoxplotHelper box;
    moments.count = n;
    Data modes(5, kUnwritten);
    unsigned count = 77;
    unsigned frequency = 77;
    StatusOf(Mode::Bare, "summaries", {0}, [&] {
        return v1::GetKelFiveNumberSummary(&five, x.data(), n) |
               v1::GetKel2013ExtendedSummary(&moments, &extended, modes.data(), &count, &frequency,
                                             x.data()) |
               v1::RunKelBoxplotHelper(&box, confidence, x.data(), n);
    });
    Expect(count <= 5, "too many modes");
    for (const double number : {five.minimum, five.firstQuartile, five.median, five.thirdQuartile,
                                five.maximum, box.lowerHinge, box.median, box.upperHinge})
        Expect(IsBetween(number, x), "a summary is outside the data");
}

void GeometricMean(Input&, const Data& x, unsigned n) {
    const double mean = Result("geometric mean", [&] { return v2::GetGeometricMean(x.data(), n); });
    Expect(!(mean < 0), "negative geometric mean");
}

}  // namespace

void RunInput(Input& input) {
    constexpr std::array kTargets = {Sums,      Moments,      Moments, Moments,   Ranks,
                                     Quantiles, TrimmedMeans, Modes,   Summaries, GeometricMean};
    const auto target = input.OneOf(kTargets);
    const auto n = input.Choice<unsigned>(kMaxCount + 1);
    target(input, Values(input, n), n);
}

}  // namespace zul::fuzz
