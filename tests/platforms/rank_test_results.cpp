// The fields that the rank tests fill, from random data with ties and without, small and large.
#include <cstdint>
#include <string>
#include <vector>

#include "hypothesis/record_fields.h"
#include "platforms/exact_numbers.h"
#include "platforms/recording.h"
#include "zul/rank_tests.h"

namespace zul::test {

void RecordRankTests(Recording& recording, unsigned seed) {
    using namespace v0;
    constexpr int kCases = 60;
    ExactNumbers numbers(seed);
    for (int call = 0; call < kCases; ++call) {
        const auto record = [&recording, call](const std::string& group, const std::vector<double>& values) {
            for (const double value : values)
                recording.Value({group, "call " + std::to_string(call)}, value);
        };
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
        record("SignTest", Doubles(sign, 10));
        RunWilcoxon(&wilcoxon, x.data(), normal, level, type, alternative, 1);
        record("Wilcoxon", Doubles(wilcoxon, 6));
        MannWhitney mannWhitney;
        mannWhitney.n1 = n;
        mannWhitney.n2 = n - 5;
        RunMannWhitney(&mannWhitney, x.data(), y.data(), normal, level, type, alternative);
        record("MannWhitney", Doubles(mannWhitney, 10));

        const unsigned sizes[] = {4, n - 9, 5};
        std::vector<double> out(9);
        KruskalWallis kruskalWallis;
        MoodMedian mood;
        kruskalWallis.groups = mood.groups = 3;
        RunKruskalWallis(&kruskalWallis, x.data(), sizes, &out[0], &out[3], &out[6]);
        record("KruskalWallis", Doubles(kruskalWallis, 5));
        record("KruskalWallis", out);
        RunMoodMedian(&mood, x.data(), sizes, nullptr, nullptr, &out[0], &out[3]);
        record("MoodMedian", Doubles(mood, 4));
        record("MoodMedian", out);
        Friedman friedman;
        friedman.blocks = n / 4;
        friedman.treatments = 4;
        RunFriedman(&friedman, y.data(), &out[0], &out[4]);
        record("Friedman", Doubles(friedman, 7));
        record("Friedman", out);
    }
}

}  // namespace zul::test
