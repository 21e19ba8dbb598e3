// The exponential function and the same less 1.
//
// All functions of this folder give the same bits on every processor and platform, by every compiler and with every
// option. They take special arguments as the C standard says and raise its flags for them, never invalid, divide by
// zero or overflow without that reason: in trapping mode quiet NaN passes through.
#pragma once

namespace zul::elementary {

// Largest error 0.51 ulp, -745 to 709.78, zul_elementary_accuracy.
double Exp(double x);

// Largest error 0.51 ulp, all results, zul_elementary_accuracy.
double Expm1(double x);

// exp(x + low) for any x but NaN and |low| of at most 5e-5: overflows, and rounds to denormals once.
double ScaledExp(double x, double low);

}  // namespace zul::elementary
