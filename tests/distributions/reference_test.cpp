// The exported functions against tables of values with tolerances.
#include <gtest/gtest.h>

#include <exception>
#include <set>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

#include "distributions/families.h"
#include "support/reference_table.h"
#include "zul/frame.h"

namespace zul {
namespace {

std::vector<test::Row> Rows(const std::string& table) {
    return test::ReadTable("distributions/" + table + ".csv", ';');
}

double Call(const std::string& name, const std::string& arguments) {
    const std::vector<double> values = test::Numbers(arguments);
    const test::Function& function = test::FunctionOf(name, values.size());
    EXPECT_EQ(values.size(), function.types.size()) << name << arguments;
    return function.call(values);
}

class Reference : public testing::TestWithParam<std::string> {};

TEST_P(Reference, EveryRowIsWithinItsTolerance) {
    for (const test::Row& row : Rows(GetParam())) {
        const double actual = Call(row.at(0), row.at(1));
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
            covered.insert(row.at(0) + (table == "upper_quantiles" ? " by the upper tail" : ""));
    EXPECT_EQ(covered.size(), 4 * (test::Families().size() - 1) + test::Statistics().size());
}

// A number, or "=" and a call that gives it.
double Expected(const std::string& text) {
    if (text.front() != '=') return test::Number(text);
    const std::size_t blank = text.find(' ');
    return Call(text.substr(1, blank - 1), text.substr(blank));
}

// The standard exception that reaches the host and its text, or "".
std::string ExceptionOf(const std::string& function, const std::string& arguments) {
    std::string text;
    try {
        Call(function, arguments);
    } catch (const std::exception& error) {
        text = typeid(error) == typeid(std::invalid_argument) ? "invalid_argument: "
               : typeid(error) == typeid(std::overflow_error) ? "overflow_error: "
                                                              : "runtime_error: ";
        text += error.what();
    }
    ResetFpuStates();
    return text;
}

// Ends of the supports, special and bad parameters, both sides of a rule, and failures.
TEST(Edges, AreAsTheTableHasThem) {
    for (const test::Row& row : Rows("edges")) {
        const bool fails = row.at(2).find('_') != std::string::npos;
        const std::string call = row[0] + "(" + row[1] + ")";
        const std::string exception = ExceptionOf(row[0], row[1]);
        EXPECT_TRUE(fails ? exception.starts_with(row[2]) : exception.empty()) << call << exception;
        if (fails || !exception.empty()) continue;
        EXPECT_TRUE(test::IsNear(Call(row[0], row[1]), Expected(row[2]), test::Number(row.at(3)))) << call;
    }
}

}  // namespace
}  // namespace zul
