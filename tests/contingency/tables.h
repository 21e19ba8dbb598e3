#pragma once

#include <memory>
#include <vector>

#include "zul/contingency.h"

namespace zul::test {

struct DeleteTable {
    void operator()(IContingencyTable* table) const { DeleteIContingencyTable(&table); }
};
using TablePtr = std::unique_ptr<IContingencyTable, DeleteTable>;

// Null if the status is not 0.
inline TablePtr MakeTable(const std::vector<double>& counts, unsigned rows, unsigned columns, int* status) {
    return TablePtr(MakeIContingencyTable(status, counts.data(), rows, columns));
}

}  // namespace zul::test
