// The rank tests of any numbers: statuses, what is NaN at which, probabilities, order statistics of all pairs, rank sums.
#include "zul/rank_tests.h"

#include "fuzz/support/tests.h"
#include "hypothesis/ranks/all_pairs.h"
#include "hypothesis/record_fields.h"

namespace zul::fuzz {
namespace {

// The fields that intervals between pairs have in common.
void ExpectInterval(const auto& r, int status, const Data& pairs, const Settings& s) {
    Expect(status == (s.HasType() ? 0 : 30002) || status == 30023, "status of a test with pairs");
    Expect(Same(r.estimate, test::Median(pairs)), "an estimate that is not the median of all pairs");
    ExpectWithin("a test with pairs", 0, 1, {r.pValue, r.achievedConfidence});
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
        return Expect(AreNaN(test::Doubles(w, 6)) && AreNaN(test::Doubles(sign, 10)), "results of no values");
    }
    Expect(statusOfSigns == (s.HasType() ? 0 : 30002), "status of a sign test");
    ExpectWithin("a sign test", 0, 1, {sign.pValue});
    Expect(!(sign.outerLower > sign.innerLower || sign.innerLower > sign.innerUpper), "depths out of order");
    Expect(!(sign.lowerBound > sign.upperBound || sign.outerConfidence < sign.innerConfidence), "interval");
    const bool isHuge = std::any_of(x.begin(), x.end(), [](double value) { return std::abs(value) > 8e307; });
    const bool isTested = s.hypothesised == s.hypothesised;
    Expect(w.used + sign.equal == (isTested ? w.n : 0) && isTested != AreNaN({w.pValue}), "counts of a test");
    if (!isHuge) ExpectInterval(w, status, test::Averages(x, false), s);
}

void TwoSamples(Input& input, const Settings& s) {
    const Data x = Sample(input);
    const Data y = Sample(input);
    v0::MannWhitney r;
    r.n1 = static_cast<unsigned>(x.size());
    r.n2 = static_cast<unsigned>(y.size());
    const int status = Result("RunMannWhitney", [&] {
        return RunMannWhitney(&r, x.data(), y.data(), s.flag, s.confidence, s.type, s.alternative);
    });
    if (x.empty() || y.empty() || !AreFinite(x) || !AreFinite(y)) {
        Expect(status == (x.empty() || y.empty() ? 30023 : 30000), "status of unusable samples");
        return Expect(AreNaN(test::Doubles(r, 10)), "results of unusable samples");
    }
    const Data pairs = test::Differences(x, y);
    ExpectInterval(r, status, pairs, s);
    Expect(r.u >= 0 && r.u <= static_cast<double>(pairs.size()), "pairs that are not there");
    Expect((status == 30023) == AreNaN({r.pValue}), "p-value of a rank sum");
    ExpectWithin("p-value with ties", 0, 1, {r.pValueTies});
}

// The values in groups, and in blocks.
void Several(Input& input, const Settings&) {
    const Data x = Values(input, 2 * input.Choice(kMaxCount / 2 + 1));
    const auto n = static_cast<unsigned>(x.size());
    const auto first = input.Choice<unsigned>(n + 1);
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
    ExpectWithin("several groups", 0, 1, {kruskal.pValueAdjusted, mood.pValue});
    Expect(out[1] != out[1] && above[1] == 0, "an empty group");
    const bool isUsable = AreFinite(x) && n > 0;
    Expect((status[0] == 30000) == !(isUsable && first > 0 && first < n), "status of groups");
    Expect(status[1] % 30007 == status[0] % 30007, "another status of groups");
    Expect((status[2] == 30000) == !isUsable && !(friedman.kendallW > 1 + 1e-14), "blocks");
    Expect(!isUsable || (sums[0] + sums[1] == 1.5 * n && friedman.pValue >= 0), "rank sums of blocks");
}

}  // namespace

void RunInput(Input& input) {
    input.OneOf(std::array{OneSample, TwoSamples, Several})(input, Settings{input});
}

}  // namespace zul::fuzz
