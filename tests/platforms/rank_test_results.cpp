// The fields that the rank tests fill, from random data with ties and without, small and large.
#include <vector>

#include "hypothesis/record_fields.h"
#include "platforms/exact_numbers.h"
#include "platforms/recording.h"
#include "zul/rank_tests.h"

namespace zul::test {
namespace {

constexpr int kCases = 60;

}  // namespace

void RecordRankTests(Recording& recording, unsigned seed) {
    using namespace v0;
    ExactNumbers numbers(seed);
    for (int call = 0; call < kCases; ++call) {
        const double level = 0.5 + numbers.Fraction() / 2;
        const auto type = static_cast<IntervalType>(numbers.Below(3) - 1);
        const auto alternative = static_cast<AlternativeHypothesis>(numbers.Below(3) - 1);
        const bool normal = numbers.Below(2) == 1;
        const auto n = static_cast<unsigned>(numbers.Below(call % 10 == 0 ? 3000 : 60) + 12);
        const std::vector<double> x = numbers.Data(n, 1, 1 + numbers.Below(6));
        const std::vector<double> y = numbers.Data(n, 2, 1 + numbers.Below(6));

        SignTest sign;
        Wilcoxon wilcoxon;
        sign.n = wilcoxon.n = n;
        RunSignTest(&sign, x.data(), level, type, alternative, 1);
        recording.Add("SignTest", Doubles(sign, 10));
        RunWilcoxon(&wilcoxon, x.data(), normal, level, type, alternative, 1);
        recording.Add("Wilcoxon", Doubles(wilcoxon, 6));
        MannWhitney mannWhitney;
        mannWhitney.n1 = n;
        mannWhitney.n2 = n - 5;
        RunMannWhitney(&mannWhitney, x.data(), y.data(), normal, level, type, alternative);
        recording.Add("MannWhitney", Doubles(mannWhitney, 10));

        const unsigned sizes[] = {4, n - 9, 5};
        std::vector<double> out(9);
        KruskalWallis kruskalWallis;
        MoodMedian mood;
        kruskalWallis.groups = mood.groups = 3;
        RunKruskalWallis(&kruskalWallis, x.data(), sizes, &out[0], &out[3], &out[6]);
        recording.Add("KruskalWallis", Doubles(kruskalWallis, 5));
        recording.Add("KruskalWallis", out);
        RunMoodMedian(&mood, x.data(), sizes, nullptr, nullptr, &out[0], &out[3]);
        recording.Add("MoodMedian", Doubles(mood, 4));
        recording.Add("MoodMedian", out);
        Friedman friedman;
        friedman.blocks = n / 4;
        friedman.treatments = 4;
        RunFriedman(&friedman, y.data(), &out[0], &out[4]);
        recording.Add("Friedman", Doubles(friedman, 7));
        recording.Add("Friedman", out);
    }
}

}  // namespace zul::test
