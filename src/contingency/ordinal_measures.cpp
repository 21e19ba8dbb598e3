#include "contingency/ordinal_measures.h"

#include "contingency/pair_counts.h"
#include "contingency/standard_error.h"
#include "descriptive/compensated_sum.h"
#include "frame/missing_value.h"
#include "frame/status.h"

namespace zul::contingency {
namespace {

using descriptive::CompensatedSum;
using frame::kQuietNaN;

// The ordered pairs of observations with different rows, or columns: n^2 - sum total^2.
double Untied(const double* totals, std::size_t count, double n) {
    CompensatedSum untied;
    for (std::size_t i = 0; i < count; ++i)
        untied.Add(totals[i] * (n - totals[i]));
    return untied.Value();
}

// The measures of one table. Derivatives are n times those by a count, of the measure as a function that does not
// change when all counts are multiplied, so that sum p g is 0.
class Measures {
public:
    Measures(const Table& table, const PairCounts& pairs)
        : table_(table),
          pairs_(pairs),
          n_(table.Total()),
          excess_(pairs.Concordant() - pairs.Discordant()),
          untiedRows_(Untied(table.RowTotals(), table.Rows(), n_)),
          untiedColumns_(Untied(table.ColumnTotals(), table.Columns(), n_)) {}

    // Source: L. A. Goodman and W. H. Kruskal, Measures of association for cross classifications, 1954.
    void Gamma(double* measure, double* standardError) const {
        const double concordant = pairs_.Concordant();
        const double discordant = pairs_.Discordant();
        const double untied = concordant + discordant;
        *measure = Quotient(excess_, untied);
        if (untied == 0) return;
        const double scale = 2 * n_ / untied;
        const double ofConcordant = discordant / untied * scale;
        const double ofDiscordant = concordant / untied * scale;
        *standardError = StandardError(table_, [=, this](std::size_t i, std::size_t j) {
            return ofConcordant * pairs_.Concordant(i, j) - ofDiscordant * pairs_.Discordant(i, j);
        });
    }

    // Source: M. G. Kendall, The treatment of ties in ranking problems, 1945.
    void TauB(double* measure, double* standardError) const {
        const double untied = std::sqrt(untiedRows_) * std::sqrt(untiedColumns_);
        *measure = Quotient(2 * excess_, untied);
        if (untied == 0) return;
        const double scale = 2 * n_ / untied;
        const double ofRow = *measure * n_ / untiedRows_;
        const double ofColumn = *measure * n_ / untiedColumns_;
        *standardError = StandardError(table_, [=, this](std::size_t i, std::size_t j) {
            return scale * Excess(i, j) - ofRow * OtherRows(i) - ofColumn * OtherColumns(j);
        });
    }

    // Source: A. Stuart, The estimation and comparison of strengths of association in contingency tables, 1953.
    void TauC(double* measure, double* standardError) const {
        const double sides = static_cast<double>(table_.FewerUsed());
        const double tauC = Quotient(2 * sides * excess_, n_ * n_ * (sides - 1));
        *measure = tauC;
        if (sides == 1) return;
        const double scale = 2 * sides / (n_ * (sides - 1));
        *standardError = StandardError(
            table_, [=, this](std::size_t i, std::size_t j) { return scale * Excess(i, j) - 2 * tauC; });
    }

    // Source: R. H. Somers, A new asymmetric measure of association for ordinal variables, 1962.
    void SomersDColumn(double* measure, double* standardError) const {
        *measure = Quotient(2 * excess_, untiedRows_);
        if (untiedRows_ == 0) return;
        const double scale = 2 * n_ / untiedRows_;
        const double ofRow = *measure * scale;
        *standardError = StandardError(table_, [=, this](std::size_t i, std::size_t j) {
            return scale * Excess(i, j) - ofRow * OtherRows(i);
        });
    }

    void SomersDRow(double* measure, double* standardError) const {
        *measure = Quotient(2 * excess_, untiedColumns_);
        if (untiedColumns_ == 0) return;
        const double scale = 2 * n_ / untiedColumns_;
        const double ofColumn = *measure * scale;
        *standardError = StandardError(table_, [=, this](std::size_t i, std::size_t j) {
            return scale * Excess(i, j) - ofColumn * OtherColumns(j);
        });
    }

private:
    double Excess(std::size_t i, std::size_t j) const {
        return pairs_.Concordant(i, j) - pairs_.Discordant(i, j);
    }
    double OtherRows(std::size_t i) const { return n_ - table_.RowTotal(i); }
    double OtherColumns(std::size_t j) const { return n_ - table_.ColumnTotal(j); }

    const Table& table_;
    const PairCounts& pairs_;
    double n_;
    double excess_;
    double untiedRows_;
    double untiedColumns_;
};

}  // namespace

int MeasureByPairs(const Table& table, TableAssociation* out) {
    PairCounts pairs;
    if (!pairs.Count(table)) return kOutOfMemory;
    const Measures measures(table, pairs);
    out->concordant = pairs.Concordant();
    out->discordant = pairs.Discordant();
    measures.Gamma(&out->gamma, &out->gammaStandardError);
    measures.TauB(&out->tauB, &out->tauBStandardError);
    measures.TauC(&out->tauC, &out->tauCStandardError);
    measures.SomersDColumn(&out->somersDColumn, &out->somersDColumnStandardError);
    measures.SomersDRow(&out->somersDRow, &out->somersDRowStandardError);
    return kSuccess;
}

}  // namespace zul::contingency
