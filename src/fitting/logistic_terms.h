// The standard logistic log-density at a block of values, with its derivatives.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "elementary/lanes/columns.h"
#include "elementary/logarithm.h"
#include "fitting/sample.h"

namespace zul::fitting {

struct LogisticTerms {
    double slope[kBlock];      // of the log-density, from 1 to -1
    double curvature[kBlock];  // its second derivative, below 0

    // The sum of the log-densities -|z| - 2 log(1 + exp(-|z|)). The logarithm is taken of the product, whose factors
    // are at most 2.
    double Fill(const double* z, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i)
            curvature[i] = -std::abs(z[i]);
        elementary::CurrentColumns().exp(slope, curvature, count);
        double sum = 0;
        double product = 1;
        for (std::size_t i = 0; i < count; ++i) {
            const double e = slope[i];
            const double reciprocal = 1 / (1 + e);
            sum += curvature[i];
            product *= 1 + e;
            slope[i] = std::copysign((1 - e) * reciprocal, -z[i]);
            curvature[i] = -2 * e * reciprocal * reciprocal;
        }
        return sum - 2 * elementary::Log(product);
    }
};

static_assert(kBlock < 1024, "the product of a block is below the largest double");

}  // namespace zul::fitting
