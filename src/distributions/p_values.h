// The p-values of the continuous statistics, without the call frame. NA for "no result"; an unknown side: 0.
#pragma once

#include "frame/side.h"

namespace zul::kernels {

double ChiSqPValue(double x, double df, Side side);
double FPValue(double x, double df1, double df2, Side side);
double TPValue(double t, double df, Side side);

}  // namespace zul::kernels
