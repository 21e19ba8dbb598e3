// Fisher's exact test.
#pragma once

#include "contingency/table.h"
#include "zul/contingency.h"

namespace zul::contingency {

int TestExactly(const Table& table, TableFisher* out);

}  // namespace zul::contingency
