#include "fitting/threshold.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "fitting/record.h"
#include "frame/missing_value.h"
#include "frame/status.h"

// The likelihood has no bound as the threshold meets the smallest value, so that what is sought is the highest of the
// profile's maxima inside: B. M. Hill, The three-parameter lognormal distribution and Bayesian analysis of a
// point-source epidemic, 1963; R. L. Smith, Maximum likelihood estimation in a class of nonregular cases, 1985.
namespace zul::fitting {

using v2::DistributionFit;

namespace {

// A logarithm of the margin, the profile there and where it is taken: two variables and that logarithm.
struct ProfilePoint {
    std::array<double, 3> variables;
    double logLikelihood;
    double Place() const { return variables[2]; }
};

ProfilePoint ProfileAt(ThresholdModel* model, double logMargin) {
    ProfilePoint point{};
    point.variables[2] = logMargin;
    point.logLikelihood = model->Profile(elementary::Exp(logMargin), point.variables.data());
    return point;
}

// A maximum between two places of a smaller likelihood.
struct Bracket {
    double low;
    ProfilePoint best;
    double high;
};

// The highest of the margins range * 10^(i/3) that beat both neighbours; false where none does.
bool FindBracket(ThresholdModel* model, double range, Bracket* bracket) {
    constexpr int kFirst = -12;
    constexpr int kLast = 8;
    constexpr double kStep = 0.76752836433134856;  // log(10) / 3
    const double logRange = elementary::Log(range);
    ProfilePoint before{};
    ProfilePoint at = ProfileAt(model, logRange + kFirst * kStep);
    ProfilePoint after = ProfileAt(model, logRange + (kFirst + 1) * kStep);
    bool found = false;
    for (int i = kFirst + 1; i < kLast; ++i) {
        before = at;
        at = after;
        after = ProfileAt(model, logRange + (i + 1) * kStep);
        const bool isMaximum =
            at.logLikelihood > before.logLikelihood && at.logLikelihood > after.logLikelihood;
        if (!isMaximum || (found && !(at.logLikelihood > bracket->best.logLikelihood))) continue;
        *bracket = {before.Place(), at, after.Place()};
        found = true;
    }
    return found;
}

// Golden section. Source: J. Kiefer, Sequential minimax search for a maximum, 1953.
void Narrow(ThresholdModel* model, Bracket* bracket) {
    constexpr double kGolden = 0.38196601125010515;
    const double below = bracket->best.Place() - bracket->low;
    const double above = bracket->high - bracket->best.Place();
    const bool isBelow = below > above;
    const double place = bracket->best.Place() + (isBelow ? -kGolden * below : kGolden * above);
    const ProfilePoint point = ProfileAt(model, place);
    if (point.logLikelihood > bracket->best.logLikelihood) {
        (isBelow ? bracket->high : bracket->low) = bracket->best.Place();
        bracket->best = point;
    } else {
        (isBelow ? bracket->low : bracket->high) = place;
    }
}

// Newton's steps in all three variables inside the bracket, counted on; false where one leaves it or the curvature
// is not that of a maximum.
bool Climb(ThresholdModel* model, const Bracket& bracket, unsigned cap, ProfilePoint* at,
           unsigned* iterations) {
    constexpr double kLastStep = 1e-8;  // in standard errors
    numerics::Smatrix<double> curvature(3);
    numerics::UTmatrix<double> factor;
    while (*iterations < cap) {
        ++*iterations;
        std::array<double, 3> gradient{};
        std::array<double, 3> units{};
        at->logLikelihood = model->Derivatives(at->variables.data(), gradient.data(), &curvature);
        if (!numerics::Factor(Standardised(curvature, units.data()), factor)) return false;
        std::array<double, 3> step{};
        for (std::size_t i = 0; i < step.size(); ++i)
            step[i] = gradient[i] * units[i];
        numerics::SolveTransposed(factor, step.data());
        numerics::Solve(factor, step.data());
        double squared = 0;
        for (std::size_t i = 0; i < step.size(); ++i) {
            at->variables[i] += step[i] * units[i];
            squared += step[i] * units[i] * gradient[i];
        }
        if (!(at->Place() > bracket.low && at->Place() < bracket.high)) return false;
        if (squared <= kLastStep * kLastStep) return true;
    }
    return false;
}

// The maximum in the bracket: where Newton's steps fail, from a narrower one.
bool FindMaximum(ThresholdModel* model, Bracket* bracket, unsigned cap, unsigned* iterations) {
    constexpr double kFirstWidth = 1e-2;
    constexpr double kLastWidth = 1e-9;
    constexpr unsigned kClimb = 12;
    for (double width = kFirstWidth;; width /= 16) {
        for (; bracket->high - bracket->low > width; ++*iterations) {
            if (*iterations >= cap) return false;
            Narrow(model, bracket);
        }
        ProfilePoint at = bracket->best;
        const bool climbed = Climb(model, *bracket, std::min(cap, *iterations + kClimb), &at, iterations);
        if (climbed) bracket->best = at;
        if (climbed || width < kLastWidth) return climbed;
    }
}

int StoreMaximum(DistributionFit* record, const Column& column, ThresholdModel* model,
                 const double* variables) {
    double unused[3] = {};
    numerics::Smatrix<double> curvature(3);
    const double n = record->n;
    const double margin = elementary::Exp(variables[2]);
    record->logLikelihood =
        model->Derivatives(variables, unused, &curvature) - n * elementary::Log(column.unit);
    numerics::matrix<double> derivatives(3, 3);
    model->Store(variables, column.unit, record, &derivatives);
    record->parameter[2] = column.origin - column.unit * margin;
    derivatives(2, 2) = -column.unit * margin;
    return StoreErrors(record, curvature, derivatives);
}

}  // namespace

int ReadThresholdSample(DistributionFit* record, const double* data, Sample* sample) {
    Clear(record, 3);
    if (!ReadSample(data, record->n, 4, Support::Line, sample)) return kUnusableData;
    return sample->IsConstant() ? kNoVariation : kSuccess;
}

int FitThreshold(DistributionFit* record, const Column& column, ThresholdModel* model, unsigned cap) {
    Bracket bracket{};
    const double range = *std::max_element(column.values.begin(), column.values.end());
    if (!FindBracket(model, range, &bracket)) return kNoInteriorMaximum;
    const bool found = FindMaximum(model, &bracket, cap, &record->iterations);
    const int status = StoreMaximum(record, column, model, bracket.best.variables.data());
    return found && model->Converged() ? status : std::max(status, kCapReached);
}

}  // namespace zul::fitting
