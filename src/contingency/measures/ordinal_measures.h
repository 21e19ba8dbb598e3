// Measures of association by pairs of observations.
#pragma once

#include "contingency/table.h"
#include "zul/contingency.h"

namespace zul::contingency {

// Counts the pairs and writes gamma, tau-b, tau-c and Somers' D, with their standard errors: 0, or 30001.
int MeasureByPairs(const Table& table, TableAssociation* out);

}  // namespace zul::contingency
