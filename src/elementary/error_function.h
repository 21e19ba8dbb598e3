// The complementary error function.
#pragma once

namespace zul::elementary {

// 2 / sqrt(pi) times the integral of exp(-t^2) from x on. Largest error 0.65 ulp, -6 to 26.5, and 0.76 of the denormal
// results up to 27.3, zul_elementary_accuracy.
double Erfc(double x);

}  // namespace zul::elementary
