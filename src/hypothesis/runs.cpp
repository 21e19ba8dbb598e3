#include <algorithm>
#include <cmath>
#include <cstdint>

#include "distributions/reference_distributions.h"
#include "elementary/exponential.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "numerics/gamma/gamma.h"
#include "zul/hypothesis.h"

namespace zul::v1 {

using frame::kQuietNaN;

RunsTest::RunsTest() : below(0), above(0), runs(0), expectedRuns(kQuietNaN), pValue(kQuietNaN) {}

namespace {

using numerics::LogBinomialCoefficient;

// The distribution of the number of runs in a random order of `above` and `below` values, at least one each.
class RunCount {
public:
    RunCount(double above, double below)
        : above_(above), below_(below), logOrders_(LogBinomialCoefficient(above + below, above)) {}

    double Probability(std::uint64_t runs) const {
        const std::uint64_t wholeHalf = runs / 2;
        const auto half = static_cast<double>(wholeHalf);
        if (runs % 2 == 1) return Ways(above_, half, below_, half + 1) + Ways(below_, half, above_, half + 1);
        return 2 * Ways(below_, half, above_, half);
    }
    // Above it the probability is 0: one side has at most one run more than the other.
    std::uint64_t Last() const {
        const double smaller = std::min(above_, below_);
        return static_cast<std::uint64_t>(std::min(above_ + below_, 2 * smaller + 1));
    }
    double Sum(std::uint64_t first, std::uint64_t last) const {
        double sum = 0;
        for (std::uint64_t runs = first; runs <= last; ++runs)
            sum += Probability(runs);
        return sum;
    }

private:
    // The share of orders in which so many values of either side form so many runs.
    double Ways(double count1, double runs1, double count2, double runs2) const {
        return elementary::Exp(LogBinomialCoefficient(count1 - 1, runs1 - 1) +
                               LogBinomialCoefficient(count2 - 1, runs2 - 1) - logOrders_);
    }

    double above_;
    double below_;
    double logOrders_;
};

double ExactPValue(unsigned above, unsigned below, unsigned runs) {
    if (runs < 2) return 0;  // the lower tail begins at 2
    const RunCount distribution(above, below);
    const double lower = distribution.Sum(2, runs);
    const double upper = distribution.Sum(runs, distribution.Last());
    return std::min(2 * std::min(lower, upper), 1.0);
}

double ExpectedRuns(double above, double below, double kept) {
    return 2 * above * below / kept + 1;
}

double ApproximatePValue(double above, double below, double runs, double n) {
    const double variance = (2 * above * below - n) * 2 * above * below / (n * n * (n - 1));
    if (variance <= 0) return kQuietNaN;
    const double z = (runs - ExpectedRuns(above, below, n)) / elementary::Sqrt(variance);
    return std::isfinite(z) ? reference::NormalPValue(z, Side::Both) : kQuietNaN;
}

}  // namespace

int RunRunsTest(RunsTest* record, const double* data, double K, unsigned n) {
    unsigned kept = 0;
    unsigned above = 0;
    unsigned runs = 0;
    bool lastAbove = false;
    for (unsigned i = 0; i < n; ++i) {
        if (data[i] == K) continue;
        const bool isAbove = data[i] > K;
        if (kept == 0 || isAbove != lastAbove) ++runs;
        if (isAbove) ++above;
        ++kept;
        lastAbove = isAbove;
    }
    record->below = kept - above;
    record->above = above;
    record->runs = runs;
    record->expectedRuns = kept == 0 ? kQuietNaN : ExpectedRuns(above, kept - above, kept);
    record->pValue = kept == 0 ? kQuietNaN : ExactPValue(above, kept - above, runs);
    return kSuccess;
}

int RunKelRunsTest(RunsTest* record, const double* data, double K, unsigned n) {
    unsigned above = 0;
    unsigned runs = 0;
    for (unsigned i = 0; i < n; ++i) {
        const bool isAbove = data[i] > K;
        if (i == 0 || isAbove != (data[i - 1] > K)) ++runs;
        if (isAbove) ++above;
    }
    record->below = n - above;
    record->above = above;
    record->runs = runs;
    record->expectedRuns = n == 0 ? kQuietNaN : ExpectedRuns(above, n - above, n);
    record->pValue = n == 0 ? kQuietNaN : ApproximatePValue(above, n - above, runs, n);
    return kSuccess;
}

}  // namespace zul::v1
