#include <gtest/gtest.h>
#include <xmmintrin.h>

#include <cmath>
#include <limits>
#include <vector>

#include "hypothesis/record_fields.h"
#include "support/allocations.h"
#include "support/reference_table.h"
#include "zul/hypothesis.h"

namespace zul::v0 {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr auto kTwoSided = IntervalType::TwoSided;
constexpr auto kNotEqual = AlternativeHypothesis::NotEqual;

OneSampleT Summary(double mean, double sd, unsigned n) {
    OneSampleT record;
    record.mean = mean;
    record.standardDeviation = sd;
    record.n = n;
    return record;
}

TEST(TestRecords, StartEmpty) {
    const TwoSampleT t;
    const TwoProportion p;
    const v1::RunsTest runs;
    for (const auto& fields : {test::Doubles(OneSampleT(), 7),
                               test::Doubles(OneSampleZ(), 7),
                               test::Doubles(PairedT(), 13),
                               test::Doubles(t, 13),
                               test::Doubles(OneProportion(), 5),
                               test::Doubles(p, 8),
                               test::Doubles(OneVariance(), 9),
                               {runs.expectedRuns, runs.pValue}})
        for (const double field : fields)
            EXPECT_TRUE(std::isnan(field)) << fields.size();
    EXPECT_EQ(OneSampleT().n | OneSampleZ().n | PairedT().n | t.n1 | t.n2 | OneProportion().x, 0u);
    EXPECT_EQ(OneProportion().n | p.x1 | p.x2 | p.n1 | p.n2 | OneVariance().n, 0u);
    EXPECT_EQ(runs.below | runs.above | runs.runs, 0u);
}

TEST(TAndZ, BadValuesGoThroughWithStatusZero) {
    constexpr double kP = 0.39100221895577053;  // of t = 1 with three degrees of freedom
    struct Case {
        double sd;
        unsigned n;
        double confidence;
        int alternative;
        double mu0, bound, statistic, pValue;
    };
    for (const Case& c : {Case{2, 4, -1, 0, 9, kNaN, 1, kP}, Case{2, 4, 1, 0, 9, kNaN, 1, kP},
                          Case{2, 4, kInf, 0, 9, kNaN, 1, kP}, Case{2, 4, kNaN, 0, 9, kNaN, 1, kP},
                          Case{2, 4, 0, 5, 9, 10, 1, 0},      // unknown alternative
                          Case{2, 4, 0, 0, 10, 10, 0, 1},     // t = 0
                          Case{2, 4, 0, 1, 10, 10, 0, 0.5},   // t = 0
                          Case{0, 4, 0, -1, 9, 10, kInf, 0},  // infinite t, even for "less than"
                          Case{0, 4, 0, 0, 10, 10, kNaN, kNaN}, Case{kNaN, 4, 0, 0, 9, kNaN, kNaN, kNaN},
                          Case{2, 1, 0, 0, 9, kNaN, 0.5, kNaN},   // no degrees of freedom
                          Case{2, 0, 0, 0, 9, kNaN, 0, kNaN}}) {  // and fewer
        OneSampleT record = Summary(10, c.sd, c.n);
        EXPECT_EQ(RunOneSampleT(&record, c.confidence, kTwoSided,
                                static_cast<AlternativeHypothesis>(c.alternative), c.mu0),
                  0);
        EXPECT_EQ(_mm_getcsr() & 0x1F80, 0x1F80u);
        EXPECT_TRUE(test::IsNear(record.lowerBound, c.bound, 1e-8)) << c.n << " " << c.confidence;
        EXPECT_TRUE(test::IsNear(record.tStatistic, c.statistic, 1e-15)) << c.n << " " << c.mu0;
        EXPECT_TRUE(test::IsNear(record.pValue, c.pValue, 1e-8)) << c.n << " " << c.mu0;
    }
    const double sample[] = {3};
    OneSampleT empty;
    EXPECT_EQ(RunOneSampleT(&empty, sample, 0.95, kTwoSided, kNotEqual, 9), 0);
    EXPECT_TRUE(std::isnan(empty.mean) && std::isnan(empty.pValue));
    OneSampleT single = Summary(0, 0, 1);
    EXPECT_EQ(RunOneSampleT(&single, sample, 0.95, kTwoSided, kNotEqual, 9), 0);
    EXPECT_EQ(single.tStatistic, -kInf);
    EXPECT_EQ(single.pValue, 0);
    TwoSampleT wrapped;
    wrapped.n1 = wrapped.n2 = 0x80000001u;  // their sum is 2
    EXPECT_EQ(RunTwoSampleT(&wrapped, true, 0.95, kTwoSided), 0);
    EXPECT_EQ(wrapped.degreesOfFreedom, 0);
}

// A two-sided interval holds mu0 exactly when the test does not reject it; the two-sided p-value is at most
// twice either one-sided one.
TEST(TAndZ, IntervalAndTestsAgree) {
    for (double mu0 = 7.5; mu0 < 12.5; mu0 += 0.0173) {
        OneSampleT t = Summary(10, 2, 4);
        RunOneSampleT(&t, 0.8, kTwoSided, kNotEqual, mu0);
        EXPECT_EQ(t.lowerBound < mu0 && mu0<t.upperBound, t.pValue> 1 - 0.8) << mu0;
        OneSampleZ z;
        z.mean = 10;
        z.n = 4;
        RunOneSampleZ(&z, 2, 0.9, kTwoSided, kNotEqual, mu0);
        EXPECT_EQ(z.lowerBound < mu0 && mu0<z.upperBound, z.pValue> 1 - 0.9) << mu0;
        for (const auto side : {AlternativeHypothesis::LessThan, AlternativeHypothesis::GreaterThan}) {
            OneSampleT oneSided = t;
            RunOneSampleT(&oneSided, 0.8, kTwoSided, side, mu0);
            EXPECT_LE(t.pValue, 2 * oneSided.pValue);
        }
    }
}

TEST(PairedT, MemoryThatFailsIsAStatus) {
    const double first[] = {1, 2, 4};
    const double second[] = {2, 2, 2};
    for (const int failing : {1, 2}) {
        PairedT record;
        record.n = 3;
        const test::AllocationWatch watch(failing);
        const bool fails = failing == 1;  // there is one allocation
        EXPECT_EQ(RunPairedT(&record, first, second, 0.95, kTwoSided, kNotEqual, 0), fails ? 30001 : 0);
        EXPECT_EQ(watch.Live(), 0);
        EXPECT_EQ(record.mean2, 2);
        EXPECT_EQ(std::isnan(record.meanDifference), fails);
        EXPECT_EQ(std::isnan(record.pValue), fails);
    }
}

}  // namespace
}  // namespace zul::v0
