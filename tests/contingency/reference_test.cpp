// The tables of tests/data/contingency.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "contingency/tables.h"
#include "hypothesis/record_fields.h"
#include "support/reference_table.h"

namespace zul {
namespace {

using test::Row;
using test::TablePtr;
using Results = std::map<std::string, double>;
using Parts = std::vector<std::vector<double>>;

// Names in the order of the record, whose doubles they are.
template <typename Record>
Results Fields(const Record& record, int status, const char* names) {
    std::istringstream words(names);
    std::vector<std::string> list;
    for (std::string word; words >> word;)
        list.push_back(word);
    const std::vector<double> values = test::Doubles(record, list.size());
    Results results = {{"status", status}};
    for (std::size_t i = 0; i < list.size(); ++i)
        results[list[i]] = values[i];
    return results;
}

Parts PartsOf(const std::string& text) {
    Parts parts;
    std::istringstream in(text + "|");
    for (std::string part; std::getline(in, part, '|');)
        parts.push_back(test::Numbers(part));
    return parts;
}

std::vector<double> Joined(const Parts& parts) {
    std::vector<double> all;
    for (const auto& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

TablePtr TableOf(const Parts& parts, int* status) {
    const std::vector<double> counts = Joined(parts);
    return TablePtr(MakeIContingencyTable(status, counts.data(), static_cast<unsigned>(parts.size()),
                                          static_cast<unsigned>(parts[0].size())));
}

TablePtr TableOfClasses(const Parts& parts, const std::vector<double>& sides, int* status) {
    const std::vector<int> rows(parts[0].begin(), parts[0].end());
    const std::vector<int> columns(parts[1].begin(), parts[1].end());
    return TablePtr(MakeIContingencyTable(status, rows.data(), columns.data(),
                                          static_cast<unsigned>(rows.size()), static_cast<unsigned>(sides[0]),
                                          static_cast<unsigned>(sides[1])));
}

// A field of the table itself, such as expected[0][1].
double Cell(const IContingencyTable& table, const std::string& field) {
    const std::string name = field.substr(0, field.find('['));
    std::vector<unsigned> at;
    for (std::size_t i = field.find('['); i < field.size(); i = field.find('[', i + 1))
        at.push_back(static_cast<unsigned>(std::stoul(field.substr(i + 1))));
    if (name == "rows") return table.RowCount();
    if (name == "columns") return table.ColumnCount();
    if (name == "total") return table.Total();
    if (name == "rowTotal") return table.RowTotal(at[0]);
    if (name == "columnTotal") return table.ColumnTotal(at[0]);
    using Operation = double (IContingencyTable::*)(unsigned, unsigned) const;
    static const std::map<std::string, Operation> kOperations = {
        {"count", &IContingencyTable::Count},
        {"expected", &IContingencyTable::Expected},
        {"residual", &IContingencyTable::Residual},
        {"standardizedResidual", &IContingencyTable::StandardizedResidual},
        {"adjustedResidual", &IContingencyTable::AdjustedResidual},
        {"contribution", &IContingencyTable::Contribution}};
    return (table.*kOperations.at(name))(at[0], at[1]);
}

// Every field was something else before.
template <typename Record>
Record Used() {
    Record record;
    const std::size_t doubles = sizeof(Record) / sizeof(double);
    std::fill_n(reinterpret_cast<double*>(&record), doubles, 7.0);
    return record;
}

template <typename Record, typename Call>
Results Filled(const char* names, Call call) {
    Record record = Used<Record>();
    const int status = call(&record);
    return Fields(record, status, names);
}

Results RunOperation(const IContingencyTable& t, const std::string& operation, double confidence) {
    if (operation == "GetChiSquare") {
        TableChiSquare r = Used<TableChiSquare>();
        const int status = t.GetChiSquare(&r);
        Results results =
            Fields(r, status,
                   "pearson pearsonPValue likelihoodRatio likelihoodRatioPValue yates yatesPValue "
                   "degreesOfFreedom minimumExpected");
        results["cellsBelowFive"] = r.cellsBelowFive;
        return results;
    }
    if (operation == "GetAssociation")
        return Filled<TableAssociation>(
            "phi contingencyCoefficient cramersV concordant discordant gamma gammaStandardError tauB "
            "tauBStandardError tauC tauCStandardError somersDColumn somersDColumnStandardError somersDRow "
            "somersDRowStandardError lambdaColumn lambdaRow lambdaSymmetric goodmanKruskalTauColumn "
            "goodmanKruskalTauRow uncertaintyColumn uncertaintyRow uncertaintySymmetric pearsonR spearmanRho "
            "kappa kappaStandardError",
            [&](auto* r) { return t.GetAssociation(r); });
    if (operation == "GetFisher")
        return Filled<TableFisher>("lessPValue greaterPValue twoSidedPValue",
                                   [&](auto* r) { return t.GetFisher(r); });
    if (operation == "GetTrend")
        return Filled<TableTrend>("z lessPValue greaterPValue twoSidedPValue",
                                  [&](auto* r) { return t.GetTrend(r); });
    if (operation == "GetRisk")
        return Filled<TableRisk>(
            "oddsRatio oddsRatioLower oddsRatioUpper relativeRisk relativeRiskLower "
            "relativeRiskUpper",
            [&](auto* r) { return t.GetRisk(r, confidence); });
    return Filled<TableTest>(
        "statistic degreesOfFreedom pValue correctedStatistic correctedPValue exactPValue",
        [&](auto* r) { return operation == "GetMcNemar" ? t.GetMcNemar(r) : t.GetLinearByLinear(r); });
}

Results RunStrata(const Parts& parts, const std::vector<double>& arguments) {
    const std::vector<double> counts = Joined(parts);
    MantelHaenszel r = Used<MantelHaenszel>();
    r.strata = static_cast<unsigned>(counts.size() / 4);
    const int status = RunMantelHaenszel(&r, counts.data(), arguments[0] != 0, arguments[1],
                                         static_cast<IntervalType>(static_cast<int>(arguments[2])));
    EXPECT_EQ(r.strata, counts.size() / 4);
    return Fields(r, status, "statistic pValue oddsRatio logOddsRatioStandardError lowerBound upperBound");
}

Results RunRow(const std::string& routine, const Parts& parts, const std::vector<double>& arguments,
               const std::string& field) {
    if (routine == "RunMantelHaenszel") return RunStrata(parts, arguments);
    int status = -1;
    const TablePtr table = routine == "MakeIContingencyTable.classes"
                               ? TableOfClasses(parts, arguments, &status)
                               : TableOf(parts, &status);
    const std::string operation = routine.substr(routine.find('.') + 1);
    if (operation.starts_with("Get"))
        return RunOperation(*table, operation, arguments.empty() ? 0 : arguments[0]);
    Results results = {{"status", status}, {"null", table == nullptr}};
    if (!results.contains(field)) results[field] = Cell(*table, field);
    return results;
}

class ContingencyReference : public testing::TestWithParam<const char*> {};

TEST_P(ContingencyReference, Rows) {
    const std::vector<Row> rows = test::ReadTable(GetParam(), ';');
    std::set<std::string> casesWithStatus;
    for (const Row& row : rows)
        if (row[4] == "status") casesWithStatus.insert(row[0]);
    for (const Row& row : rows) {
        const Results results = RunRow(row[1], PartsOf(row[2]), test::Numbers(row[3]), row[4]);
        const double actual = results.at(row[4]);
        const double expected = test::Number(row[5]);
        const double tolerance = test::Number(row[6]) * std::abs(expected) + test::Number(row[7]);
        EXPECT_TRUE(std::abs(actual - expected) <= tolerance || test::IsNear(actual, expected, 0))
            << row[0] << " " << row[1] << " of " << row[2] << ": " << row[4] << " is " << actual
            << " instead of " << expected;
        EXPECT_TRUE(casesWithStatus.contains(row[0]) || results.at("status") == 0) << row[0];
    }
}

INSTANTIATE_TEST_SUITE_P(Tables, ContingencyReference,
                         testing::Values("contingency/tables.csv", "contingency/published.csv"));

}  // namespace
}  // namespace zul
