// The table as an object behind its interface.
#pragma once

#include "contingency/table.h"
#include "zul/contingency.h"

namespace zul::contingency {

class ContingencyTable final : public IContingencyTable {
public:
    unsigned RowCount() const override;
    unsigned ColumnCount() const override;
    double Count(unsigned row, unsigned column) const override;
    double RowTotal(unsigned row) const override;
    double ColumnTotal(unsigned column) const override;
    double Total() const override;
    double Expected(unsigned row, unsigned column) const override;
    double Residual(unsigned row, unsigned column) const override;
    double StandardizedResidual(unsigned row, unsigned column) const override;
    double AdjustedResidual(unsigned row, unsigned column) const override;
    double Contribution(unsigned row, unsigned column) const override;
    int GetChiSquare(TableChiSquare* out) const override;
    int GetAssociation(TableAssociation* out) const override;
    int GetFisher(TableFisher* out) const override;
    int GetMcNemar(TableTest* out) const override;
    int GetLinearByLinear(TableTest* out) const override;
    int GetTrend(TableTrend* out) const override;
    int GetRisk(TableRisk* out, double confidence) const override;

    // To be filled before the object is handed out.
    Table& Cells() { return table_; }

private:
    bool Has(unsigned row, unsigned column) const { return row < table_.Rows() && column < table_.Columns(); }
    Table table_;
};

}  // namespace zul::contingency
