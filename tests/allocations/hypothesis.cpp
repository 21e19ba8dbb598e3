#include "zul/hypothesis.h"

#include "allocations/calls.h"
#include "zul/rank_tests.h"
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

// All fields of a rank test are NaN, and so are its arrays.
template <std::size_t doubles, typename Record, typename Call>
AllocatingCall Ranking(std::string name, Record record, Call call) {
    constexpr const char* kNaNs = "nnnnnnnnnn";
    return Filling(std::move(name), kNaNs + (10 - doubles),
                   [=](double* out) { return WithRecord<doubles>(record, out, call); });
}

// Of three groups one is empty.
constexpr unsigned kSizes[] = {2, 0, 5};

std::vector<AllocatingCall> Rankings() {
    SignTest sign;
    Wilcoxon wilcoxon;
    sign.n = wilcoxon.n = kCount;
    MannWhitney mannWhitney;
    mannWhitney.n1 = mannWhitney.n2 = kCount;
    KruskalWallis kruskalWallis;
    MoodMedian mood;
    kruskalWallis.groups = mood.groups = 3;
    Friedman friedman;
    friedman.blocks = 2;
    friedman.treatments = 3;
    return {
        Ranking<10>("RunSignTest", sign,
                    [](SignTest* r) { return RunSignTest(r, kFirst, kConfidence, kType, kAlternative, 3); }),
        Ranking<6>(
            "RunWilcoxon", wilcoxon,
            [](Wilcoxon* r) { return RunWilcoxon(r, kFirst, false, kConfidence, kType, kAlternative, 3); }),
        Ranking<10>("RunMannWhitney", mannWhitney,
                    [](MannWhitney* r) {
                        return RunMannWhitney(r, kFirst, kSecond, false, kConfidence, kType, kAlternative);
                    }),
        Filling("RunKruskalWallis", "nnnnnnnnnnnnnn",
                [=](double* out) {
                    return WithRecord<5>(kruskalWallis, out, [out](KruskalWallis* r) {
                        return RunKruskalWallis(r, kFirst, kSizes, out + 5, out + 8, out + 11);
                    });
                }),
        Filling("RunMoodMedian", "nnnnnnnnnn",
                [=](double* out) {
                    return WithRecord<4>(mood, out, [out](MoodMedian* r) {
                        return RunMoodMedian(r, kFirst, kSizes, nullptr, nullptr, out + 4, out + 7);
                    });
                }),
        Filling("RunFriedman", "nnnnnnnnnnnnn", [=](double* out) {
            return WithRecord<7>(friedman, out,
                                 [out](Friedman* r) { return RunFriedman(r, kFirst, out + 7, out + 10); });
        })};
}

}  // namespace

std::vector<AllocatingCall> AllocatingHypothesis() {
    std::vector<AllocatingCall> calls = {Paired(),
                                         Paired(kAlternative, 0.5),
                                         Variance("+++nnnnnn"),
                                         Variance("+++nn+++n", kAlternative, 2.0),
                                         Variances(),
                                         Variances(kAlternative, 2.0),
                                         SeveralVariances()};
    for (const AllocatingCall& call : Rankings())
        calls.push_back(call);
    return calls;
}

}  // namespace zul::test
