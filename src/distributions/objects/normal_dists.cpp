#include "distributions/objects/normal_dists.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <new>

#include "elementary/lanes/columns.h"
#include "elementary/root.h"
#include "frame/missing_value.h"

namespace zul::objects {

void CmDistNormal::Factors(double* factors, const double* s, std::size_t count) {
    elementary::CurrentColumns().log(factors, s, count);
    for (std::size_t i = 0; i < count; ++i)
        factors[i] = elementary::Sqrt(-2 * factors[i] / s[i]);
}

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
        double s[kBlock];
        double factors[kBlock];
        const std::size_t pairs = std::min((count - i) / 2, kBlock);
        for (std::size_t found = 0; found < pairs;)
            found += static_cast<std::size_t>(Try(&points[found]));
        for (std::size_t pair = 0; pair < pairs; ++pair)
            s[pair] = points[pair].s;
        Factors(factors, s, pairs);
        for (std::size_t pair = 0; pair < pairs; ++pair, i += 2) {
            out[i] = points[pair].a1 * factors[pair] * sd + mean;
            out[i + 1] = points[pair].a2 * factors[pair] * sd + mean;
        }
    }
    for (; i < count; ++i)
        out[i] = Draw();
}

namespace {

using frame::kNA;

// The sum of x[-k] y[-k], and of x[-k] y[k], for k < count, in this order.
double ProductBackwards(const double* x, const double* y, std::size_t count) {
    double sum = 0;
    for (std::size_t k = 0; k < count; ++k)
        sum += *(x - k) * *(y - k);
    return sum;
}

double ProductOfBoth(const double* x, const double* y, std::size_t count) {
    double sum = 0;
    for (std::size_t k = 0; k < count; ++k)
        sum += *(x - k) * y[k];
    return sum;
}

// Replaces the upper triangle of a symmetric matrix, whose variables stand in reverse order, by its factor u with
// u u'; false where there is none. In the order of the variables that is Cholesky's. Source: G. H. Golub and C. F. Van
// Loan, Matrix Computations, 4th ed., 2013, 4.2.5 and 4.2.8.
bool FactorInPlace(numerics::UTmatrix<double>& u) {
    const std::size_t last = u.Size() - 1;
    for (std::size_t i = 0; i < u.Size(); ++i) {
        double* const row = &u(last - i, last);
        for (std::size_t j = 0; j < i; ++j) {
            double& element = *(row - j);
            if (!std::isfinite(element)) return false;
            const double* const above = &u(last - j, last);
            const double pivot = *(above - j);
            element = pivot == 0 ? 0 : (element - ProductBackwards(row, above, j)) / pivot;
        }
        double& diagonal = *(row - i);
        const double variance = diagonal;
        const double rest = variance - ProductBackwards(row, row, i);
        if (!std::isfinite(rest)) return false;
        // Each step of the elimination rounds once.
        const double rounding = 8 * static_cast<double>(i + 1) * DBL_EPSILON * std::abs(variance);
        if (rest < -rounding) return false;
        diagonal = rest <= rounding ? 0 : elementary::Sqrt(rest);
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

void CmDistMVNormal::SetGenerator(UniformSource* generator) {
    CmDist::SetGenerator(generator);
    normal_.SetGenerator(generator);
    for (std::size_t i = 0; i < dimension_; ++i)
        for (std::size_t j = 0; j <= i; ++j)
            factor_(dimension_ - 1 - i, dimension_ - 1 - j) = covariance_[i * dimension_ + j];
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
        out[i] = mean_[i] + ProductOfBoth(&factor_(dimension_ - 1 - i, dimension_ - 1), out, i + 1);
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
