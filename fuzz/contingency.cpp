// Contingency tables of random counts, strata and the ticks of random ranges: statuses, p-values and measures in their
// ranges, bounds in order, ticks that enclose the range.
#include "contingency/tables.h"
#include "fuzz/support/target.h"
#include "zul/ticks.h"

namespace zul::fuzz {
namespace {

// Whole numbers mostly, fractions, sometimes any numbers.
Data Counts(Input& input, std::size_t n) {
    const unsigned kind = input.Byte() % 8;
    Data counts = kind == 0 ? Values(input, n) : Data(n);
    for (double& count : counts) {
        if (kind == 1) count = std::abs(AnyReal(input));
        if (kind == 2) count = input.Size();
        if (kind == 3) count = input.Pair() * 64.0;
        if (kind > 3) count = input.Flag() ? input.Byte() : 0;
    }
    return counts;
}

// The smallest has digits left beside the total.
bool AreModerate(const Data& counts) {
    return std::ranges::all_of(counts, [](double x) { return x == 0 || (x > 0.01 && x < 1e7); });
}

template <typename Record>
Record Got(const IContingencyTable& table, int (IContingencyTable::*get)(Record*) const) {
    Record record;
    StatusOf(Mode::Bare, "a table", {0, 30000, 30007, 30011}, [&] { return (table.*get)(&record); });
    return record;
}

void Evaluate(Input& input, const IContingencyTable& table, bool isModerate) {
    const TableAssociation a = Got(table, &IContingencyTable::GetAssociation);
    const TableChiSquare chi = Got(table, &IContingencyTable::GetChiSquare);
    const TableFisher fisher = Got(table, &IContingencyTable::GetFisher);
    const TableTest symmetry = Got(table, &IContingencyTable::GetMcNemar);
    const TableTest linear = Got(table, &IContingencyTable::GetLinearByLinear);
    const TableTrend trend = Got(table, &IContingencyTable::GetTrend);
    TableRisk risk;
    const double confidence = input.Flag() ? input.Fraction() : AnyReal(input);
    StatusOf(Mode::Bare, "a table", {0, 30000, 30011}, [&] { return table.GetRisk(&risk, confidence); });
    ExpectWithin("exact p", 0, 1, {fisher.lessPValue, fisher.greaterPValue, fisher.twoSidedPValue});
    if (!isModerate) return;
    constexpr double kOne = 1 + 1e-6;
    ExpectWithin("p", 0, 1, {chi.pearsonPValue, chi.likelihoodRatioPValue, chi.yatesPValue});
    ExpectWithin("p", 0, 1, {symmetry.pValue, symmetry.exactPValue, linear.pValue, trend.twoSidedPValue});
    ExpectWithin("measure", -kOne, kOne, {a.gamma, a.tauB, a.tauC, a.somersDRow, a.pearsonR, a.kappa});
    ExpectWithin("share", -1e-6, kOne, {a.cramersV, a.lambdaRow, a.goodmanKruskalTauRow, a.uncertaintyRow});
    ExpectWithin("odds ratio", 0, risk.oddsRatioUpper, {risk.oddsRatioLower});
}

void Table(Input& input) {
    const auto side = [&] { return input.Flag() ? 2 : input.Choice<unsigned>(8); };
    const unsigned rows = side();
    const unsigned columns = side();
    const Data counts = Counts(input, std::size_t{rows} * columns);
    int status = -1;
    const auto make = [&] { return test::MakeTable(counts, rows, columns, &status); };
    const test::TablePtr table = Result("MakeIContingencyTable", make);
    Expect(status == (table == nullptr ? 30000 : 0), "another status of a table");
    if (table == nullptr) return;
    Expect(std::isnan(table->Count(rows, 0)) && std::isnan(table->Contribution(0, columns)), "a cell beyond");
    Evaluate(input, *table, AreModerate(counts));
}

void Strata(Input& input) {
    MantelHaenszel record;
    record.strata = input.Choice<unsigned>(6);
    const Data counts = Counts(input, std::size_t{record.strata} * 4);
    const bool continuity = input.Flag();
    const double confidence = input.Flag() ? input.Fraction() : AnyReal(input);
    const auto type = static_cast<IntervalType>(input.Choice<int>(4) - 1);
    StatusOf(Mode::Bare, "a table", {0, 30000, 30002, 30007},
             [&] { return RunMantelHaenszel(&record, counts.data(), continuity, confidence, type); });
    if (!AreModerate(counts)) return;
    ExpectWithin("p", 0, 1, {record.pValue});
    ExpectWithin("bounds", 0, record.upperBound, {record.lowerBound});
}

void Ticks(Input& input) {
    const double low = AnyReal(input);
    const double high = input.Flag() ? AnyReal(input) : low + input.Size();
    const auto wanted = input.Choice<unsigned>(110);
    deprecated::TickCalculationResult r;
    StatusOf(Mode::Bare, "a table", {0, 30000, 30017}, [&] { return ComputeTicks(&r, low, high, wanted); });
    const double slack = r.step * 1e-9 + std::max(std::abs(low), std::abs(high)) * 1e-12;
    if (r.count == 0) return;
    Expect(r.low <= std::min(low, high) + slack && r.high >= std::max(low, high) - slack, "range of ticks");
    Expect(r.count < 160 && r.countInside <= r.count, "too many ticks");
    for (unsigned i = 0; i <= r.count; ++i)
        Expect(std::isnan(TickValue(&r, i)) == (i == r.count), "a tick beyond");
    Expect(TickValue(&r, r.count - 1) == r.high, "another last tick");
}

}  // namespace

void RunInput(Input& input) {
    const unsigned kind = input.Byte() % 8;
    (kind < 5 ? zul::fuzz::Table : kind < 6 ? zul::fuzz::Strata : zul::fuzz::Ticks)(input);
}

}  // namespace zul::fuzz
