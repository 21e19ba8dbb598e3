// Contingency tables of random counts, strata and the ticks of random ranges: statuses, p-values and measures in their
// ranges, bounds in order, ticks that enclose the range.
#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

#include "contingency/tables.h"
#include "fuzz/support/check.h"
#include "fuzz/support/input.h"
#include "fuzz/support/values.h"
#include "zul/ticks.h"

namespace zul::fuzz {
namespace {

using Status = std::initializer_list<int>;

// Whole numbers mostly, fractions, sometimes any numbers.
std::vector<double> Counts(Input& input, std::size_t n) {
    const unsigned kind = input.Byte() % 8;
    std::vector<double> counts = kind == 0 ? Values(input, n) : std::vector<double>(n);
    for (double& count : counts) {
        if (kind == 1) count = std::abs(AnyReal(input));
        if (kind == 2) count = input.Size();
        if (kind == 3) count = input.Pair() * 64.0;
        if (kind > 3) count = input.Flag() ? input.Byte() : 0;
    }
    return counts;
}

// The smallest has digits left beside the total.
bool AreModerate(const std::vector<double>& counts) {
    return std::ranges::all_of(counts, [](double x) { return x == 0 || (x > 0.01 && x < 1e7); });
}

void ExpectWithin(const char* what, double low, double high, std::initializer_list<double> values) {
    for (const double x : values)
        Require(std::isnan(x) || (x >= low && x <= high), [=] { return Call(what, x); });
}

template <typename Record, typename Get>
Record Got(const char* name, Status statuses, Get get, Record record = {}) {
    int status = -1;
    Run(name, [&] { status = get(&record); });
    Expect(std::ranges::count(statuses, status) == 1, name, "another status");
    return record;
}

void Measure(const IContingencyTable& table, bool isModerate) {
    const auto association =
        Got<TableAssociation>("GetAssociation", {0, 30000}, [&](auto* r) { return table.GetAssociation(r); });
    const auto chi =
        Got<TableChiSquare>("GetChiSquare", {0, 30000}, [&](auto* r) { return table.GetChiSquare(r); });
    if (!isModerate) return;
    const TableAssociation& a = association;
    constexpr double kOne = 1 + 1e-6;
    ExpectWithin("p", 0, 1, {chi.pearsonPValue, chi.likelihoodRatioPValue, chi.yatesPValue});
    ExpectWithin(
        "measure", -kOne, kOne,
        {a.gamma, a.tauB, a.somersDRow, a.somersDColumn, a.pearsonR, a.spearmanRho, a.kappa, a.tauC});
    ExpectWithin("share", -1e-6, kOne,
                 {a.cramersV, a.contingencyCoefficient, a.lambdaRow, a.lambdaColumn, a.lambdaSymmetric,
                  a.goodmanKruskalTauRow, a.goodmanKruskalTauColumn, a.uncertaintyRow, a.uncertaintyColumn,
                  a.uncertaintySymmetric});
}

void Test(Input& input, const IContingencyTable& table, bool isModerate) {
    const auto fisher =
        Got<TableFisher>("GetFisher", {0, 30000, 30011}, [&](auto* r) { return table.GetFisher(r); });
    const auto symmetry =
        Got<TableTest>("GetMcNemar", {0, 30000, 30011}, [&](auto* r) { return table.GetMcNemar(r); });
    Got<TableTest>("GetLinearByLinear", {0, 30000, 30007},
                   [&](auto* r) { return table.GetLinearByLinear(r); });
    const auto trend =
        Got<TableTrend>("GetTrend", {0, 30000, 30007, 30011}, [&](auto* r) { return table.GetTrend(r); });
    const double confidence = input.Flag() ? input.Fraction() : AnyReal(input);
    const auto risk =
        Got<TableRisk>("GetRisk", {0, 30000, 30011}, [&](auto* r) { return table.GetRisk(r, confidence); });
    ExpectWithin("exact p", 0, 1, {fisher.lessPValue, fisher.greaterPValue, fisher.twoSidedPValue});
    if (!isModerate) return;
    ExpectWithin("p", 0, 1,
                 {symmetry.pValue, symmetry.correctedPValue, symmetry.exactPValue, trend.twoSidedPValue});
    ExpectWithin("odds ratio", risk.oddsRatioLower, risk.oddsRatioUpper, {risk.oddsRatioLower});
    ExpectWithin("relative risk", risk.relativeRiskLower, risk.relativeRiskUpper, {risk.relativeRiskLower});
}

void Table(Input& input) {
    const unsigned rows = input.Flag() ? 2 : static_cast<unsigned>(input.Choice(8));
    const unsigned columns = input.Flag() ? 2 : static_cast<unsigned>(input.Choice(8));
    const std::vector<double> counts = Counts(input, std::size_t{rows} * columns);
    int status = -1;
    test::TablePtr table;
    Run("MakeIContingencyTable", [&] { table = test::MakeTable(counts, rows, columns, &status); });
    Expect(status == (table == nullptr ? 30000 : 0), "another status of a table");
    if (table == nullptr) return;
    const auto row = static_cast<unsigned>(input.Choice(9));
    const auto column = static_cast<unsigned>(input.Choice(9));
    Expect(std::isnan(table->Count(row, column)) == (row >= rows || column >= columns), "a cell beyond");
    if (AreModerate(counts)) ExpectWithin("cell", 0, kInf, {table->Contribution(row, column)});
    Run("AdjustedResidual", [&] { (void)table->AdjustedResidual(row, column); });
    Measure(*table, AreModerate(counts));
    Test(input, *table, AreModerate(counts));
}

void Strata(Input& input) {
    MantelHaenszel record;
    record.strata = static_cast<unsigned>(input.Choice(6));
    const std::vector<double> counts = Counts(input, std::size_t{record.strata} * 4);
    const bool continuity = input.Flag();
    const double confidence = input.Flag() ? input.Fraction() : AnyReal(input);
    const auto type = static_cast<IntervalType>(static_cast<int>(input.Choice(4)) - 1);
    const auto r = Got<MantelHaenszel>(
        "RunMantelHaenszel", {0, 30000, 30002, 30007},
        [&](auto* out) { return RunMantelHaenszel(out, counts.data(), continuity, confidence, type); },
        record);
    if (AreModerate(counts)) ExpectWithin("p", 0, 1, {r.pValue});
}

void Ticks(Input& input) {
    const double low = AnyReal(input);
    const double high = input.Flag() ? AnyReal(input) : low + input.Size();
    const auto wanted = static_cast<unsigned>(input.Choice(110));
    const auto r = Got<deprecated::TickCalculationResult>(
        "ComputeTicks", {0, 30000, 30017}, [&](auto* out) { return ComputeTicks(out, low, high, wanted); });
    if (r.count == 0) return;
    const double slack = r.step * 1e-9 + std::max(std::abs(low), std::abs(high)) * 1e-12;
    Expect(r.low <= std::min(low, high) + slack && r.high >= std::max(low, high) - slack,
           "ticks do not enclose");
    Expect(r.count < 160 && r.countInside <= r.count, "too many ticks");
    for (unsigned i = 0; i <= r.count; ++i)
        Expect(std::isnan(TickValue(&r, i)) == (i == r.count), "a tick beyond");
    Expect(TickValue(&r, r.count - 1) == r.high, "another last tick");
}

}  // namespace
}  // namespace zul::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zul::fuzz::Input input(data, size);
    const unsigned kind = input.Byte() % 8;
    (kind < 5 ? zul::fuzz::Table : kind < 6 ? zul::fuzz::Strata : zul::fuzz::Ticks)(input);
    return 0;
}
