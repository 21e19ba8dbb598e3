#include "distributions/counts/hypergeometric_p_value.h"

#include <cmath>

#include "distributions/counts/discrete_rules.h"
#include "distributions/counts/hypergeometric.h"
#include "frame/missing_value.h"

namespace zul::kernels {

using frame::kNA;

namespace {

class TwoSidedTest {
public:
    TwoSidedTest(int N, int M, int n)
        : support_(N, M, n),
          mass_(N, M, n),
          lower_(N, M, n, false),
          upper_(N, M, n, true),
          mode_(Mode(N, M, n)) {}

    double PValue(double x) {
        if (x == mode_) return 1;
        const bool isAbove = x > mode_;
        const double end = isAbove ? support_.first : support_.last;
        const double across = Across(x, end);
        const double near = isAbove ? upper_(x) : lower_(x);
        const double far = across == kNA ? 0 : isAbove ? lower_(across) : upper_(across);
        return near == kNA || far == kNA ? kNA : near + far;
    }

private:
    double Mode(double N, double M, double n) const {
        const double mode = std::floor((M + 1) * (n + 1) / (N + 2));
        if (mass_(mode - 1) > mass_(mode)) return mode - 1;
        return mass_(mode + 1) > mass_(mode) ? mode + 1 : mode;
    }

    // The first number from the mode on with a mass not above that of x, up to the end of the support; NA if
    // there is none.
    double Across(double x, double end) const {
        constexpr double kTolerance = 1e-12;

        if (x > mode_ ? mode_ < end : mode_ > end) return kNA;
        const double limit = mass_(x);
        return FirstOnTheWay(mode_, end, [&](double j) {
            const double excess = mass_(j) - limit;
            return excess < 0 || std::abs(excess) <= limit * kTolerance || std::abs(excess) <= kTolerance;
        });
    }

    HypergeometricSupport support_;
    HypergeometricPdfKernel mass_;
    HypergeometricCdfKernel lower_;
    HypergeometricCdfKernel upper_;
    double mode_;
};

}  // namespace

double HypergeometricPValue(int x, int N, int M, int n, Side side) {
    switch (side) {
        case Side::Lower:
            return HypergeometricCdfKernel(N, M, n, false)(x);
        case Side::Upper:
            return HypergeometricCdfKernel(N, M, n, true)(x);
        case Side::Both:
            return TwoSidedTest(N, M, n).PValue(x);
        case Side::Unknown:
            break;
    }
    return kNA;
}

}  // namespace zul::kernels
