// Where the incomplete beta pair changes its branch or its count of terms.
#pragma once

#include <cmath>
#include <vector>

#include "frame/error_state.h"
#include "numerics/beta/incomplete_beta.h"

namespace zul::numerics {

struct Shapes {
    double a;
    double b;
};

// Every branch on both sides of 0.5: whole and other shapes, small ones, those whose density takes the deviances,
// series that end by themselves or are too long for the lanes.
inline constexpr Shapes kShapes[] = {{0.5, 0.5},   {2, 5},         {30, 4},      {400, 600},    {2.5, 3.7},
                                     {12.3, 40.6}, {0.3, 7},       {0.02, 0.7},  {300.5, 1.5},  {1, 3},
                                     {0.1, 80},    {499.5, 500.5}, {700, 700.5}, {2.5, 5000.5}, {1e-3, 1e-3},
                                     {4e4, 5.5e4}, {0.99, 1.01},   {1e5, 1e-3}};

// Where the count of terms or the branch of the scalar routine is about to change, x is between the two.
inline std::vector<double> SwitchPoints(const BetaShapes& shapes) {
    std::vector<double> points;
    struct Path {
        int method;
        int count;
        bool operator==(const Path&) const = default;
    };
    const auto pathAt = [&](double x) {
        double lower = 0;
        double upper = 0;
        beta_df(x, shapes, &lower, &upper, nullptr);
        return Path{frame::ErrorState().method, frame::ErrorState().count};
    };
    constexpr int kSteps = 250;
    for (int k = 1; k < kSteps; ++k) {
        double low = static_cast<double>(k) / kSteps;
        double high = static_cast<double>(k + 1) / kSteps;
        const Path path = pathAt(low);
        if (pathAt(high) == path) continue;
        while (std::nextafter(low, high) < high) {
            const double middle = low + (high - low) / 2;
            (pathAt(middle) == path ? low : high) = middle;
        }
        points.insert(points.end(), {low, high, low * (1 - 1e-15), high * (1 + 1e-13)});
    }
    return points;
}

}  // namespace zul::numerics
