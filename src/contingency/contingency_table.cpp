#include "contingency/contingency_table.h"

#include <new>

#include "contingency/chi_square.h"
#include "contingency/fisher.h"
#include "contingency/mcnemar.h"
#include "contingency/measures/association.h"
#include "contingency/risk.h"
#include "contingency/scores.h"
#include "elementary/root.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul {

using frame::kQuietNaN;

IContingencyTable::~IContingencyTable() = default;

namespace contingency {

unsigned ContingencyTable::RowCount() const {
    return static_cast<unsigned>(table_.Rows());
}

unsigned ContingencyTable::ColumnCount() const {
    return static_cast<unsigned>(table_.Columns());
}

double ContingencyTable::Count(unsigned row, unsigned column) const {
    return Has(row, column) ? table_.Count(row, column) : kQuietNaN;
}

double ContingencyTable::RowTotal(unsigned row) const {
    return row < table_.Rows() ? table_.RowTotal(row) : kQuietNaN;
}

double ContingencyTable::ColumnTotal(unsigned column) const {
    return column < table_.Columns() ? table_.ColumnTotal(column) : kQuietNaN;
}

double ContingencyTable::Total() const {
    return table_.Total();
}

double ContingencyTable::Expected(unsigned row, unsigned column) const {
    return Has(row, column) ? table_.Expected(row, column) : kQuietNaN;
}

double ContingencyTable::Residual(unsigned row, unsigned column) const {
    return Has(row, column) ? table_.Residual(row, column) : kQuietNaN;
}

double ContingencyTable::StandardizedResidual(unsigned row, unsigned column) const {
    if (!Has(row, column)) return kQuietNaN;
    return Quotient(table_.Residual(row, column), elementary::Sqrt(table_.Expected(row, column)));
}

// Source: S. J. Haberman, The analysis of residuals in cross-classified tables, 1973.
double ContingencyTable::AdjustedResidual(unsigned row, unsigned column) const {
    if (!Has(row, column)) return kQuietNaN;
    const double n = table_.Total();
    const double otherRows = Quotient(n - table_.RowTotal(row), n);
    const double otherColumns = Quotient(n - table_.ColumnTotal(column), n);
    return Quotient(table_.Residual(row, column),
                    elementary::Sqrt(table_.Expected(row, column) * otherRows * otherColumns));
}

double ContingencyTable::Contribution(unsigned row, unsigned column) const {
    const double residual = StandardizedResidual(row, column);
    return residual * residual;
}

int ContingencyTable::GetChiSquare(TableChiSquare* out) const {
    return TestIndependence(table_, out);
}

int ContingencyTable::GetAssociation(TableAssociation* out) const {
    return MeasureAssociation(table_, out);
}

int ContingencyTable::GetFisher(TableFisher* out) const {
    return TestExactly(table_, out);
}

int ContingencyTable::GetMcNemar(TableTest* out) const {
    return TestSymmetry(table_, out);
}

int ContingencyTable::GetLinearByLinear(TableTest* out) const {
    return TestLinearByLinear(table_, out);
}

int ContingencyTable::GetTrend(TableTrend* out) const {
    return TestTrend(table_, out);
}

int ContingencyTable::GetRisk(TableRisk* out, double confidence) const {
    return MeasureRisk(table_, confidence, out);
}

namespace {

// fill(cells) writes the counts of a table of zeros.
template <typename Fill>
IContingencyTable* MakeTable(int* status, unsigned rows, unsigned columns, Fill fill) {
    *status = kOutOfMemory;
    std::unique_ptr<ContingencyTable> table(new (std::nothrow) ContingencyTable);
    if (table == nullptr || !table->Cells().Allocate(rows, columns)) return nullptr;
    fill(table->Cells().Counts());
    *status = table->Cells().SumMargins() ? kSuccess : kUnusableData;
    return *status == kSuccess ? table.release() : nullptr;
}

bool AreClasses(const int* classes, unsigned n, unsigned count) {
    return std::all_of(classes, classes + n,
                       [count](int c) { return c >= 0 && static_cast<unsigned>(c) < count; });
}

}  // namespace
}  // namespace contingency

IContingencyTable* MakeIContingencyTable(int* status, const double* counts, unsigned rows, unsigned columns) {
    const std::size_t cells = std::size_t{rows} * columns;
    *status = kUnusableData;
    if (cells == 0 || !contingency::AreCounts(counts, cells)) return nullptr;
    return contingency::MakeTable(status, rows, columns, [=](double* out) {
        // A zero of either sign becomes +0.
        std::transform(counts, counts + cells, out, [](double x) { return x + 0.0; });
    });
}

IContingencyTable* MakeIContingencyTable(int* status, const int* rowClass, const int* columnClass, unsigned n,
                                         unsigned rows, unsigned columns) {
    *status = kUnusableData;
    if (rows == 0 || columns == 0 || !contingency::AreClasses(rowClass, n, rows) ||
        !contingency::AreClasses(columnClass, n, columns))
        return nullptr;
    return contingency::MakeTable(status, rows, columns, [=](double* out) {
        for (unsigned i = 0; i < n; ++i)
            out[static_cast<std::size_t>(rowClass[i]) * columns + static_cast<std::size_t>(columnClass[i])] +=
                1;
    });
}

void DeleteIContingencyTable(IContingencyTable** table) {
    if (table == nullptr) return;
    delete *table;
    *table = nullptr;
}

}  // namespace zul
