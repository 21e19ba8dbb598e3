// The rank tests of any numbers: statuses, what is NaN at which, probabilities, order statistics of all pairs, rank sums.
#include "zul/rank_tests.h"

#include "fuzz/support/tests.h"

namespace zul::fuzz {
namespace {

template <typename Record>
void ExpectNothing(const Record& record, std::size_t doubles) {
    Data values(doubles);
    std::memcpy(values.data(), static_cast<const void*>(&record), doubles * sizeof(double));
    Expect(AreNaN(values), "a failure left results");
}

// The middle of all values, beside what huge ones round to.
double Middle(Data values) {
    std::sort(values.begin(), values.end());
    const double low = values[(values.size() - 1) / 2];
    const double high = values[values.size() / 2];
    return (std::isinf(low + high) ? low / 2 + high / 2 : (low + high) / 2) + 0.0;
}

// The fields that intervals between pairs have in common.
template <typename Record>
void ExpectInterval(const Record& r, int status, const Data& pairs, const Settings& s) {
    Expect(status == (s.HasType() ? 0 : 30002) || status == 30023, "status of a test with pairs");
    Expect(Same(r.estimate, Middle(pairs)), "an estimate that is not the median of all pairs");
    Expect(IsProbability(r.pValue) && IsProbability(r.achievedConfidence), "a probability outside [0, 1]");
    Expect(!(r.lowerBound > r.estimate || r.upperBound < r.estimate), "an estimate outside its interval");
    const bool hasBounds = s.HasType() && s.confidence > 0 && s.confidence < 1;
    Expect(AreNaN({r.lowerBound}) != hasBounds && AreNaN({r.upperBound}) != hasBounds, "bounds");
}

void OneSample(Input& input, const Settings& s) {
    const Data x = Sample(input);
    v0::Wilcoxon w;
    v0::SignTest sign;
    w.n = sign.n = static_cast<unsigned>(x.size());
    int status = 0;
    int statusOfSigns = 0;
    Run("RunWilcoxon", [&] {
        status = RunWilcoxon(&w, x.data(), s.flag, s.confidence, s.type, s.alternative, s.hypothesised);
        statusOfSigns = RunSignTest(&sign, x.data(), s.confidence, s.type, s.alternative, s.hypothesised);
    });
    if (x.empty() || !AreFinite(x)) {
        Expect(status == 30000 && statusOfSigns == 30000, "status of unusable values");
        ExpectNothing(w, 6);
        return ExpectNothing(sign, 10);
    }
    Expect(statusOfSigns == (s.HasType() ? 0 : 30002) && IsProbability(sign.pValue), "a sign test");
    Expect(!(sign.outerLower > sign.innerLower || sign.innerLower > sign.innerUpper), "depths out of order");
    Expect(!(sign.lowerBound > sign.upperBound) && !(sign.outerConfidence < sign.innerConfidence),
           "its interval");
    const bool isHuge = std::any_of(x.begin(), x.end(), [](double value) { return std::abs(value) > 8e307; });
    Data pairs;
    for (std::size_t i = 0; i < x.size(); ++i)
        for (std::size_t j = i; j < x.size(); ++j)
            pairs.push_back(isHuge ? x[i] / 2 + x[j] / 2 : (x[i] + x[j]) / 2);
    const bool isTested = s.hypothesised == s.hypothesised;
    Expect(w.used + sign.equal == (isTested ? w.n : 0) && isTested == (w.pValue == w.pValue),
           "counts of a test");
    if (!isHuge) ExpectInterval(w, status, pairs, s);
}

void TwoSamples(Input& input, const Settings& s) {
    const Data x = Sample(input);
    const Data y = Sample(input);
    v0::MannWhitney r;
    r.n1 = static_cast<unsigned>(x.size());
    r.n2 = static_cast<unsigned>(y.size());
    int status = 0;
    Run("RunMannWhitney", [&] {
        status = RunMannWhitney(&r, x.data(), y.data(), s.flag, s.confidence, s.type, s.alternative);
    });
    if (x.empty() || y.empty() || !AreFinite(x) || !AreFinite(y)) {
        Expect(status == (x.empty() || y.empty() ? 30023 : 30000), "status of unusable samples");
        return ExpectNothing(r, 10);
    }
    Data pairs;
    for (const double a : x)
        for (const double b : y)
            pairs.push_back(a - b);
    ExpectInterval(r, status, pairs, s);
    Expect(r.u >= 0 && r.u <= static_cast<double>(pairs.size()), "pairs that are not there");
    Expect((status == 30023) == (r.pValue != r.pValue) && IsProbability(r.pValueTies),
           "p-values of a rank sum");
}

// The values in groups, and in blocks.
void Several(Input& input, const Settings&) {
    const Data x = Values(input, 2 * input.Choice(kMaxCount / 2 + 1));
    const auto n = static_cast<unsigned>(x.size());
    const auto first = static_cast<unsigned>(input.Choice(n + 1));
    const unsigned sizes[] = {first, 0, n - first};
    Data out(6, kUnwritten);
    v0::KruskalWallis kruskal;
    v0::MoodMedian mood;
    v0::Friedman friedman;
    kruskal.groups = mood.groups = 3;
    friedman.blocks = n / 2;
    friedman.treatments = 2;
    unsigned above[3];
    Data sums(2);
    int status[3] = {};
    Run("several groups", [&] {
        status[0] = RunKruskalWallis(&kruskal, x.data(), sizes, nullptr, &out[0], &out[3]);
        status[1] = RunMoodMedian(&mood, x.data(), sizes, nullptr, above, nullptr, nullptr);
        status[2] = RunFriedman(&friedman, x.data(), sums.data(), nullptr);
    });
    Expect(IsProbability(kruskal.pValueAdjusted) && IsProbability(mood.pValue), "p-values of groups");
    Expect(out[1] != out[1] && above[1] == 0, "an empty group");
    const bool isUsable = AreFinite(x) && n > 0;
    Expect((status[0] == 30000) == !(isUsable && first > 0 && first < n) &&
               status[1] % 30007 == status[0] % 30007,
           "status of groups");
    Expect((status[2] == 30000) == !isUsable && !(friedman.kendallW > 1 + 1e-14), "blocks");
    Expect(!isUsable || (sums[0] + sums[1] == 1.5 * n && friedman.pValue >= 0), "rank sums of blocks");
}

}  // namespace

void RunInput(Input& input) {
    const auto target = input.OneOf(std::array{OneSample, TwoSamples, Several});
    target(input, Settings(input));
}

}  // namespace zul::fuzz
