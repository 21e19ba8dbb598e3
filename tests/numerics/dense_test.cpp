#include "numerics/dense.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/reference_table.h"

namespace zul::numerics {
namespace {

Smatrix<double> Hilbert(std::size_t n) {
    Smatrix<double> h(n);
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = i; j < n; ++j)
            h(i, j) = 1 / static_cast<double>(i + j + 1);
    return h;
}

double Binomial(std::size_t n, std::size_t k) {
    double result = 1;
    for (std::size_t i = 1; i <= k; ++i)
        result = result * static_cast<double>(n - k + i) / static_cast<double>(i);
    return result;
}

// Its inverse has whole elements: M.-D. Choi, Tricks or treats with the Hilbert matrix, 1983.
double InverseHilbert(std::size_t n, std::size_t i, std::size_t j) {
    const double sign = (i + j) % 2 == 0 ? 1 : -1;
    const double middle = Binomial(i + j, i);
    return sign * static_cast<double>(i + j + 1) * Binomial(n + i, n - j - 1) * Binomial(n + j, n - i - 1) *
           middle * middle;
}

TEST(Dense, InvertsHilbertMatrices) {
    for (std::size_t n = 2; n <= 8; ++n) {
        UTmatrix<double> factor;
        ASSERT_TRUE(Factor(Hilbert(n), factor));
        const Smatrix<double> inverse = Inverse(factor);
        // The condition number is e^(3.5 n) / sqrt(n) or so, of which the estimate sees a part.
        const double tolerance = 1e-16 * std::exp(3.5 * static_cast<double>(n));
        double determinant = 1;
        for (std::size_t i = 0; i < n; ++i) {
            for (std::size_t j = 0; j < n; ++j)
                EXPECT_NEAR(inverse(i, j) / InverseHilbert(n, i, j), 1, tolerance);
            determinant *= factor(i, i) * factor(i, i);
        }
        EXPECT_NEAR(LogDeterminant(factor), std::log(determinant), 1e-13);
        EXPECT_LT(ReciprocalCondition(factor), 0.1);
        EXPECT_GT(ReciprocalCondition(factor), 1e-17 / tolerance);
    }
}

TEST(Dense, MultipliesWhatItFactors) {
    matrix<double> a(3, 2);
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 2; ++j)
            a(i, j) = static_cast<double>(1 + i + 2 * i * j);
    const Smatrix<double> squares = TransposeProduct(a);
    matrix<double> transpose(2, 3);
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 2; ++j)
            transpose(j, i) = a(i, j);
    const matrix<double> product = Product(transpose, a);
    UTmatrix<double> u;
    ASSERT_TRUE(Factor(squares, u));
    for (std::size_t i = 0; i < 2; ++i)
        for (std::size_t j = 0; j < 2; ++j) {
            EXPECT_EQ(product(i, j), squares(i, j));
            EXPECT_NEAR(ColumnProduct(u, i, j, (i < j ? i : j) + 1), squares(i, j), 1e-12);
        }
    double x[] = {squares(0, 0) + 2 * squares(0, 1), squares(1, 0) + 2 * squares(1, 1)};
    SolveTransposed(u, x);
    Solve(u, x);
    EXPECT_NEAR(x[0], 1, 1e-12);
    EXPECT_NEAR(x[1], 2, 1e-12);
}

TEST(Dense, RefusesWhatHasNoFactor) {
    Smatrix<double> m(2);
    UTmatrix<double> factor;
    for (const double corner : {-1.0, 0.0, 1.0, 1 + 1e-16}) {
        m(0, 0) = m(0, 1) = 1;
        m(1, 1) = corner;
        EXPECT_FALSE(Factor(m, factor)) << corner;
    }
    m(1, 1) = 1 + 1e-14;
    EXPECT_TRUE(Factor(m, factor));
    EXPECT_TRUE(Factor(Smatrix<double>(), factor));
}

TEST(Dense, AnyArgumentOfNaNIsRefused) {
    Smatrix<double> m(2);
    UTmatrix<double> factor;
    m(0, 0) = 1;
    m(1, 1) = kNaN;
    EXPECT_FALSE(Factor(m, factor));
}

}  // namespace
}  // namespace zul::numerics
