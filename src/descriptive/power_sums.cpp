#include "descriptive/power_sums.h"

#include "descriptive/compensated_sum.h"
#include "frame/missing_value.h"

namespace zul::descriptive {

void AccumulateCenteredPowerSums(const double* x, unsigned n, double (&out)[4]) {
    if (n == 0) {
        for (double& value : out)
            value = frame::kQuietNaN;
        return;
    }
    CompensatedSum m(x[0]);
    CompensatedSum m2;
    CompensatedSum m3;
    CompensatedSum m4;
    for (unsigned i = 1; i < n; ++i) {
        const double k = i;
        const double delta = x[i] - m.Value();
        const double dn = delta / (k + 1);
        const double t1 = k * dn * delta;
        // Each increment is of the old lower sums, so the highest goes first.
        m4.Add(dn * ((k * (k - 1) + 1) * t1 * dn + 6 * m2.Value() * dn - 4 * m3.Value()));
        m3.Add(dn * ((k - 1) * t1 - 3 * m2.Value()));
        m2.Add(t1);
        m.Add(dn);
    }
    out[0] = m.Value();
    out[1] = m2.Value();
    out[2] = m3.Value();
    out[3] = m4.Value();
}

CoMoments AccumulateCoMoments(const double* x, const double* y, unsigned n) {
    CompensatedSum mx(x[0]);
    CompensatedSum my(y[0]);
    CompensatedSum sxx;
    CompensatedSum syy;
    CompensatedSum sxy;
    for (unsigned i = 1; i < n; ++i) {
        const double k = i;
        const double dx = x[i] - mx.Value();
        const double incx = dx / (k + 1);
        const double dy = y[i] - my.Value();
        const double incy = dy / (k + 1);
        mx.Add(incx);
        sxx.Add(k * dx * incx);
        my.Add(incy);
        syy.Add(k * dy * incy);
        sxy.Add(k * incy * dx);
    }
    return {sxx.Value(), syy.Value(), sxy.Value()};
}

}  // namespace zul::descriptive
