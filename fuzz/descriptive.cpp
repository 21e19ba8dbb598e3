// The descriptive statistics of any numbers: what can be said of a result without computing it in the same way.
#include "zul/descriptive.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <numeric>

#include "fuzz/support/check.h"
#include "fuzz/support/input.h"
#include "fuzz/support/values.h"

namespace zul::fuzz {
namespace {

using Data = std::vector<double>;

constexpr std::size_t kMaxCount = 100;

unsigned Count(const Data& x) {
    return static_cast<unsigned>(x.size());
}

// NaN in front, as where none compares false; the others as numbers.
Data Sorted(Data x) {
    const auto end = std::partition(x.begin(), x.end(), [](double value) { return value == value; });
    std::sort(x.begin(), end);
    return x;
}

double Largest(const Data& x) {
    double largest = 0;
    for (const double value : x)
        largest = std::max(largest, std::abs(value));
    return largest;
}

// Calls what cannot throw, and is not to change x.
template <typename Evaluate>
void Run(const Data& x, const char* name, Evaluate evaluate) {
    const ReadOnly kept(x);
    Checked(Mode::Bare, evaluate, [name] { return std::string(name); });
    Require(kept.IsIntact(), [name] { return std::string(name) + " changed its data"; });
}

// What a sum of two or three roundings may be off.
double Rounding(const Data& x, double slack) {
    return Largest(x) * slack + 2e-323;
}

// Between the smallest and the largest value, but for rounding, if these are finite.
bool IsBetween(double value, const Data& x, double slack) {
    if (x.empty() || HasNaN(x) || std::isinf(Largest(x))) return true;
    const auto [least, greatest] = std::minmax_element(x.begin(), x.end());
    const double rounding = Rounding(x, slack);
    return std::isfinite(value) && value >= *least - rounding && value <= *greatest + rounding;
}

// Whether the differences of any two values are finite.
bool HasFiniteRange(const Data& x) {
    return !HasNaN(x) && Largest(x) < 8e307;
}

void Sums(Input&, const Data& x) {
    const unsigned n = Count(x);
    Guarded<double> running(n, kUnwritten);
    Guarded<double> shares(n, kUnwritten);
    Data inPlace = x;
    double sum = 0;
    double sumOfShares = 0;
    Run(x, "sums", [&] {
        sum = v1::GetSum(x.data(), n);
        v1::GetCumulativeSums(x.data(), n, running.Data());
        sumOfShares = v1::GetProportions(x.data(), n, shares.Data());
        v1::GetCumulativeSums(inPlace.data(), n, inPlace.data());
    });
    Expect(running.IsIntact() && shares.IsIntact(), "a sum was written outside");
    Expect(Same(sum, sumOfShares) && Same(running.Values(), inPlace), "the sums differ");
    Expect(n == 0 ? sum != sum : Same(running.Values().back(), sum), "the last running sum is not the sum");
    double size = 0;
    for (const double value : x)
        size += std::abs(value);
    if (!HasFiniteRange(x) || !std::isfinite(size) || n == 0) return;
    const long double exact = std::accumulate(x.begin(), x.end(), 0.0L);
    Expect(std::abs(static_cast<double>(exact - static_cast<long double>(sum))) <= 1e-15 * size,
           "the sum is inaccurate");
}

// The tests of the exports have their bits.
void Moments(Input& input, const Data& x) {
    const unsigned n = Count(x);
    const double given = input.Flag() ? AnyReal(input) : 0;
    const auto k = static_cast<unsigned>(input.Choice(8));
    const Data y = Values(input, n);
    Guarded<double> powers(k, kUnwritten);
    v1::SecondSampleMoments record;
    record.count = n;
    double varianceX = kUnwritten;
    double varianceY = kUnwritten;
    double skewness = 0;
    double kurtosis = 0;
    double covariance = 0;
    std::array<double, 4> results{};
    std::array statuses = {-1, -1};
    Run(x, "moments", [&] {
        v1::GetSecondSampleMoments(&record, x.data());
        statuses[0] = v1::GetCenteredOrderKPowerSums(x.data(), n, powers.Data(), k);
        v1::GetKelSkewnessAndKurtosis(x.data(), n, &skewness, &kurtosis);
        covariance = v1::GetCovariance(x.data(), y.data(), n, &varianceX, &varianceY);
        results = {v1::GetSampleMean(x.data(), n), v1::GetSampleVariance(x.data(), n, given),
                   v1::GetPearsonCorrelation(x.data(), y.data(), n),
                   v1::GetSpearmanCorrelation(x.data(), y.data(), n, &statuses[1])};
    });
    const auto [mean, about, pearson, spearman] = results;
    const Data sums = powers.Values();
    Expect(powers.IsIntact() && statuses == std::array{k > 4 ? 30011 : 0, 0}, "moments: guards or status");
    for (unsigned i = 0; i < k; ++i)
        Expect(
            IsWritten(sums[i]) && (i % 2 == 0 || !(sums[i] < 0)) && ((i < 4 && n > 0) || sums[i] != sums[i]),
            "a power sum");
    Expect(n > 0 || (mean != mean && about != about && record.variance != record.variance), "not NaN");
    Expect(n > 1 || (covariance != covariance && pearson != pearson && spearman != spearman), "of a pair");
    Expect(IsWritten(varianceX) == (n > 1) && !(varianceX < 0 || varianceY < 0 || record.variance < 0),
           "variance");
    Expect((n >= 3 || skewness != skewness) && (n >= 4 || kurtosis != kurtosis), "skewness of too few");
    Expect(!HasFiniteRange(x) || IsBetween(mean, x, 1e-15), "the mean is outside the data");
    const bool isModerate = AreModerate(x, 1e15) && AreModerate(y, 1e15);
    Expect(!(std::abs(spearman) > 1 + 1e-12 || (isModerate && std::abs(pearson) > 1 + 1e-9)), "correlation");
}

// The values are compared in the test of the exports.
void Ranks(Input&, const Data& x) {
    const unsigned n = Count(x);
    Guarded<unsigned> order(n, 0xABABABABU);
    Guarded<double> ranks(n, kUnwritten);
    Data inPlace = x;
    int status = -1;
    Run(x, "ranks", [&] {
        v1::GetOrder(x.data(), n, order.Data());
        status = v1::GetRank(x.data(), n, ranks.Data());
        v1::GetRank(inPlace.data(), n, inPlace.data());
    });
    Expect(order.IsIntact() && ranks.IsIntact() && status == 0, "ranks: guards or status");
    const Data rankOf = ranks.Values();
    Expect(Same(rankOf, inPlace) || HasNaN(x), "ranks in place differ");
    Expect(std::accumulate(rankOf.begin(), rankOf.end(), 0.0) == n * (n + 1.0) / 2,
           "the ranks do not add up");
    double last = 0;
    for (const unsigned index : order.Values()) {
        Expect(index < n && rankOf[index] >= last, "the order does not ascend");
        last = rankOf[index];
    }
}

void Quantiles(Input& input, const Data& x) {
    const unsigned n = Count(x);
    const int method = input.Byte() < 8 ? input.Integer() : static_cast<int>(input.Choice(11));
    Data probabilities(input.Choice(6));
    for (double& p : probabilities)
        p = input.Byte() < 8 ? AnyReal(input) : input.Fraction();
    const unsigned count = Count(probabilities);
    Guarded<double> out(count, kUnwritten);
    Data inPlace = probabilities;
    const ReadOnly kept(probabilities);
    int status = -1;
    Run(x, "quantiles", [&] {
        status = v1::GetSampleQuantiles(x.data(), n, method, out.Data(), probabilities.data(), count);
        v1::GetSampleQuantiles(x.data(), n, method, inPlace.data(), inPlace.data(), count);
    });
    Expect(out.IsIntact() && kept.IsIntact(), "quantiles were written outside");
    const bool known = method >= 1 && method <= 9;
    Expect(status == (known ? 0 : 30017) && (known || out.IsUntouched()), "status of an unknown method");
    if (!known) return;
    const Data quantiles = out.Values();
    const Data sorted = Sorted(x);
    Expect(Same(quantiles, inPlace), "quantiles in place differ");
    for (unsigned j = 0; j < count; ++j) {
        const double p = probabilities[j];
        const bool isThere = n > 0 && p >= 0 && p <= 1;
        Expect(IsWritten(quantiles[j]) && (isThere || quantiles[j] != quantiles[j]),
               "a quantile that does not exist");
        if (!isThere || HasNaN(x)) continue;
        if (p == 0) Expect(quantiles[j] == sorted.front(), "the quantile at 0");
        if (p == 1) Expect(quantiles[j] == sorted.back(), "the quantile at 1");
        Expect(IsBetween(quantiles[j], x, 1e-15), "a quantile is outside the data");
    }
}

void TrimmedMeans(Input& input, const Data& x) {
    const unsigned n = Count(x);
    const double fraction = input.Flag() ? AnyReal(input) : input.Fraction() / 2;
    std::array statuses = {-1, -1};
    double usual = 0;
    double trimmed = 0;
    Run(x, "trimmed means", [&] {
        usual = v1::GetKelTrimmedMean(x.data(), n, &statuses[0]);
        trimmed = v1::GetTrimmedMean(x.data(), n, fraction, &statuses[1]);
    });
    Expect(statuses[0] == 0 && statuses[1] == 0, "status of a trimmed mean");
    const bool isLeft = fraction >= 0 && 2 * std::trunc(n * fraction) < n;
    if (!isLeft) Expect(trimmed != trimmed, "a mean of nothing");
    if (n == 0) Expect(usual != usual, "a trimmed mean of nothing");
    if (!HasFiniteRange(x) || n == 0) return;
    Expect(IsBetween(usual, x, 1e-15) && (!isLeft || IsBetween(trimmed, x, 1e-15)),
           "a trimmed mean is outside");
}

void Modes(Input& input, const Data& x) {
    const unsigned n = Count(x);
    const auto room = static_cast<unsigned>(input.Choice(8));
    Guarded<double> out(room, kUnwritten);
    unsigned count = 77;
    unsigned frequency = 77;
    int status = -1;
    Run(x, "modes", [&] {
        status = v1::GetMode(x.data(), n, room == 0 ? nullptr : out.Data(), room, &count, &frequency);
    });
    Expect(out.IsIntact() && status == 0, "modes: guards or status");
    unsigned highest = 0;
    Data expected;
    std::map<double, unsigned> frequencies;  // NaN is equal to nothing
    for (const double value : x)
        if (value == value) ++frequencies[value];
    for (const auto& [value, times] : frequencies) {
        if (times < 2 || times < highest) continue;
        if (times > highest) expected.clear();
        highest = times;
        expected.push_back(value);
    }
    expected.resize(std::min<std::size_t>(expected.size(), room));
    Expect(count == expected.size() && frequency == (room == 0 ? 0 : highest), "wrong count of modes");
    expected.resize(room, kNaN);
    const Data modes = out.Values();
    for (unsigned i = 0; i < room; ++i)
        Expect(i < count ? modes[i] == expected[i] : modes[i] != modes[i], "wrong mode");
}

bool Ascends(const Data& values) {
    const double rounding = Rounding(values, 1e-15);
    for (std::size_t i = 1; i < values.size(); ++i)
        if (!std::isfinite(values[i]) || !(values[i - 1] <= values[i] + rounding)) return false;
    return true;
}

Data FiveOf(const v1::FiveNumberSummary& five) {
    return {five.minimum, five.firstQuartile, five.median, five.thirdQuartile, five.maximum};
}

void Summaries(Input& input, const Data& x) {
    const unsigned n = Count(x);
    const double confidence = input.Byte() < 200 ? input.Fraction() : AnyReal(input);
    v1::FiveNumberSummary five;
    v1::FiveNumberSummary extended;
    v1::SecondSampleMoments moments;
    v1::KelBoxplotHelper box;
    moments.count = n;
    Guarded<double> modes(5, kUnwritten);
    unsigned count = 77;
    unsigned frequency = 77;
    std::array statuses = {-1, -1, -1};
    Run(x, "summaries", [&] {
        statuses[0] = v1::GetKelFiveNumberSummary(&five, x.data(), n);
        statuses[1] =
            v1::GetKel2013ExtendedSummary(&moments, &extended, modes.Data(), &count, &frequency, x.data());
        statuses[2] = v1::RunKelBoxplotHelper(&box, confidence, x.data(), n);
    });
    Expect(statuses == std::array{0, 0, 0} && modes.IsIntact(), "summaries: guards or status");
    const Data summary = FiveOf(five);
    const Data boxed = {box.minimum, box.firstQuartile, box.median, box.thirdQuartile, box.maximum};
    Expect(Same(summary, FiveOf(extended)) && Same(summary, boxed) && Same(box.mean, moments.mean),
           "the summaries differ");
    Expect(count <= 5, "too many modes");
    if (n == 0)
        Expect(five.median != five.median && box.lowerHinge != box.lowerHinge, "a summary of nothing");
    if (n == 0 || HasNaN(x) || std::isinf(Largest(x))) return;
    const Data hinges = {box.minimum, box.lowerHinge, box.median, box.upperHinge, box.maximum};
    Expect(Ascends(summary), "the five numbers do not ascend");
    Expect(Ascends(hinges), "the hinges do not ascend");
    if (!HasFiniteRange(x) || !(confidence > 0 && confidence < 1)) return;
    const double rounding = Rounding(x, 1e-14);
    Expect(!(box.medianLowerBound > box.median + rounding) && !(box.medianUpperBound < box.median - rounding),
           "the median is outside its interval");
    if (box.medianLowerBound == box.medianLowerBound)
        Expect(IsBetween(box.medianLowerBound, x, 1e-14) && IsBetween(box.medianUpperBound, x, 1e-14),
               "the interval of the median is outside the data");
}

void GeometricMean(Input&, const Data& x) {
    const unsigned n = Count(x);
    double mean = 0;
    Run(x, "geometric mean", [&] { mean = v2::GetGeometricMean(x.data(), n); });
    if (n == 0) Expect(mean != mean, "a geometric mean of nothing");
    Expect(!(mean < 0), "negative geometric mean");
    const bool safe =
        std::all_of(x.begin(), x.end(), [](double value) { return value > 3e-231 && value < 1e231; });
    if (!safe || n == 0) return;
    const auto [least, greatest] = std::minmax_element(x.begin(), x.end());
    Expect(mean >= *least * (1 - 1e-13) && mean <= *greatest * (1 + 1e-13), "the geometric mean is outside");
}

}  // namespace
}  // namespace zul::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zul::fuzz;
    constexpr std::array kTargets = {Sums,      Moments,      Moments, Moments,   Ranks,
                                     Quantiles, TrimmedMeans, Modes,   Summaries, GeometricMean};
    Input input(data, size);
    const auto target = kTargets[input.Choice(kTargets.size())];
    const std::size_t count = input.Choice(kMaxCount + 1);
    target(input, Values(input, count));
    return 0;
}
