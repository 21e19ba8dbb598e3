// The exported functions against tables of values with tolerances.
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "distributions/families.h"
#include "support/reference_table.h"

namespace zul {
namespace {

std::vector<test::Row> Rows(const std::string& table) {
    return test::ReadTable("distributions/" + table + ".csv", ';');
}

class Reference : public testing::TestWithParam<std::string> {};

TEST_P(Reference, EveryRowIsWithinItsTolerance) {
    for (const test::Row& row : Rows(GetParam())) {
        const double actual = test::FunctionOf(row.at(0)).call(test::Numbers(row.at(1)));
        EXPECT_TRUE(test::IsNear(actual, test::Number(row.at(2)), test::Number(row.at(3))))
            << row[0] << "(" << row[1] << ")";
    }
}

INSTANTIATE_TEST_SUITE_P(Tables, Reference, testing::ValuesIn(test::ReferenceTables()),
                         [](const auto& table) { return table.param; });

TEST(ReferenceTables, CoverEveryFunction) {
    std::set<std::string> covered;
    for (const std::string& table : test::ReferenceTables())
        for (const test::Row& row : Rows(table))
            covered.insert(row.at(0));
    EXPECT_EQ(covered.size(), 3 * (test::Families().size() - 1) + test::Statistics().size());
}

}  // namespace
}  // namespace zul
