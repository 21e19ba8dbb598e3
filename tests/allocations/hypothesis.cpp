#include "zul/hypothesis.h"

#include "allocations/calls.h"
#include "zul/variances.h"

namespace zul::test {
namespace {

using namespace v0;

constexpr unsigned kCount = 7;
constexpr double kFirst[kCount] = {1.2, 1.9, 2.5, 3.1, 4.4, 5, 7.75};
constexpr double kSecond[kCount] = {0.5, 1.5, 2.75, 2.5, 4, 5.5, 7};
constexpr double kConfidence = 0.95;
constexpr auto kType = IntervalType::TwoSided;
constexpr auto kAlternative = AlternativeHypothesis::NotEqual;

// The first six fields do not need the differences; those after them are as they were.
template <typename... Form>
AllocatingCall Paired(Form... form) {
    return Filling("RunPairedT", "++++++bbbbbbb", [=](double* out) {
        PairedT record;
        record.n = kCount;
        return WithRecord<13>(record, out, [=](PairedT* r) {
            return RunPairedT(r, kFirst, kSecond, kConfidence, kType, form...);
        });
    });
}

// The chi-square results stand; those by Bonett's method are NaN.
template <typename... Form>
AllocatingCall Variance(const char* pattern, Form... form) {
    return Filling("RunOneVariance", pattern, [=](double* out) {
        OneVariance record;
        record.n = kCount;
        return WithRecord<9>(record, out, [=](OneVariance* r) {
            return RunOneVariance(r, kFirst, kConfidence, kType, form...);
        });
    });
}

template <typename... Form>
AllocatingCall Variances(Form... form) {
    return Filling("RunTwoVariance", "nnnnnnnnnnnnnn", [=](double* out) {
        TwoVariance record;
        record.n1 = record.n2 = kCount;
        return WithRecord<14>(record, out, [=](TwoVariance* r) {
            return RunTwoVariance(r, kFirst, kSecond, kConfidence, kType, form...);
        });
    });
}

AllocatingCall SeveralVariances() {
    return Filling("RunVariancesTest", "nnnnnnnnnnnnn", [](double* out) {
        static constexpr unsigned kSizes[] = {3, 4};
        VariancesTest record;
        record.groups = 2;
        return WithRecord<9>(record, out, [out](VariancesTest* r) {
            return RunVariancesTest(r, kFirst, kSizes, kConfidence, out + 9, nullptr, nullptr, nullptr,
                                    out + 11);
        });
    });
}

}  // namespace

std::vector<AllocatingCall> AllocatingHypothesis() {
    return {Paired(),
            Paired(kAlternative, 0.5),
            Variance("+++nnnnnn"),
            Variance("+++nn+++n", kAlternative, 2.0),
            Variances(),
            Variances(kAlternative, 2.0),
            SeveralVariances()};
}

}  // namespace zul::test
