// Agreement of two classifications by the same classes.
#pragma once

#include "contingency/table.h"

namespace zul::contingency {

// Cohen's kappa and its standard error; NaN unless the table is square.
void MeasureAgreement(const Table& table, double* kappa, double* standardError);

}  // namespace zul::contingency
