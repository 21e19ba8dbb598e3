// All measures of association of a table.
#pragma once

#include "contingency/table.h"
#include "zul/contingency.h"

namespace zul::contingency {

int MeasureAssociation(const Table& table, TableAssociation* out);

}  // namespace zul::contingency
