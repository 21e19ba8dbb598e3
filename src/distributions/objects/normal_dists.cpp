#include "distributions/objects/normal_dists.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <new>

#include "frame/missing_value.h"

namespace zul::objects {

// As Draw() so many times. The points of a block are found before their logarithms are taken: the search has no
// branch on where a point fell, which no processor predicts. Not where a deviate may overflow, since what is drawn
// ahead of it would be lost: standard ones are below 39.
void CmDistNormal::DrawMany(double* out, std::size_t count) {
    constexpr std::size_t kBlock = 64;
    const double mean = Parameter<0>();
    const double sd = Parameter<1>();
    const bool isBounded = std::isless(std::abs(mean), 1e300) && std::isless(std::abs(sd), 1e300);
    std::size_t i = 0;
    if (hasSecond_ && count > 0) out[i++] = Draw();
    while (isBounded && count - i >= 2) {
        Point points[kBlock];
        const std::size_t pairs = std::min((count - i) / 2, kBlock);
        for (std::size_t found = 0; found < pairs;)
            found += static_cast<std::size_t>(Try(&points[found]));
        for (std::size_t pair = 0; pair < pairs; ++pair, i += 2) {
            const double f = Factor(points[pair]);
            out[i] = points[pair].a1 * f * sd + mean;
            out[i + 1] = points[pair].a2 * f * sd + mean;
        }
    }
    for (; i < count; ++i)
        out[i] = Draw();
}

namespace {

using frame::kNA;

// The number of values in a lower triangle. dimension < 2^32, so that nothing overflows.
std::size_t TriangleSize(std::size_t dimension) {
    return dimension % 2 == 0 ? dimension / 2 * (dimension + 1) : (dimension + 1) / 2 * dimension;
}

double InnerProduct(const double* x, const double* y, std::size_t count) {
    double sum = 0;
    for (std::size_t i = 0; i < count; ++i)
        sum += x[i] * y[i];
    return sum;
}

// Replaces the lower triangle of a symmetric matrix, row by row, by its Cholesky factor; false where there is
// none. Source: G. H. Golub and C. F. Van Loan, Matrix Computations, 4th ed., 2013, 4.2.5 and 4.2.8.
bool FactorInPlace(double* triangle, std::size_t dimension) {
    double* row = triangle;
    for (std::size_t i = 0; i < dimension; ++i) {
        const double* above = triangle;
        for (std::size_t j = 0; j < i; ++j) {
            if (!std::isfinite(row[j])) return false;
            const double pivot = above[j];
            row[j] = pivot == 0 ? 0 : (row[j] - InnerProduct(row, above, j)) / pivot;
            above += j + 1;
        }
        const double variance = row[i];
        const double rest = variance - InnerProduct(row, row, i);
        if (!std::isfinite(rest)) return false;
        // Each step of the elimination rounds once.
        const double rounding = 8 * static_cast<double>(i + 1) * DBL_EPSILON * std::abs(variance);
        if (rest < -rounding) return false;
        row[i] = rest <= rounding ? 0 : std::sqrt(rest);
        row += i + 1;
    }
    return true;
}

}  // namespace

CmDistMVNormal::CmDistMVNormal(std::size_t dimension, const double* mean, const double* covariance)
    : dimension_(dimension),
      mean_(mean),
      covariance_(covariance),
      factor_(new (std::nothrow) double[TriangleSize(dimension)]) {}

void CmDistMVNormal::SetGenerator(UniformSource* generator) {
    CmDist::SetGenerator(generator);
    normal_.SetGenerator(generator);
    double* row = factor_.get();
    for (std::size_t i = 0; i < dimension_; ++i)
        row = std::copy_n(covariance_ + i * dimension_, i + 1, row);
    isFactored_ = FactorInPlace(factor_.get(), dimension_);
}

void CmDistMVNormal::DrawVector(double* out) {
    if (!isFactored_) {
        std::fill_n(out, dimension_, frame::kQuietNaN);
        return;
    }
    for (std::size_t i = 0; i < dimension_; ++i)
        out[i] = normal_.DrawStandard();
    // From the last value on, since each one needs the deviates before it.
    const double* row = factor_.get() + TriangleSize(dimension_);
    for (std::size_t i = dimension_; i-- > 0;) {
        row -= i + 1;
        out[i] = mean_[i] + InnerProduct(row, out, i + 1);
    }
}

double CmDistMVNormal::Pdf(double) {
    return kNA;
}

double CmDistMVNormal::Cdf(double, bool) {
    return kNA;
}

double CmDistMVNormal::InvCdf(double) {
    return kNA;
}

double CmDistMVNormal::Draw() {
    return kNA;
}

void CmDistMVNormal::GetParameters(std::vector<double>& parameters) const {
    parameters.assign(mean_, mean_ + dimension_);
    parameters.insert(parameters.end(), covariance_, covariance_ + dimension_ * dimension_);
}

}  // namespace zul::objects
