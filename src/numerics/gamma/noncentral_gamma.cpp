#include "numerics/gamma/noncentral_gamma.h"

#include <algorithm>
#include <cmath>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "frame/error_state.h"
#include "numerics/counts/deviance.h"
#include "numerics/gamma/gamma_tails.h"
#include "numerics/gamma/incomplete_gamma.h"
#include "numerics/limits.h"

namespace zul::numerics {

using frame::ErrorState;
using frame::operator""_routine;

namespace {

// Terms and remainders below it, relative to the sum, are left out.
constexpr double kNegligible = 1e-16;
// The sums have some 20 standard deviations of the Poisson number in terms.
constexpr double kMeanLimit = 1e10;
constexpr int kSumLimit = 8'000'000;
// The exponential of kLogUnderflow.
constexpr double kLeastTail = 2.2e-288;

// x^a exp(-x) / gamma(a + 1) as factor * exp(exponent).
struct Power {
    Power(double x, double a, double scale)
        : exponent(a < kStirlingShape ? (a > 0 ? a * elementary::Log(x) : 0) - x : -Deviance(a, x)),
          factor(scale) {}
    double exponent;
    double factor;
};

// With w_j the Poisson probability of j, and g_j = x^(a + j) exp(-x) / gamma(a + j + 1), the differences of
// the incomplete gamma pair:
//     lower tail = sum over i >= j of w_j g_i, upper tail = sum over i < j of w_j g_i,
// i being any integer above -a - 1 in the second; its terms below 0 add up to Q(a, x). Both factors run in
// units of their values at the peak of w_j g_j, which lies between the peaks of the two, and a sum over one
// index of a tail sum over the other only ever adds.
class Mixture {
public:
    Mixture(double x, double a, double mean)
        : x_(x),
          a_(a),
          mean_(mean),
          peak_(std::floor(2 * mean * x / (a + elementary::Sqrt(a * a + 4 * mean * x)))) {}

    // The tail that the sum makes in units of w_peak g_peak.
    double Scaled(double sum, const GammaShape& shape) const {
        const Power w(mean_, peak_, peak_ == 0 ? 1 : InverseGammaScale(peak_));
        const Power g(x_, a_ + peak_, peak_ == 0 ? shape.InverseGammaScale() : InverseGammaScale(a_ + peak_));
        const double tail = elementary::Exp(w.exponent + g.exponent) * (w.factor * g.factor * sum);
        return std::min(tail, 1.0);
    }

    // The sum of w_j P_j over j, downward from where the terms vanish.
    bool LowerSum(double* sum) {
        double tail = 0;
        if (!ClimbToTop() || !LowerTailAtTop(&tail)) return false;
        const double overX = 1 / x_;
        const double overMean = 1 / mean_;
        double last = 0;
        *sum = 0;
        for (double j = top_;; --j) {
            const double term = w_ * tail;
            *sum += term;
            if (j == 0) return true;
            if (RestIsNegligible(last, term, *sum)) return true;
            last = term;
            g_ *= (a_ + j) * overX;
            w_ *= j * overMean;
            tail += g_;
        }
    }

    // The sum of g_i V_i over i, V_i being the Poisson tail above i, downward from where the terms vanish.
    // Where the Poisson tail has come to its end, the rest is an incomplete gamma function.
    bool UpperSum(const GammaShape& shape, double* sum) {
        double tail = 0;
        if (!ClimbToTop() || !PoissonTailAtTop(&tail)) return false;
        const double overX = 1 / x_;
        const double overMean = 1 / mean_;
        double last = 0;
        *sum = 0;
        for (double i = top_;; --i) {
            const double term = g_ * tail;
            *sum += term;
            if (RestIsNegligible(last, term, *sum)) return true;
            last = term;
            tail += w_;
            if (i == 0 || (i < mean_ && w_ * i < kNegligible * tail * (mean_ - i)))
                return AddUpperRest(i, shape, tail, sum);
            w_ *= i * overMean;
            g_ *= (a_ + i) * overX;
        }
    }

private:
    // Terms fall ever faster, so that what follows is less than a geometric series.
    static bool RestIsNegligible(double last, double term, double sum) {
        return term * term < kNegligible * sum * (last - term);
    }

    // Sets top_ to where w_j g_j has vanished, and w_ and g_ to their values there.
    bool ClimbToTop() {
        double j = peak_;
        for (int n = 0; w_ * g_ > kNegligible; ++n) {
            if (n == kSumLimit) return false;
            j += 1;
            // Both quotients by one division.
            const double reciprocal = 1 / (j * (a_ + j));
            w_ *= mean_ * (a_ + j) * reciprocal;
            g_ *= x_ * j * reciprocal;
        }
        top_ = j;
        return true;
    }

    // P at top_: by its series if that is short.
    bool LowerTailAtTop(double* tail) const {
        constexpr double kQuick = 0.5;
        const double ratio = x_ / (a_ + top_ + 1);
        *tail = g_;
        if (g_ < kNegligible * (1 - ratio)) return true;
        if (ratio < kQuick) {
            double g = g_;
            for (double i = top_ + 1; g > kNegligible * *tail; ++i) {
                g *= x_ / (a_ + i);
                *tail += g;
            }
            return true;
        }
        GammaTails tails{};
        if (!FineGammaTails(x_, a_ + top_, &tails)) return false;
        *tail = tails.power > 0 ? tails.lower / tails.power * g_ : 0;
        return true;
    }

    // P(N > top_) of the Poisson number N.
    bool PoissonTailAtTop(double* tail) const {
        double w = w_;
        *tail = 0;
        double j = top_;
        for (int n = 0; n < kSumLimit; ++n) {
            j += 1;
            w *= mean_ / j;
            *tail += w;
            if (w < kNegligible * std::max(*tail, 1.0) * (1 - mean_ / (j + 1))) return true;
        }
        return false;
    }

    // What lies below i: the Poisson tail there, which is all that there is, times Q at a + i.
    bool AddUpperRest(double i, const GammaShape& shape, double tail, double* sum) const {
        // Where i is above 0, Q is less than the geometric series that begins like its terms.
        if (i > 0 && g_ * (a_ + i) * tail < kNegligible * *sum * (x_ - a_ - i)) return true;
        GammaTails tails{};
        if (!(i == 0 ? FineGammaTails(x_, shape, &tails) : FineGammaTails(x_, a_ + i, &tails))) return false;
        if (tails.power > 0) *sum += tails.upper / tails.power * g_ * tail;
        return true;
    }

    double x_;
    double a_;
    double mean_;
    double peak_;
    double top_ = 0;
    double w_ = 1;
    double g_ = 1;
};

bool SumTail(double x, const GammaShape& shape, double mean, bool lower, double* tail) {
    Mixture mixture(x, shape.Value(), mean);
    double sum = 0;
    if (!(lower ? mixture.LowerSum(&sum) : mixture.UpperSum(shape, &sum))) return false;
    *tail = mixture.Scaled(sum, shape);
    return true;
}

void SetTails(double smaller, double* direct, double* other) {
    if (smaller < kLeastTail) {
        smaller = 0;
        ErrorState().level = frame::LevelUnderflow;
    }
    *direct = smaller;
    *other = 1 - smaller;
}

// Both tails from the sum of one, the lower if lowerSide. Of a small shape nearly all may lie below the mean;
// then the sum is taken on the other side.
void SumTails(double x, const GammaShape& shape, double mean, bool lowerSide, double* lower, double* upper) {
    constexpr double kMostOfAll = 0.9;
    double tail = 0;
    bool converged = SumTail(x, shape, mean, lowerSide, &tail);
    if (converged && lowerSide && tail > kMostOfAll) {
        lowerSide = false;
        converged = SumTail(x, shape, mean, lowerSide, &tail);
    }
    if (!converged) {
        ErrorState().level = frame::LevelNoConvergence;
        return;
    }
    SetTails(tail, lowerSide ? lower : upper, lowerSide ? upper : lower);
}

}  // namespace

bool IsCentral(double noncentrality) {
    // A mean so small changes no digit, and its reciprocal would overflow.
    constexpr double kLeastMean = 1e-290;
    return noncentrality >= 0 && noncentrality / 2 < kLeastMean;
}

void gamma_ncdf(double x, const GammaShape& shape, double noncentrality, double* lower, double* upper) {
    // The lower sum is the quicker one, and the upper tail is its complement to the last bits while it is not
    // the smaller one by far.
    constexpr double kAboveMean = 0.5;

    const double a = shape.Value();
    ErrorState().Begin("gamma_ncdf"_routine);
    if (!(a > 0 && a <= kShapeLimit && x >= 0 && noncentrality >= 0 && noncentrality <= DBL_MAX)) {
        ErrorState().level = frame::LevelDomain;
        return;
    }
    const double mean = noncentrality / 2;
    if (IsCentral(noncentrality) || x < kTinyArgument) {
        gamma_df(x, shape, lower, upper, nullptr);
        ErrorState().routine = "gamma_ncdf"_routine;
        return;
    }
    // Each tail is below the exponential of kLogUnderflow beyond these.
    const double spread = elementary::Sqrt(-2 * kLogUnderflow) * elementary::Sqrt(a + noncentrality);
    const bool lowerSide = x < a + mean + kAboveMean;
    if (lowerSide ? x < a + mean - spread : x > a + mean + spread - kLogUnderflow) {
        SetTails(0, lowerSide ? lower : upper, lowerSide ? upper : lower);
        return;
    }
    if (mean > kMeanLimit) {
        ErrorState().level = frame::LevelNoConvergence;
        return;
    }
    SumTails(x, shape, mean, lowerSide, lower, upper);
}

void chi2_ncdf(double x, double df, double noncentrality, double* lower, double* upper) {
    gamma_ncdf(x / 2, df / 2, noncentrality, lower, upper);
    ErrorState().routine = "chi2_ncdf"_routine;
}

}  // namespace zul::numerics
