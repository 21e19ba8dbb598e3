#include "distributions/bounded/triangular.h"

#include <algorithm>
#include <cmath>

#include "distributions/either_tail.h"
#include "distributions/lanes/lanes.h"
#include "elementary/root.h"
#include "frame/errors.h"
#include "frame/guarded.h"
#include "zul/distributions.h"

namespace zul {
namespace kernels {

// Quotients are multiplied, never differences: the product of two differences may overflow or vanish.

double TriangularPdfKernel::operator()(double x) const {
    if (x >= lower && x < mode) return 2 * ((x - lower) / (mode - lower)) / (upper - lower);
    if (x == mode) return 2 / (upper - lower);
    if (x > mode && x <= upper) return 2 * ((upper - x) / (upper - mode)) / (upper - lower);
    return 0;
}

namespace {

constexpr double kZeroAndOne[] = {0, 1};

// Both pieces by one formula, since half of the branches on the mode would be mispredicted: below it, what the tail of
// the mode adds is 0.
double LowerTail(double x, double lower, double mode, double upper) {
    if (x >= upper) return 1;
    const volatile double difference =
        upper - lower;  // volatile, since it may overflow where it is not needed, too
    if (x <= lower && x <= mode) return 0;
    const double range = difference;
    const bool isAbove = x > mode;
    const double starts[] = {lower, mode};
    const double ends[] = {lower, upper};
    const double start = starts[isAbove];
    const double end = ends[isAbove];
    const double tail =
        ((x - end) / (mode - end) + kZeroAndOne[isAbove]) * ((x - start) / range) + (start - lower) / range;
    return std::min(tail, 1.0);  // a rounding may pass it
}

}  // namespace

double TriangularCdfKernel::operator()(double x) const {
    return upperTail ? LowerTail(-x, -upper, -mode, -lower) : LowerTail(x, lower, mode, upper);
}

namespace {

// sqrt(range side p). A range of 0 is a distribution at one point.
double RootOfProduct(double range, double side, double p) {
    return range == 0 ? 0 : std::abs(range) * frame::SafeSqrt(side / range * p);
}

// range - sqrt(range above (1 - p)) without the difference, above the mode: its product with the sum of both is
// range (below + above p).
double DistanceFromLower(double range, double below, double above, double p) {
    const double share = above / range;
    return range * ((below / range + share * p) / (1 + elementary::Sqrt(share * (1 - p))));
}

}  // namespace

double TriangularInvCdfKernel::operator()(double p) const {
    if (p == 1) return upper;
    const double range = upper - lower;
    const double belowMode = lower < mode ? (mode - lower) / range : 0;
    if (belowMode < 0) frame::ThrowSqrtOfNegative();
    if (p < belowMode) return lower + RootOfProduct(range, mode - lower, p);
    const double rest = RootOfProduct(range, upper - mode, 1 - p);
    const double x = upper - rest;
    if (std::abs(x) >= kCancelled * std::abs(upper)) [[likely]]
        return x;
    const bool isFromLower = mode >= lower && rest > range / 2;
    return isFromLower ? lower + DistanceFromLower(range, mode - lower, upper - mode, p) : x;
}

double TriangularInvCdfKernel::AtUpperTail(double q) const {
    // The parameters in another order are the lower tail's to refuse.
    if (!(lower <= mode && mode <= upper)) return (*this)(1 - q);
    // Of 1 - q less than a rounding is missing: below the mode that is the mode, to a rounding of the range.
    if (q < kLostInComplement && q >= (upper - mode) / (upper - lower)) return mode;
    return 0 - TriangularInvCdfKernel{-upper, -mode, -lower}(q);
}

}  // namespace kernels

double TriangularPdf(double x, double lower, double mode, double upper) {
    return frame::Framed<kernels::TriangularPdfKernel>(x, lower, mode, upper);
}

double TriangularCdf(double x, double lower, double mode, double upper, bool upperTail) {
    return frame::Framed<kernels::TriangularCdfKernel>(x, lower, mode, upper, upperTail);
}

double TriangularInvCdf(double p, double lower, double mode, double upper) {
    return frame::Framed<kernels::TriangularInvCdfKernel>(p, lower, mode, upper);
}

double TriangularInvCdf(double p, double lower, double mode, double upper, bool upperTail) {
    return frame::Framed<kernels::EitherTail<kernels::TriangularInvCdfKernel>>(p, lower, mode, upper,
                                                                               upperTail);
}

void TriangularPdf(double* out, const double* in, std::size_t count, double lower, double mode,
                   double upper) {
    frame::FramedEach<kernels::TriangularPdfKernel>(out, in, count, lower, mode, upper);
}

void TriangularCdf(double* out, const double* in, std::size_t count, double lower, double mode, double upper,
                   bool upperTail) {
    frame::FramedEach<kernels::TriangularCdfKernel>(out, in, count, lower, mode, upper, upperTail);
}

void TriangularInvCdf(double* out, const double* in, std::size_t count, double lower, double mode,
                      double upper) {
    frame::FramedEach<kernels::TriangularInvCdfKernel>(out, in, count, lower, mode, upper);
}

void TriangularInvCdf(double* out, const double* in, std::size_t count, double lower, double mode,
                      double upper, bool upperTail) {
    frame::FramedEach<kernels::EitherTail<kernels::TriangularInvCdfKernel>>(out, in, count, lower, mode,
                                                                            upper, upperTail);
}

}  // namespace zul
