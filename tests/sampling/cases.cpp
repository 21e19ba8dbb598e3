#include <cmath>
#include <limits>

#include "sampling/slots.h"

namespace zul::test {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
const double kEuler = 0.57721566490153286;
const double kPi = 3.14159265358979324;

}  // namespace

const std::vector<Case>& Cases() {
    static const std::vector<Case> cases = {
        {"Beta", {2, 3}, 0.4, 0.04},
        {"Beta", {20, 1.5}, 20 / 21.5, 30 / (21.5 * 21.5 * 22.5)},
        {"Beta", {7, 7}, 0.5, 1 / 60.0},
        {"Beta", {0.5, 0.7}, 0.5 / 1.2, 0.35 / (1.44 * 2.2)},
        {"Beta", {0.6, 4}, 0.6 / 4.6, 2.4 / (4.6 * 4.6 * 5.6)},
        {"Beta", {4, 0.6}, 4 / 4.6, 2.4 / (4.6 * 4.6 * 5.6)},
        {"Beta", {1, 1}, 0.5, 1 / 12.0},
        {"Beta", {0.02, 3}, 0.02 / 3.02, 0.06 / (3.02 * 3.02 * 4.02)},
        {"Cauchy", {1, 2}, kNaN, kNaN},
        {"ChiSquare", {1}, 1, 2},
        {"ChiSquare", {2}, 2, 4},
        {"ChiSquare", {11}, 11, 22},
        {"Exponential", {2, -1}, 1, 4},
        {"F", {3, 12}, 1.2, kNaN},
        {"F", {1, 30}, 30 / 28.0, kNaN},
        {"Gamma", {0.2, 3, 1}, 1.6, 1.8},
        {"Gamma", {0.9, 1, 0}, 0.9, 0.9},
        {"Gamma", {1, 2, 0}, 2, 4},
        {"Gamma", {1 + 1e-9, 2, 0}, 2, 4},
        {"Gamma", {1.4, 1, 0}, 1.4, 1.4},
        {"Gamma", {3.999, 1, 0}, 3.999, 3.999},
        {"Gamma", {4, 0.5, -2}, 0, 1},
        {"Gamma", {60, 1, 0}, 60, 60},
        {"Lambda", {0.3, 1, 2}, 1, kNaN},
        {"Lambda", {-0.2, 0, 1}, 0, kNaN},
        {"Laplace", {1, 2}, 1, 8},
        {"LargestExtremeValue", {1, 2}, 1 + 2 * kEuler, 4 * kPi * kPi / 6},
        {"Logistic", {1, 2}, 1, 4 * kPi * kPi / 3},
        {"LogLogistic", {0, 0.1, 1}, 1 + 0.1 * kPi / std::sin(0.1 * kPi), kNaN},
        {"Lognormal", {0, 0.5, 1}, 1 + std::exp(0.125), kNaN},
        {"Normal", {-3, 2}, -3, 4},
        {"SmallestExtremeValue", {1, 2}, 1 - 2 * kEuler, 4 * kPi * kPi / 6},
        {"T", {10, 0}, 0, 1.25},
        {"T", {1.5, 0}, 0, kNaN},
        {"T", {9, 1}, kNaN, kNaN},
        {"Triangular", {0, 1, 4}, 5 / 3.0, 13 / 18.0},
        {"Triangular", {0, 4, 4}, 8 / 3.0, 16 / 18.0},
        {"Uniform", {-2, 4}, 1, 3},
        {"Weibull", {2, 1, 0}, std::sqrt(kPi) / 2, 1 - kPi / 4},
        {"IntegerUniform", {-2, 4}, 1, 4},
        {"Bernoulli", {0.3}, 0.3, 0.21},
        {"Binomial", {20, 0.3}, 6, 4.2},
        {"Binomial", {300, 0.9}, 270, 27},
        {"Hypergeometric", {50, 20, 10}, 4, 10 * 0.4 * 0.6 * 40 / 49},
        {"Hypergeometric", {12, 10, 9}, 7.5, 9 * (10 / 12.0) * (2 / 12.0) * 3 / 11},
        {"NegBinomial", {0.3, 4}, 4 / 0.3, 4 * 0.7 / 0.09},
        {"NegBinomial", {0.6, 1}, 1 / 0.6, 0.4 / 0.36},
        {"NegBinomialTrials", {1, 0.3, 4}, 4 * 0.7 / 0.3, 4 * 0.7 / 0.09},
        {"NegBinomialTrials", {0, 0.8, 2}, 2.5, 2 * 0.2 / 0.64},
        {"Poisson", {0.7}, 0.7, 0.7},
        {"Poisson", {40}, 40, 40},
        {"Discrete", {1, 2, 3, 4, 5, 6, 9, 1, 4, 0, 2, 7}, 75.0 / 23, kNaN},
        {"Discrete", {7, 0.1}, 7, 0},
    };
    return cases;
}

}  // namespace zul::test
