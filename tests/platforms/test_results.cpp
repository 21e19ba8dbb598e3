// The fields that the hypothesis tests fill, from random data.
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "hypothesis/record_fields.h"
#include "platforms/exact_numbers.h"
#include "platforms/recording.h"
#include "zul/hypothesis.h"

namespace zul::test {
namespace {

constexpr int kCases = 120;

struct Options {
    double confidence;
    IntervalType type;
    AlternativeHypothesis alternative;
    bool flag;
};

// A test with its options and data drawn.
class RandomTest {
public:
    RandomTest(Recording& recording, std::uint64_t seed) : recording_(recording), numbers_(seed) {}

    void OneSample() {
        const auto [level, type, alternative, flag] = DrawOptions();
        v0::OneSampleT t;
        const std::vector<double> data = Sample(&t.n);
        Record("OneSampleT", t, 7, v0::RunOneSampleT(&t, data.data(), level, type, alternative, kCentre));
        v0::OneSampleZ z;
        z.n = t.n;
        Record("OneSampleZ", z, 7, v0::RunOneSampleZ(&z, data.data(), 5, level, type, alternative, kCentre));
        v0::OneVariance variance;
        variance.n = t.n;
        Record("OneVariance", variance, 9,
               v0::RunOneVariance(&variance, data.data(), level, type, alternative, 40));
        for (const auto run : {&v1::RunRunsTest, &v1::RunKelRunsTest}) {
            v1::RunsTest runs;
            const int status = run(&runs, data.data(), kCentre, t.n);
            Record("RunsTest", status, {runs.expectedRuns, runs.pValue});
        }
    }

    void TwoSamples() {
        const auto [level, type, alternative, flag] = DrawOptions();
        v0::TwoSampleT two;
        const std::vector<double> first = Sample(&two.n1);
        const std::vector<double> second = Sample(&two.n2);
        Record("TwoSampleT", two, 13,
               v0::RunTwoSampleT(&two, first.data(), second.data(), flag, level, type, alternative, 1));
        v0::PairedT paired;
        paired.n = std::min(two.n1, two.n2);
        Record("PairedT", paired, 13,
               v0::RunPairedT(&paired, first.data(), second.data(), level, type, alternative, 1));
    }

    void OneProportion() {
        const auto [level, type, alternative, flag] = DrawOptions();
        using namespace v0;
        v0::OneProportion r;
        r.n = 1 + Below(200);
        r.x = Below(static_cast<int>(r.n) + 1);
        const double p0 = (1 + Below(63)) / 64.0;
        Record("OneProportion", r, 5, RunOneProportion(&r, flag, level, type, alternative, p0));
        Record("OneProportion", r, 5, RunKelOneProportion(&r, flag, level, type, alternative, p0));
        Record("OneProportion", r, 5, RunOneProportionWilson(&r, flag, level, type));
        Record("OneProportion", r, 5, RunOneProportionWilson(&r, flag, alternative, p0));
        Record("OneProportion", r, 5, RunOneProportionWaldCI(&r, flag, level, type));
        Record("OneProportion", r, 5, RunOneProportionAgrestiCoullCI(&r, flag, level, type));
        Record("OneProportionMidP", r, 5, RunOneProportionMidP(&r, level, type));
        Record("OneProportionMidP", r, 5, RunOneProportionMidP(&r, alternative, p0));
    }

    void TwoProportions() {
        const auto [level, type, alternative, flag] = DrawOptions();
        using namespace v0;
        TwoProportion r;
        r.n1 = 1 + Below(200);
        r.n2 = 1 + Below(200);
        r.x1 = Below(static_cast<int>(r.n1) + 1);
        r.x2 = Below(static_cast<int>(r.n2) + 1);
        const double d0 = flag ? 0 : 0.125;
        Record("TwoProportion", r, 8, RunKelTwoProportion(&r, flag, level, type, alternative, d0));
        Record("TwoProportion", r, 8, RunTwoProportionWaldCI(&r, flag, level, type));
        Record("TwoProportion", r, 8, RunTwoProportionAgrestiCaffoCI(&r, flag, level, type));
    }

    void GoodnessOfFit() {
        unsigned n = 0;
        std::vector<double> data = Sample(&n);
        for (double& x : data)
            x = std::max(x, 0.125);
        std::sort(data.begin(), data.end());
        const double parameters[] = {6, 4};
        for (const auto run :
             {&v1::RunKelNormalADTest, &v1::RunKelLogNormalADTest, &v0::RunKelWeibullADTest}) {
            double results[2];
            const int status = run(data.data(), parameters, &results[0], &results[1], n);
            Record("AndersonDarling", status, {results[0], results[1]});
        }
        double results[2];
        const int status = v0::RunKelExponentialADTest(data.data(), 7, &results[0], &results[1], n);
        Record("AndersonDarling", status, {results[0], results[1]});

        std::vector<double> expected(n);
        std::vector<double> contributions(n);
        double chiSquare = 0;
        double pValue = 0;
        double df = 0;
        const int done =
            RunKelTabularChiSqGOFTest(data.data(), nullptr, expected.data(), contributions.data(), &chiSquare,
                                      &pValue, &df, 6.0 * n, n);
        Record("TabularChiSquare", done, {expected[0], contributions[0], chiSquare, pValue, df});
        Record("CorrelationPValue", 0, {v0::GetKelCorrelationPValue(numbers_.Real(-4, 0), n)});
    }

private:
    static constexpr int kCentre = 6;

    unsigned Below(int n) { return static_cast<unsigned>(numbers_.Below(n)); }
    // In the order of the members.
    Options DrawOptions() {
        return {0.75 + numbers_.Fraction() * 0.25, static_cast<IntervalType>(numbers_.Below(3) - 1),
                static_cast<AlternativeHypothesis>(numbers_.Below(3) - 1), numbers_.Below(2) == 1};
    }
    std::vector<double> Sample(unsigned* n) {
        *n = 3 + Below(40);
        return numbers_.Data(*n, kCentre, 1 + numbers_.Below(6));
    }
    void Record(const std::string& group, int status, const std::vector<double>& values) {
        recording_.Add("Statuses", status);
        recording_.Add(group, values);
    }
    // The record is written by the time that it is read: it comes by reference.
    template <typename Test>
    void Record(const std::string& group, const Test& record, std::size_t fields, int status) {
        Record(group, status, Doubles(record, fields));
    }
    Recording& recording_;
    ExactNumbers numbers_;
};

}  // namespace

void RecordTests(Recording& recording, unsigned seed) {
    RandomTest test(recording, seed);
    for (int i = 0; i < kCases; ++i) {
        test.OneSample();
        test.TwoSamples();
        test.OneProportion();
        test.TwoProportions();
        test.GoodnessOfFit();
    }
}

}  // namespace zul::test
