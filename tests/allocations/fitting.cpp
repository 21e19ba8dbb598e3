#include "zul/fitting.h"

#include "allocations/calls.h"
#include "fitting/fits.h"

namespace zul::test {
namespace {

constexpr unsigned kCount = 7;
constexpr double kData[kCount] = {1.2, 1.9, 2.5, 3.1, 4.4, 5, 9.75};
constexpr unsigned kPercents = 2;
constexpr double kPercent[kPercents] = {0.1, 0.5};

}  // namespace

// A fit whose likelihood has no maximum inside has had all its memory. The gamma and the exponential fit need none.
std::vector<AllocatingCall> AllocatingFits() {
    std::vector<AllocatingCall> calls;
    for (const FittedFamily& family : FittedFamilies()) {
        if (family.name != "Gamma" && family.name != "Exponential")
            calls.push_back(Filling("Fit" + family.name, "nnnnnnnnnn", [fit = family.fit](double* out) {
                v2::DistributionFit record;
                record.n = kCount;
                const int status =
                    WithRecord<10>(record, out, [=](v2::DistributionFit* r) { return fit(r, kData); });
                return status == 30020 ? 0 : status;
            }));
        if (family.plot == nullptr) continue;
        calls.push_back(Filling(family.name + " plot", "nnnnnnnnnnnnnnnn", [plot = family.plot](double* out) {
            v2::ProbabilityPlot record;
            record.n = kCount;
            record.percents = kPercents;
            return WithRecord<5>(record, out, [=](v2::ProbabilityPlot* r) {
                return plot(r, kData, v2::PlottingPosition::MedianRank, 0.95, out + 5, nullptr, nullptr,
                            kPercent, out + 5 + kCount, nullptr, out + 5 + kCount + kPercents);
            });
        }));
    }
    return calls;
}

}  // namespace zul::test
