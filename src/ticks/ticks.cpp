#include "zul/ticks.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <limits>

#include "frame/compare.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "ticks/decimal_step.h"

namespace zul::deprecated {

using frame::kQuietNaN;

TickCalculationResult::TickCalculationResult()
    : low(kQuietNaN),
      high(kQuietNaN),
      step(kQuietNaN),
      firstInside(kQuietNaN),
      lastInside(kQuietNaN),
      count(0),
      countInside(0),
      decimals(0) {}

namespace {

using ticks::DecimalStep;

struct Range {
    double low;
    double high;
    double Magnitude() const { return std::max(std::abs(low), std::abs(high)); }
};

// The distance of the ends divided by n, also where the distance itself would overflow.
double Divided(Range range, double n) {
    if (range.Magnitude() < 1) return (range.high - range.low) / n;
    return (range.high / 2 - range.low / 2) / (n / 2);
}

// Ends that are as good as equal make a range about their midpoint.
Range Widened(Range range) {
    constexpr double kEqual = 1e-12;
    if (Divided(range, 1) > range.Magnitude() * kEqual) return range;
    const double middle = range.low + (range.high - range.low) / 2;
    const double margin = middle == 0 ? 1 : std::abs(middle) * 0.1;
    return {middle - margin, middle + margin};
}

// How many steps a number is from 0: whole where it is next to a whole number.
double StepsTo(double x, double step) {
    constexpr double kNear = 1e-10;
    constexpr double kLastPlaces = 4;
    const double steps = x / step;
    const double whole = frame::RoundHalfAway(steps);
    const double size = std::abs(steps);
    const double lastPlace = std::nextafter(size, std::numeric_limits<double>::infinity()) - size;
    return std::abs(steps - whole) <= kNear + kLastPlaces * lastPlace ? whole : steps;
}

DecimalStep StepFor(Range range, unsigned wanted) {
    constexpr double kLeastStep = 1e-307;
    return DecimalStep::NearestTo(std::clamp(Divided(range, wanted - 1), kLeastStep, DBL_MAX));
}

}  // namespace

int ComputeTicks(TickCalculationResult* out, double low, double high, unsigned wanted) {
    constexpr unsigned kFewest = 2;
    constexpr unsigned kMost = 100;
    *out = TickCalculationResult();
    if (wanted < kFewest || wanted > kMost) return kUnknownOption;
    if (!std::isfinite(low) || !std::isfinite(high)) return kUnusableData;
    const Range range = Widened({std::min(low, high), std::max(low, high)});
    const DecimalStep step = StepFor(range, wanted);
    const double size = step.Multiple(1);
    if (!std::isfinite(size)) return kUnusableData;
    const double fromSteps = StepsTo(range.low, size);
    const double toSteps = StepsTo(range.high, size);
    const double first = std::floor(fromSteps);
    const double last = std::ceil(toSteps);
    if (!std::isfinite(step.Multiple(first)) || !std::isfinite(step.Multiple(last))) return kUnusableData;

    out->low = step.Multiple(first);
    out->high = step.Multiple(last);
    out->step = size;
    out->count = static_cast<unsigned>(last - first) + 1;
    out->decimals = static_cast<unsigned>(std::max(0, -step.Exponent()));
    const double firstInside = std::ceil(fromSteps);
    const double lastInside = std::floor(toSteps);
    if (firstInside > lastInside) return kSuccess;
    out->firstInside = step.Multiple(firstInside);
    out->lastInside = step.Multiple(lastInside);
    out->countInside = static_cast<unsigned>(lastInside - firstInside) + 1;
    return kSuccess;
}

double TickValue(const TickCalculationResult* ticks, unsigned index) {
    if (index >= ticks->count || !(ticks->step > 0)) return kQuietNaN;
    const DecimalStep step = DecimalStep::Of(ticks->step, ticks->decimals);
    return step.Multiple(frame::RoundHalfAway(ticks->low / ticks->step) + index);
}

}  // namespace zul::deprecated
