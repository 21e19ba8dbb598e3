// Correlation of scores of the rows and the columns, and the tests by it.
#pragma once

#include "contingency/table.h"
#include "zul/contingency.h"

namespace zul::contingency {

// Of the positions 1, 2, ... in the table. NaN where one row or one column has all counts.
double PearsonCorrelation(const Table& table);
// Of the midranks of the observations. *correlation as above: 0, or 30001.
int SpearmanCorrelation(const Table& table, double* correlation);

int TestLinearByLinear(const Table& table, TableTest* out);
int TestTrend(const Table& table, TableTrend* out);

}  // namespace zul::contingency
