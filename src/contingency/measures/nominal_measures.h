// Measures of association of classes without an order.
#pragma once

#include "contingency/table.h"
#include "zul/contingency.h"

namespace zul::contingency {

// Writes phi, the contingency coefficient, Cramer's V, lambda, tau and the uncertainty coefficients: 0, or 30001.
int MeasureNominal(const Table& table, TableAssociation* out);

}  // namespace zul::contingency
