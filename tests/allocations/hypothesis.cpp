#include "zul/hypothesis.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <type_traits>

#include "allocations/calls.h"

namespace zul::test {
namespace {

using namespace v0;

constexpr int kOutOfMemory = 30001;
constexpr double kBefore = -7;
constexpr unsigned kCount = 7;
constexpr double kFirst[kCount] = {1.2, 1.9, 2.5, 3.1, 4.4, 5, 7.75};
constexpr double kSecond[kCount] = {0.5, 1.5, 2.75, 2.5, 4, 5.5, 7};
constexpr int kEvents[kCount] = {1, 0, 0, 1, 1, 0, 1};
constexpr double kConfidence = 0.95;
constexpr auto kType = IntervalType::TwoSided;
constexpr auto kAlternative = AlternativeHypothesis::NotEqual;

template <std::size_t count, typename Record>
std::array<double, count> Fields(const Record& record) {
    static_assert(std::is_standard_layout_v<Record>);
    std::array<double, count> fields{};
    std::memcpy(fields.data(), static_cast<const void*>(&record), sizeof fields);
    return fields;
}

// The first six fields do not need the differences; those after them are as they were.
template <typename... Form>
Outcome Paired(Form... form) {
    PairedT record;
    record.n = kCount;
    record.meanDifference = record.standardDeviationDifference = record.standardErrorDifference = kBefore;
    record.lowerBound = record.upperBound = record.tStatistic = record.pValue = kBefore;
    const int status = RunPairedT(&record, kFirst, kSecond, kConfidence, kType, form...);
    const auto fields = Fields<13>(record);
    constexpr std::size_t kDifferences = 6;
    bool isFailure = status == kOutOfMemory;
    for (std::size_t i = 0; i < fields.size(); ++i)
        isFailure = isFailure && (i < kDifferences ? fields[i] > 0 : fields[i] == kBefore);
    return Judge(status == 0, isFailure);
}

// The chi-square results stand; those by Bonett's method are NaN.
template <typename... Form>
Outcome Variance(Form... form) {
    OneVariance record;
    record.n = kCount;
    record.bonettLowerBound = record.bonettUpperBound = record.bonettPValue = kBefore;
    const int status = RunOneVariance(&record, kFirst, kConfidence, kType, form...);
    const bool isTest = sizeof...(form) != 0;
    const bool isBonettMissing = std::isnan(record.bonettLowerBound) && std::isnan(record.bonettUpperBound) &&
                                 std::isnan(record.bonettPValue);
    const bool isChiSquareThere = record.chiSquareLowerBound > 0 && record.chiSquareUpperBound > 0 &&
                                  std::isnan(record.chiSquarePValue) != isTest;
    return Judge(status == 0, status == kOutOfMemory && isChiSquareThere && isBonettMissing);
}

// The forms of a test: bounds alone, and bounds with the test.
template <typename Call>
void Forms(Call call) {
    call(kConfidence, kType);
    call(kConfidence, kType, kAlternative, 0.5);
}

void TAndZ() {
    OneSampleT t;
    OneSampleZ z;
    PairedT paired;
    TwoSampleT two;
    OneVariance variance;
    t.n = z.n = paired.n = two.n1 = two.n2 = variance.n = kCount;
    paired.meanDifference = paired.standardDeviationDifference = variance.variance = 1;
    Forms([&](auto... a) { RunOneSampleT(&t, kFirst, a...), RunOneSampleT(&t, a...); });
    Forms([&](auto... a) { RunOneSampleZ(&z, kFirst, 2, a...), RunOneSampleZ(&z, 2, a...); });
    Forms([&](auto... a) { RunPairedT(&paired, a...), RunOneVariance(&variance, a...); });
    for (const bool equal : {false, true})
        Forms([&](auto... a) {
            RunTwoSampleT(&two, kFirst, kSecond, equal, a...), RunTwoSampleT(&two, equal, a...);
        });
}

void Proportions() {
    OneProportion one;
    TwoProportion two;
    one.x = two.x1 = two.x2 = 3;
    one.n = two.n1 = two.n2 = kCount;
    for (const bool flag : {false, true}) {
        Forms([&](auto... a) { RunOneProportion(&one, flag, a...), RunKelOneProportion(&one, flag, a...); });
        Forms([&](auto... a) {
            RunOneProportion(&one, kEvents, flag, a...), RunKelOneProportion(&one, kEvents, flag, a...);
        });
        RunOneProportionWilson(&one, flag, kConfidence, kType);
        RunOneProportionWilson(&one, flag, kAlternative, 0.3);
        RunOneProportionWaldCI(&one, flag, kConfidence, kType);
        RunOneProportionAgrestiCoullCI(&one, flag, kConfidence, kType);
        RunKelTwoProportion(&two, flag, kConfidence, kType, kAlternative, 0);
        RunKelTwoProportion(&two, flag, kAlternative, 0);
        RunKelTwoProportion(&two, kEvents, kEvents, flag, kConfidence, kType, kAlternative, 0);
        RunTwoProportionWaldCI(&two, flag, kConfidence, kType);
        RunTwoProportionAgrestiCaffoCI(&two, flag, kConfidence, kType);
    }
    RunOneProportionClopperPearson(&one, kConfidence, kType);
    RunOneProportionClopperPearson(&one, kAlternative, 0.3);
    RunOneProportionMidP(&one, kConfidence, kType);
    RunOneProportionMidP(&one, kAlternative, 0.3);
    GetSampleProportion(3, 12);
}

void GoodnessOfFit() {
    constexpr double kParameters[] = {2, 3};
    std::array<double, kCount> expected{};
    std::array<double, kCount> contributions{};
    std::array<double, 3> results{};
    double* const p = &results[1];
    RunKelExponentialADTest(kFirst, 3, results.data(), p, kCount);
    RunKelWeibullADTest(kFirst, kParameters, results.data(), p, kCount);
    v1::RunKelNormalADTest(kFirst, kParameters, results.data(), p, kCount);
    v1::RunKelLogNormalADTest(kFirst, kParameters, results.data(), p, kCount);
    RunKelTabularChiSqGOFTest(kFirst, nullptr, expected.data(), contributions.data(), results.data(), p,
                              &results[2], 20, kCount);
    v1::RunsTest runs;
    v1::RunRunsTest(&runs, kFirst, 2, kCount);
    v1::RunKelRunsTest(&runs, kFirst, 2, kCount);
    GetKelCorrelationPValue(0.5, kCount);
}

}  // namespace

std::vector<AllocatingCall> AllocatingHypothesis() {
    return {
        {"RunPairedT", [](int) { return Paired(); }},
        {"RunPairedT", [](int) { return Paired(kAlternative, 0.5); }},
        {"RunOneVariance", [](int) { return Variance(); }},
        {"RunOneVariance", [](int) { return Variance(kAlternative, 2.0); }},
    };
}

std::vector<PlainCall> PlainHypothesis() {
    return {
        {"RunOneSampleT RunOneSampleZ RunPairedT RunTwoSampleT RunOneVariance", TAndZ},
        {"RunOneProportion RunKelOneProportion RunOneProportionWilson RunOneProportionClopperPearson "
         "RunOneProportionMidP RunOneProportionWaldCI RunOneProportionAgrestiCoullCI GetSampleProportion "
         "RunKelTwoProportion RunTwoProportionWaldCI RunTwoProportionAgrestiCaffoCI",
         Proportions},
        {"RunKelExponentialADTest RunKelWeibullADTest RunKelNormalADTest RunKelLogNormalADTest "
         "RunKelTabularChiSqGOFTest RunRunsTest RunKelRunsTest GetKelCorrelationPValue",
         GoodnessOfFit},
    };
}

}  // namespace zul::test
