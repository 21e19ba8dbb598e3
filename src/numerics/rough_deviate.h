#pragma once

#include "elementary/logarithm.h"
#include "elementary/root.h"

namespace zul::numerics {

// The standard normal deviate z >= 0 with the upper tail q, 0 < q <= 0.5, to within 3e-4: where searches
// start. Source: A. R. DiDonato and A. H. Morris, Computation of the incomplete gamma function ratios and
// their inverse, 1986, equation 32.
inline double RoughNormalDeviate(double q) {
    const double t = elementary::Sqrt(-2 * elementary::Log(q));
    return t - (((0.213623493715853 * t + 4.28342155967104) * t + 11.6616720288968) * t + 3.31125922108741) /
                   ((((0.3611708101884203e-1 * t + 1.27364489782223) * t + 6.40691597760039) * t +
                     6.61053765625462) *
                        t +
                    1);
}

}  // namespace zul::numerics
