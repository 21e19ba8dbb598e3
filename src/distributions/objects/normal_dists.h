// Objects of the normal family, of one dimension and of several.
#pragma once

#include <cstddef>
#include <vector>

#include "distributions/normal/normal.h"
#include "distributions/objects/kernel_dist.h"
#include "distributions/objects/rejection.h"
#include "elementary/logarithm.h"
#include "elementary/root.h"
#include "numerics/dense.h"

namespace zul::objects {

// Deviates by the polar method: two uniforms for each try, a pair of deviates for each success, the second of
// which is kept for the next draw and dies with the object. A try succeeds with the probability pi / 4.
// Source: G. Marsaglia and T. A. Bray, A convenient method for generating normal variables, 1964.
class CmDistNormal final
    : public KernelDist<kernels::NormalPdfKernel, kernels::NormalCdfKernel, kernels::NormalInvCdfKernel> {
public:
    using KernelDist::KernelDist;
    bool IsValid() const override { return IsAbove(Parameter<1>(), 0); }
    double Draw() override { return DrawStandard() * Parameter<1>() + Parameter<0>(); }
    double DrawStandard() {
        if (hasSecond_) {
            hasSecond_ = false;
            return second_;
        }
        const Point point = NextPoint();
        const double f = Factor(point.s);
        KeepSecond(point.a2 * f);
        return point.a1 * f;
    }
    void DrawMany(double* out, std::size_t count);
    void Modes(std::vector<double>& modes) override { modes.assign({Parameter<0>()}); }

    // For those who draw many standard deviates: the points of the pairs, whose deviates are a1 and a2 times the factor
    // of s, which may be found later for many at a time.
    //
    // A point of the square around the origin, and the square of its distance from there.
    struct Point {
        double a1;
        double a2;
        double s;
    };
    Point NextPoint() {
        Point point{};
        while (!Try(&point)) {
        }
        return point;
    }
    static double Factor(double s) { return elementary::Sqrt(-2 * elementary::Log(s) / s); }
    static void Factors(double* factors, const double* s, std::size_t count);
    // Whether a second deviate waits for the next draw, and what it is to be.
    bool HasSecond() const { return hasSecond_; }
    void KeepSecond(double second) {
        second_ = second;
        hasSecond_ = true;
    }

private:
    // Whether the point lies in the unit circle. log(0) has no value.
    bool Try(Point* point) {
        const double a1 = 2 * NextUniform() - 1;
        const double a2 = 2 * NextUniform() - 1;
        const double s = a1 * a1 + a2 * a2;
        *point = {a1, a2, s};
        return BothOf(s <= 1, s != 0);
    }
    bool hasSecond_ = false;
    double second_ = 0;
};

// The multivariate normal distribution: mean + L z, where L is the lower Cholesky factor of the covariance
// matrix and z independent standard normal deviates, which are drawn in the order of their indices by one
// CmDistNormal. Of the matrix, which is full and row by row, the lower triangle is read.
//
// A pivot that is zero within rounding gives a zero column, so that a covariance matrix of lower rank does.
// One that is clearly negative, like a value that is not finite, leaves no factor: every deviate is then NaN
// and no uniform is used. Functions of one variable do not exist: NA.
class CmDistMVNormal final : public CmDist {
public:
    // The arrays, dimension and dimension x dimension values, have to outlive the object.
    CmDistMVNormal(std::size_t dimension, const double* mean, const double* covariance);
    // False: memory could not be obtained, and there is nothing to draw from.
    bool Obtained() const { return factor_.Size() == dimension_; }

    // Factors the covariance matrix.
    void SetGenerator(UniformSource* generator) override;
    double Pdf(double x) override;
    double Cdf(double x, bool upper) override;
    double InvCdf(double p) override;
    double Draw() override;
    // The mean, then the covariance matrix row by row.
    void GetParameters(std::vector<double>& parameters) const override;

    // out: dimension values.
    void DrawVector(double* out);

private:
    std::size_t dimension_;
    const double* mean_;
    const double* covariance_;
    numerics::UTmatrix<double> factor_;  // L with rows and columns in reverse order
    bool isFactored_ = false;
    CmDistNormal normal_{0.0, 1.0};
};

}  // namespace zul::objects
