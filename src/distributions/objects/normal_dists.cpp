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

// Replaces the upper triangle of a symmetric matrix by its Cholesky factor; false where there is none.
// Source: G. H. Golub and C. F. Van Loan, Matrix Computations, 4th ed., 2013, 4.2.5 and 4.2.8.
bool FactorInPlace(numerics::UTmatrix<double>& triangle) {
    for (std::size_t i = 0; i < triangle.Size(); ++i) {
        for (std::size_t j = 0; j < i; ++j) {
            double& element = triangle(j, i);
            if (!std::isfinite(element)) return false;
            const double pivot = triangle(j, j);
            element = pivot == 0 ? 0 : (element - numerics::ColumnProduct(triangle, i, j, j)) / pivot;
        }
        const double variance = triangle(i, i);
        const double rest = variance - numerics::ColumnProduct(triangle, i, i, i);
        if (!std::isfinite(rest)) return false;
        // Each step of the elimination rounds once.
        const double rounding = 8 * static_cast<double>(i + 1) * DBL_EPSILON * std::abs(variance);
        if (rest < -rounding) return false;
        triangle(i, i) = rest <= rounding ? 0 : std::sqrt(rest);
    }
    return true;
}

}  // namespace

CmDistMVNormal::CmDistMVNormal(std::size_t dimension, const double* mean, const double* covariance)
    : dimension_(dimension), mean_(mean), covariance_(covariance) {
    try {
        factor_.Resize(dimension);
    } catch (const std::bad_alloc&) {
        // Obtained() tells.
    }
}

// The lower triangle of the covariance matrix is the upper one of its transpose.
void CmDistMVNormal::SetGenerator(UniformSource* generator) {
    CmDist::SetGenerator(generator);
    normal_.SetGenerator(generator);
    for (std::size_t i = 0; i < dimension_; ++i)
        for (std::size_t j = 0; j <= i; ++j)
            factor_(j, i) = covariance_[i * dimension_ + j];
    isFactored_ = FactorInPlace(factor_);
}

void CmDistMVNormal::DrawVector(double* out) {
    if (!isFactored_) {
        std::fill_n(out, dimension_, frame::kQuietNaN);
        return;
    }
    for (std::size_t i = 0; i < dimension_; ++i)
        out[i] = normal_.DrawStandard();
    // From the last value on, since each one needs the deviates before it.
    for (std::size_t i = dimension_; i-- > 0;)
        out[i] = mean_[i] + numerics::ColumnProduct(factor_, i, out, i + 1);
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
