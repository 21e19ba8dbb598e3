// The natural logarithm, of a number and of 1 plus a number.
#pragma once

namespace zul::elementary {

// Largest error 0.505 ulp, all positive numbers, zul_elementary_accuracy.
double Log(double x);

// Largest error 0.505 ulp, -1 to the largest number, zul_elementary_accuracy.
double Log1p(double x);

}  // namespace zul::elementary
