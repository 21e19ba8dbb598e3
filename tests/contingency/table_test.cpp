// Laws of tables, and what no table of values shows.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "contingency/tables.h"
#include "hypothesis/record_fields.h"
#include "support/reference_table.h"

namespace zul {
namespace {

struct Counts {
    unsigned rows;
    unsigned columns;
    std::vector<double> cells;

    double At(unsigned i, unsigned j) const { return cells[std::size_t{i} * columns + j]; }
    test::TablePtr Make() const {
        int status = -1;
        test::TablePtr table = test::MakeTable(cells, rows, columns, &status);
        EXPECT_EQ(status, 0);
        return table;
    }
    Counts Transposed() const {
        Counts out{columns, rows, {}};
        for (unsigned j = 0; j < columns; ++j)
            for (unsigned i = 0; i < rows; ++i)
                out.cells.push_back(At(i, j));
        return out;
    }
};

// Some with whole rows and columns of zeros.
std::vector<Counts> RandomTables() {
    std::mt19937 engine(5);
    const auto below = [&engine](unsigned n) { return static_cast<unsigned>(engine()) % n; };
    std::vector<Counts> all;
    for (int i = 0; i < 200; ++i) {
        Counts counts{2 + below(6), 2 + below(6), {}};
        const unsigned emptyRow = below(9);
        const unsigned emptyColumn = below(9);
        for (unsigned row = 0; row < counts.rows; ++row)
            for (unsigned column = 0; column < counts.columns; ++column)
                counts.cells.push_back(row == emptyRow || column == emptyColumn ? 0 : below(12));
        counts.cells.back() += 1;
        all.push_back(counts);
    }
    return all;
}

TableAssociation Association(const Counts& counts) {
    TableAssociation r;
    EXPECT_EQ(counts.Make()->GetAssociation(&r), 0);
    return r;
}

void ExpectNear(double a, double b) {
    EXPECT_TRUE(std::abs(a - b) <= 1e-12 * (1 + std::abs(b)) || test::IsNear(a, b, 0)) << a << " " << b;
}

TEST(ContingencyTable, TransposedExchangesRowAndColumn) {
    for (const Counts& counts : RandomTables()) {
        const TableAssociation a = Association(counts);
        TableAssociation b = Association(counts.Transposed());
        std::swap(b.somersDColumn, b.somersDRow);
        std::swap(b.somersDColumnStandardError, b.somersDRowStandardError);
        std::swap(b.lambdaColumn, b.lambdaRow);
        std::swap(b.goodmanKruskalTauColumn, b.goodmanKruskalTauRow);
        std::swap(b.uncertaintyColumn, b.uncertaintyRow);
        const std::vector<double> x = test::Doubles(a, 27);
        const std::vector<double> y = test::Doubles(b, 27);
        for (std::size_t i = 0; i < x.size(); ++i)
            ExpectNear(x[i], y[i]);
        TableChiSquare c;
        TableChiSquare d;
        EXPECT_EQ(counts.Make()->GetChiSquare(&c), 0);
        EXPECT_EQ(counts.Transposed().Make()->GetChiSquare(&d), 0);
        ExpectNear(c.pearson, d.pearson);
        ExpectNear(c.likelihoodRatio, d.likelihoodRatio);
        EXPECT_EQ(c.cellsBelowFive, d.cellsBelowFive);
    }
}

// Rows in reverse order exchange the two kinds of pairs.
TEST(ContingencyTable, PairsAreThoseCountedOneByOne) {
    for (const Counts& counts : RandomTables()) {
        double concordant = 0;
        double discordant = 0;
        for (unsigned i = 0; i < counts.rows; ++i)
            for (unsigned j = 0; j < counts.columns; ++j)
                for (unsigned k = i + 1; k < counts.rows; ++k)
                    for (unsigned l = 0; l < counts.columns; ++l)
                        if (l != j) (l > j ? concordant : discordant) += counts.At(i, j) * counts.At(k, l);
        const TableAssociation r = Association(counts);
        EXPECT_EQ(r.concordant, concordant);
        EXPECT_EQ(r.discordant, discordant);
        Counts reversed = counts;
        for (unsigned i = 0; i < counts.rows; ++i)
            for (unsigned j = 0; j < counts.columns; ++j)
                reversed.cells[std::size_t{i} * counts.columns + j] = counts.At(counts.rows - 1 - i, j);
        const TableAssociation s = Association(reversed);
        EXPECT_EQ(s.concordant, discordant);
        ExpectNear(s.gamma, -r.gamma);
        ExpectNear(s.gammaStandardError, r.gammaStandardError);
        ExpectNear(s.tauBStandardError, r.tauBStandardError);
    }
}

// Fractions that are no sums of powers of two: what vanishes does so exactly.
TEST(ContingencyTable, OfOneLineHasNoMeasures) {
    const Counts counts{3, 3, {0, 0.1, 0, 0, 0.7, 0, 0, 0.2, 0}};
    TableChiSquare chiSquare;
    EXPECT_EQ(counts.Make()->GetChiSquare(&chiSquare), 0);
    EXPECT_EQ(chiSquare.pearson, 0);
    EXPECT_TRUE(std::isnan(chiSquare.pearsonPValue));
    const TableAssociation r = Association(counts);
    for (const double measure : {r.cramersV, r.gamma, r.tauB, r.tauC, r.somersDRow, r.lambdaColumn,
                                 r.goodmanKruskalTauColumn, r.uncertaintyColumn, r.pearsonR, r.spearmanRho})
        EXPECT_TRUE(std::isnan(measure));
    EXPECT_EQ(r.somersDColumn, 0);
    EXPECT_EQ(r.uncertaintyRow, 0);
    EXPECT_TRUE(std::isnan(counts.Make()->AdjustedResidual(1, 1)));
    EXPECT_EQ(counts.Make()->Residual(1, 1), 0);
}

// By the odds of neighbouring tables, which make their probabilities by products.
TEST(ContingencyTable, FisherAddsUpWhatIsNotMoreProbable) {
    std::mt19937 engine(7);
    for (int n = 0; n < 400; ++n) {
        const unsigned size = n % 2 == 0 ? 12 : 60;
        std::vector<double> cells(4);
        for (double& cell : cells)
            cell = static_cast<unsigned>(engine()) % size;
        if (n % 5 == 0) cells[3] = cells[0] + cells[1] - std::min(cells[2], cells[0] + cells[1]);
        cells[3] += 1;
        const Counts counts{2, 2, cells};
        TableFisher r;
        ASSERT_EQ(counts.Make()->GetFisher(&r), 0);
        const double row = cells[0] + cells[1];
        const double column = cells[0] + cells[2];
        const double total = row + cells[2] + cells[3];
        const double first = std::max(0.0, row + column - total);
        std::vector<double> masses = {1};
        for (double k = first; k < std::min(row, column); ++k)
            masses.push_back(masses.back() * (row - k) * (column - k) /
                             ((k + 1) * (total - row - column + k + 1)));
        const auto observed = static_cast<std::size_t>(cells[0] - first);
        double all = 0;
        double less = 0;
        double both = 0;
        for (std::size_t k = 0; k < masses.size(); ++k) {
            all += masses[k];
            if (k <= observed) less += masses[k];
            if (masses[k] <= masses[observed] * (1 + 1e-12)) both += masses[k];
        }
        EXPECT_TRUE(test::IsNear(r.lessPValue, less / all, 1e-12));
        EXPECT_TRUE(test::IsNear(r.twoSidedPValue, both / all, 1e-12));
    }
}

// In a symmetric distribution the mirror image of a table counts, wherever rounding has put its probability.
TEST(ContingencyTable, FisherTellsTiesFarFromTheMode) {
    for (const double shift : {1e3, 2e4, 3e5}) {
        const double margin = 2e6;
        const Counts counts{2, 2, {margin + shift, margin - shift, margin - shift, margin + shift}};
        TableFisher r;
        ASSERT_EQ(counts.Make()->GetFisher(&r), 0);
        EXPECT_TRUE(test::IsNear(r.twoSidedPValue, std::min(1.0, 2 * r.greaterPValue), 1e-12)) << shift;
    }
}

TEST(ContingencyTable, WithoutRowsOrAFiniteTotalIsNotMade) {
    const double huge[] = {1e308, 1e308, 1e308, 1e308};
    int status = -1;
    EXPECT_EQ(MakeIContingencyTable(&status, huge, 2, 2), nullptr);
    EXPECT_EQ(status, 30000);
    EXPECT_EQ(MakeIContingencyTable(&status, nullptr, nullptr, 0, 2, 0), nullptr);
    EXPECT_EQ(status, 30000);
    EXPECT_EQ(MakeIContingencyTable(&status, nullptr, nullptr, 0, ~0U, ~0U), nullptr);
    EXPECT_EQ(status, 30001);
    DeleteIContingencyTable(nullptr);
    IContingencyTable* none = nullptr;
    DeleteIContingencyTable(&none);
    IContingencyTable* table = MakeIContingencyTable(&status, huge, 1, 1);
    DeleteIContingencyTable(&table);
    EXPECT_EQ(table, nullptr);
    TableTest r;
    const Counts empty{2, 3, {0, 0, 0, 0, 0, 0}};
    EXPECT_EQ(empty.Make()->GetMcNemar(&r), 30011);
    TableFisher fisher;
    EXPECT_EQ(empty.Make()->GetFisher(&fisher), 30011);
    TableRisk risk;
    EXPECT_EQ(empty.Make()->GetRisk(&risk, 0.95), 30011);
}

TEST(ContingencyTable, WithAZeroHasNoBounds) {
    for (std::size_t zero = 0; zero < 4; ++zero) {
        Counts counts{2, 2, {3, 4, 5, 6}};
        counts.cells[zero] = 0;
        TableRisk r;
        EXPECT_EQ(counts.Make()->GetRisk(&r, 0.95), 0);
        EXPECT_FALSE(std::isnan(r.oddsRatio));
        EXPECT_TRUE(std::isnan(r.oddsRatioLower) && std::isnan(r.relativeRiskUpper)) << zero;
    }
}

}  // namespace
}  // namespace zul
