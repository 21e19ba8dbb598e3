// Sine, cosine and tangent of angles in radians, and the inverse of the tangent.
#pragma once

namespace zul::elementary {

// Largest error 0.56 ulp, all finite numbers, zul_elementary_accuracy.
double Sin(double x);
double Cos(double x);

// Largest error 0.59 ulp, all finite numbers, zul_elementary_accuracy.
double Tan(double x);

// Between -pi / 2 and pi / 2. Largest error 0.62 ulp, all numbers, zul_elementary_accuracy.
double Atan(double x);

}  // namespace zul::elementary
