// The odds ratio and the relative risk of a table of two rows and two columns.
#pragma once

#include "contingency/table.h"
#include "zul/contingency.h"

namespace zul::contingency {

int MeasureRisk(const Table& table, double confidence, TableRisk* out);

// Bounds of a positive ratio about its logarithm, as of hypothesis::SetBounds: 0 and infinity are the open ends. A
// confidence outside (0, 1): both NaN.
int LogarithmicBounds(double ratio, double logStandardError, double confidence, IntervalType type,
                      double* lower, double* upper);

}  // namespace zul::contingency
