#include <cmath>

#include "elementary/root.h"
#include "frame/compare.h"
#include "frame/missing_value.h"
#include "hypothesis/intervals.h"
#include "zul/hypothesis.h"

namespace zul::v0 {

double GetKelCorrelationPValue(double r, unsigned n) {
    if (n <= 2) return frame::kQuietNaN;
    // Rounding may put the correlation of collinear data above 1.
    const double size = std::abs(r);
    if (size > 1 && std::isfinite(r) && frame::CompareTolerant(size, 1, 0) == 0) r = std::copysign(1.0, r);
    // The square of a huge r would overflow and leave t = -0.
    if (!(std::abs(r) <= 1)) return frame::kQuietNaN;
    const double df = n - 2.0;
    const double t = r * elementary::Sqrt(df / (1 - r * r));
    return hypothesis::TTestPValue(t, df, AlternativeHypothesis::NotEqual);
}

}  // namespace zul::v0
