#pragma once

namespace zul::test {

// The quotients of four numbers by their divisors, as lanes with fused multiply-adds form them. For processors that have
// those.
void QuotientsOfFour(double* out, const double* n, const double* d);
// Those by one whole number.
void QuotientsByWhole(double* out, const double* n, double d);

}  // namespace zul::test
