#include "distributions/families.h"
#include "threads/works.h"
#include "zul/descriptive.h"
#include "zul/hypothesis.h"

namespace zul::test {
namespace {

Results Distribute(unsigned seed, const Family& family) {
    Results r;
    for (const Parameters& parameters : family.parameters) {
        const Distribution distribution = family.With(parameters);
        for (unsigned i = 1; i < 4; ++i) {
            const double x = distribution.quantile((seed + i) / 10.0);
            r.insert(r.end(), {x, distribution.pdf(x), distribution.lower(x), distribution.upper(x)});
        }
    }
    return r;
}

Results Test(unsigned seed) {
    const std::vector<double> x = NormalData(seed);
    v1::KelBoxplotHelper box;
    v1::RunKelBoxplotHelper(&box, 0.95, x.data(), static_cast<unsigned>(x.size()));
    v0::OneSampleT t;
    v0::OneVariance variance;
    v0::OneProportion proportion;
    t.n = variance.n = static_cast<unsigned>(x.size());
    proportion.x = 10 + seed;
    proportion.n = 40;
    constexpr auto kType = IntervalType::TwoSided;
    constexpr auto kAlternative = AlternativeHypothesis::NotEqual;
    v0::RunOneSampleT(&t, x.data(), 0.95, kType, kAlternative, 9.9);
    v0::RunOneVariance(&variance, x.data(), 0.95, kType, kAlternative, 3.9);
    v0::RunOneProportion(&proportion, false, 0.95, kType, kAlternative, 0.3);
    v1::RunsTest runs;
    v1::RunRunsTest(&runs, x.data(), 10, static_cast<unsigned>(x.size()));
    return {box.medianLowerBound,  t.lowerBound,          t.pValue,          variance.bonettLowerBound,
            variance.bonettPValue, proportion.upperBound, proportion.pValue, runs.pValue};
}

}  // namespace

std::vector<Work> DistributionWorks() {
    std::vector<Work> works = {{Test, true}};
    for (const Family& family : Families())
        works.push_back({[&family](unsigned seed) { return Distribute(seed, family); }, true});
    return works;
}

}  // namespace zul::test
