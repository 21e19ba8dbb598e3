// The tests of two and of several variances on random data.
#include <string>
#include <vector>

#include "hypothesis/record_fields.h"
#include "platforms/exact_numbers.h"
#include "platforms/recording.h"
#include "zul/variances.h"

namespace zul::test {
namespace {

void Record(Recording& recording, const std::string& group, int status, const std::vector<double>& values) {
    recording.Add("Statuses", status);
    recording.Add(group, values);
}

}  // namespace

void RecordVariances(Recording& recording, unsigned seed) {
    constexpr int kCases = 120;
    ExactNumbers numbers(seed);
    const auto sample = [&numbers] {
        const int n = 2 + numbers.Below(30);
        const int spread = 1 + numbers.Below(6);
        return numbers.Data(static_cast<std::size_t>(n), 6, spread);
    };
    for (int i = 0; i < kCases; ++i) {
        const std::vector<double> samples[] = {sample(), sample(), sample()};
        const double confidence = numbers.Fraction();
        const auto type = static_cast<IntervalType>(numbers.Below(3) - 1);
        const auto alternative = static_cast<AlternativeHypothesis>(numbers.Below(3) - 1);
        const double ratio0 = numbers.Positive(-3, 3);
        v0::TwoVariance two;
        two.n1 = static_cast<unsigned>(samples[0].size());
        two.n2 = static_cast<unsigned>(samples[1].size());
        const int status =
            RunTwoVariance(&two, samples[0].data(), samples[1].data(), confidence, type, alternative, ratio0);
        Record(recording, "TwoVariance", status, Doubles(two, 14));

        std::vector<double> data;
        unsigned sizes[3];
        for (int group = 0; group < 3; ++group) {
            data.insert(data.end(), samples[group].begin(), samples[group].end());
            sizes[group] = static_cast<unsigned>(samples[group].size());
        }
        v0::VariancesTest several;
        several.groups = 2 + static_cast<unsigned>(numbers.Below(2));
        std::vector<double> out(15);
        const int done = RunVariancesTest(&several, data.data(), sizes, confidence, &out[0], &out[3], &out[6],
                                          &out[9], &out[12]);
        Record(recording, "SeveralVariances", done, Doubles(several, 9));
        Record(recording, "SeveralVariances", done, out);
    }
}

}  // namespace zul::test
