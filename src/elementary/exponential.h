// The exponential function and the same less 1.
//
// All functions of this folder give the same bits on every processor and platform, by every compiler and with every
// option. They take special arguments as the C standard says and raise its flags for them, never invalid, divide by
// zero or overflow without that reason: in trapping mode quiet NaN passes through.
#pragma once

namespace zul::elementary {

// Largest error 0.508 ulp, -745 to 709.78, zul_elementary_accuracy.
double Exp(double x);

// Largest error 0.504 ulp, -700 to 709.78, zul_elementary_accuracy.
double Expm1(double x);

// exp(x + low), low small beside the last place of x, for any x but NaN: overflows, and rounds to denormals once.
double ScaledExp(double x, double low);

}  // namespace zul::elementary
