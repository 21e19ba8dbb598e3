#include "contingency/measures/ordinal_measures.h"

#include "contingency/measures/pair_counts.h"
#include "contingency/measures/standard_error.h"
#include "descriptive/compensated_sum.h"
#include "elementary/root.h"
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

// The quotient of a gradient; 0 where the measure is not defined and neither is its error.
double Scale(double numerator, double denominator) {
    return denominator == 0 ? 0 : numerator / denominator;
}

// The measures of one table. Derivatives are n times those by a count, of the measure as a function that does not
// change when all counts are multiplied, so that sum p g is 0.
class Measures {
public:
    Measures(const Table& table, const PairCounts& pairs)
        : table_(table),
          pairs_(pairs),
          n_(table.Total()),
          concordant_(pairs.Concordant()),
          discordant_(pairs.Discordant()),
          excess_(concordant_ - discordant_),
          sides_(static_cast<double>(table.FewerUsed())),
          untiedRows_(Untied(table.RowTotals(), table.Rows(), n_)),
          untiedColumns_(Untied(table.ColumnTotals(), table.Columns(), n_)) {}

    // Source: L. A. Goodman and W. H. Kruskal, Measures of association for cross classifications, 1954.
    double Gamma() const { return Quotient(excess_, concordant_ + discordant_); }
    auto GammaGradient() const {
        const double untied = concordant_ + discordant_;
        const double scale = Scale(2 * n_, untied);
        const double ofConcordant = Scale(discordant_, untied) * scale;
        const double ofDiscordant = Scale(concordant_, untied) * scale;
        return [=, this](std::size_t i, std::size_t j) {
            return ofConcordant * pairs_.Concordant(i, j) - ofDiscordant * pairs_.Discordant(i, j);
        };
    }

    // Source: M. G. Kendall, The treatment of ties in ranking problems, 1945.
    double TauB() const { return Quotient(2 * excess_, BothUntied()); }
    auto TauBGradient() const {
        const double scale = Scale(2 * n_, BothUntied());
        const double ofRow = Scale(TauB() * n_, untiedRows_);
        const double ofColumn = Scale(TauB() * n_, untiedColumns_);
        return [=, this](std::size_t i, std::size_t j) {
            return scale * Excess(i, j) - ofRow * OtherRows(i) - ofColumn * OtherColumns(j);
        };
    }

    // Source: A. Stuart, The estimation and comparison of strengths of association in contingency tables, 1953.
    double TauC() const { return Quotient(2 * sides_ * excess_, n_ * n_ * (sides_ - 1)); }
    auto TauCGradient() const {
        const double scale = Scale(2 * sides_, n_ * (sides_ - 1));
        const double twice = 2 * TauC();
        return [=, this](std::size_t i, std::size_t j) { return scale * Excess(i, j) - twice; };
    }

    // Source: R. H. Somers, A new asymmetric measure of association for ordinal variables, 1962.
    double SomersDColumn() const { return Quotient(2 * excess_, untiedRows_); }
    auto SomersDColumnGradient() const {
        const double scale = Scale(2 * n_, untiedRows_);
        const double ofRow = SomersDColumn() * scale;
        return
            [=, this](std::size_t i, std::size_t j) { return scale * Excess(i, j) - ofRow * OtherRows(i); };
    }

    double SomersDRow() const { return Quotient(2 * excess_, untiedColumns_); }
    auto SomersDRowGradient() const {
        const double scale = Scale(2 * n_, untiedColumns_);
        const double ofColumn = SomersDRow() * scale;
        return [=, this](std::size_t i, std::size_t j) {
            return scale * Excess(i, j) - ofColumn * OtherColumns(j);
        };
    }

private:
    double BothUntied() const { return elementary::Sqrt(untiedRows_) * elementary::Sqrt(untiedColumns_); }
    double Excess(std::size_t i, std::size_t j) const {
        return pairs_.Concordant(i, j) - pairs_.Discordant(i, j);
    }
    double OtherRows(std::size_t i) const { return n_ - table_.RowTotal(i); }
    double OtherColumns(std::size_t j) const { return n_ - table_.ColumnTotal(j); }

    const Table& table_;
    const PairCounts& pairs_;
    double n_;
    double concordant_;
    double discordant_;
    double excess_;
    double sides_;
    double untiedRows_;
    double untiedColumns_;
};

void Write(double measure, double error, double* outMeasure, double* outError) {
    *outMeasure = measure;
    *outError = std::isnan(measure) ? kQuietNaN : error;
}

}  // namespace

int MeasureByPairs(const Table& table, TableAssociation* out) {
    PairCounts pairs;
    if (!pairs.Count(table)) return kOutOfMemory;
    const Measures measures(table, pairs);
    const auto [gammaError, tauBError, tauCError, columnError, rowError] =
        StandardErrors(table, measures.GammaGradient(), measures.TauBGradient(), measures.TauCGradient(),
                       measures.SomersDColumnGradient(), measures.SomersDRowGradient());
    out->concordant = pairs.Concordant();
    out->discordant = pairs.Discordant();
    Write(measures.Gamma(), gammaError, &out->gamma, &out->gammaStandardError);
    Write(measures.TauB(), tauBError, &out->tauB, &out->tauBStandardError);
    Write(measures.TauC(), tauCError, &out->tauC, &out->tauCStandardError);
    Write(measures.SomersDColumn(), columnError, &out->somersDColumn, &out->somersDColumnStandardError);
    Write(measures.SomersDRow(), rowError, &out->somersDRow, &out->somersDRowStandardError);
    return kSuccess;
}

}  // namespace zul::contingency
