#include "numerics/counts/discrete_quantile.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "elementary/logarithm.h"
#include "numerics/rough_deviate.h"

namespace zul::numerics {
namespace {

using frame::ErrorState;

// Each evaluation doubles a step or, at every third, halves the bracket: 60 doublings and 3 * 53 others.
constexpr int kEvaluationLimit = 300;

// A whole number, both tails there, and whether it reaches the target.
struct Point {
    double k;
    DiscreteTails tails;
    bool reached;
};

// Narrows a pair of points, lo not reaching the target and hi reaching it, down to neighbours.
class Search {
public:
    Search(const DiscreteFamily& family, double target, bool upper)
        : family_(family), target_(target), upper_(upper) {}

    bool Run(double start) {
        Point point{};
        if (!At(std::clamp(std::floor(start), family_.first, family_.last), &point)) return false;
        return Bracket(point) && Narrow();
    }
    double K() const { return hi_.k; }
    // The share of the atom at K().
    double Share() const {
        if (!upper_ && hi_.k == family_.first) return 1;
        const double atom = std::abs(Tail(hi_) - Tail(lo_));
        const double nearEnd = upper_ ? Tail(hi_) : Tail(lo_);
        // No atom is left where the target 1 is the whole distribution.
        return atom > 0 ? (target_ - nearEnd) / atom : 1;
    }

private:
    double Tail(const Point& point) const { return upper_ ? point.tails.upper : point.tails.lower; }

    bool At(double k, Point* point) {
        point->k = k;
        if (k < family_.first) {
            point->tails = {0, 1};
            point->reached = false;
            return true;
        }
        if (++evaluations_ > kEvaluationLimit) {
            ErrorState().level = frame::LevelNoConvergence;
            return false;
        }
        if (!family_.Evaluate(k, &point->tails)) return false;
        point->reached = upper_ ? Tail(*point) <= target_ : Tail(*point) > target_;
        return true;
    }

    // Walks from a point by doubling steps until the target lies between the last two points.
    bool Bracket(Point point) {
        const bool down = point.reached;
        (down ? hi_ : lo_) = point;
        for (double step = 1; point.reached == down; step *= 2) {
            if (!down && point.k == family_.last) {
                ErrorState().level = frame::LevelDomain;
                return false;
            }
            const double k =
                down ? std::max(point.k - step, family_.first - 1) : std::min(point.k + step, family_.last);
            if (!At(k, &point)) return false;
            (point.reached ? hi_ : lo_) = point;
        }
        return true;
    }

    bool Narrow() {
        for (int step = 1; hi_.k - lo_.k > 1; ++step) {
            const bool bisect = step % 3 == 0 || !(Tail(lo_) > 0 && Tail(hi_) > 0);
            Point point{};
            if (!At(bisect ? std::floor((lo_.k + hi_.k) / 2) : Interpolated(), &point)) return false;
            (point.reached ? hi_ : lo_) = point;
        }
        return true;
    }

    // Where a straight line through the logarithms of the tail, nearly straight themselves, meets the target.
    double Interpolated() const {
        const double logTarget = elementary::Log(target_);
        const double atLo = std::abs(elementary::Log(Tail(lo_)) - logTarget);
        const double atHi = std::abs(elementary::Log(Tail(hi_)) - logTarget);
        const double share = atLo + atHi > 0 ? atLo / (atLo + atHi) : 0.5;
        return std::clamp(std::floor(lo_.k + share * (hi_.k - lo_.k)), lo_.k + 1, hi_.k - 1);
    }

    const DiscreteFamily& family_;
    double target_;
    bool upper_;
    int evaluations_ = 0;
    Point lo_{};
    Point hi_{};
};

void Quantile(const DiscreteFamily& family, double target, bool upper, double start,
              const frame::RoutineName& name, double* k, double* c) {
    *k = *c = -DBL_MAX;
    if (!(target >= 0 && target <= 1)) {
        ErrorState().Fail(frame::LevelDomain, name);
        return;
    }
    if (target == 0 || (target == 1 && !upper)) {
        ErrorState().Begin(name);
        *k = (target == 0) == upper ? family.last : family.first;
        *c = upper ? 0 : 1;
        return;
    }
    Search search(family, target, upper);
    if (!search.Run(start)) {
        ErrorState().routine = name;
        return;
    }
    ErrorState().Begin(name);
    *k = search.K();
    *c = search.Share();
}

}  // namespace

double CornishFisherStart(double mean, double sd, double skewness, double p, bool upper) {
    if (!(p > 0 && p < 1)) return mean;
    const double deviate = RoughNormalDeviate(std::min(p, 1 - p));
    const double z = (p > 0.5) == upper ? -deviate : deviate;
    return mean + sd * (z + skewness * (z * z - 1) / 6);
}

void DiscreteLowerQuantile(const DiscreteFamily& family, double p, double start,
                           const frame::RoutineName& name, double* k, double* c) {
    Quantile(family, p, false, start, name, k, c);
}

void DiscreteUpperQuantile(const DiscreteFamily& family, double q, double start,
                           const frame::RoutineName& name, double* k, double* c) {
    Quantile(family, q, true, start, name, k, c);
}

}  // namespace zul::numerics
