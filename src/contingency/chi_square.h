// Tests of independence by the deviations of the counts from those expected.
#pragma once

#include "contingency/table.h"
#include "zul/contingency.h"

namespace zul::contingency {

struct Deviations {
    double pearson = 0;           // sum of (count - expected)^2 / expected
    double likelihoodRatio = 0;   // 2 sum of count log(count / expected)
    double overRowTotals = 0;     // sum of (count - expected)^2 / row total
    double overColumnTotals = 0;  // sum of (count - expected)^2 / column total
};

// 0 where rows or columns have no degrees of freedom.
Deviations DeviationsOf(const Table& table);

// P(X >= x) of the chi-square distribution. NaN for NaN and without degrees of freedom; x infinite: 0.
double ChiSquareUpperTail(double x, double degreesOfFreedom);

int TestIndependence(const Table& table, TableChiSquare* out);

}  // namespace zul::contingency
