// Tests of symmetry.
#pragma once

#include "contingency/table.h"
#include "zul/contingency.h"

namespace zul::contingency {

int TestSymmetry(const Table& table, TableTest* out);

}  // namespace zul::contingency
