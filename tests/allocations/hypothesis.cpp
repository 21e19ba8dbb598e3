#include "zul/hypothesis.h"

#include <array>
#include <cmath>
#include <cstring>
#include <type_traits>

#include "allocations/calls.h"

namespace zul::test {
namespace {

using namespace v0;

constexpr unsigned kCount = 7;
constexpr double kFirst[kCount] = {1.2, 1.9, 2.5, 3.1, 4.4, 5, 7.75};
constexpr double kSecond[kCount] = {0.5, 1.5, 2.75, 2.5, 4, 5.5, 7};
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

}  // namespace

std::vector<AllocatingCall> AllocatingHypothesis() {
    return {
        {"RunPairedT", [](int) { return Paired(); }},
        {"RunPairedT", [](int) { return Paired(kAlternative, 0.5); }},
        {"RunOneVariance", [](int) { return Variance(); }},
        {"RunOneVariance", [](int) { return Variance(kAlternative, 2.0); }},
    };
}

}  // namespace zul::test
