// The exported functions against tables of values with tolerances, and rules that hold for every function.
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "support/reference_table.h"
#include "zul/distributions.h"

namespace zul {
namespace {

using Arguments = std::vector<double>;

EAlternative Alternative(double code) {
    return static_cast<EAlternative>(static_cast<int>(code));
}

const std::map<std::string, std::function<double(const Arguments&)>>& Functions() {
    static const std::map<std::string, std::function<double(const Arguments&)>> functions = {
        {"NormalPdf", [](const Arguments& a) { return NormalPdf(a.at(0), a.at(1), a.at(2)); }},
        {"NormalCdf", [](const Arguments& a) { return NormalCdf(a.at(0), a.at(1), a.at(2), a.at(3) != 0); }},
        {"NormalInvCdf", [](const Arguments& a) { return NormalInvCdf(a.at(0), a.at(1), a.at(2)); }},
        {"NormalPValue", [](const Arguments& a) { return NormalPValue(a.at(0), Alternative(a.at(1))); }},
        {"NormalCritValue",
         [](const Arguments& a) { return NormalCritValue(a.at(0), Alternative(a.at(1))); }},
        {"Psi", [](const Arguments& a) { return v2::Psi(a.at(0)); }},
    };
    return functions;
}

class Reference : public testing::TestWithParam<std::string> {};

TEST_P(Reference, EveryRowIsWithinItsTolerance) {
    for (const test::Row& row : test::ReadTable("distributions/" + GetParam() + ".csv", ';')) {
        const double actual = Functions().at(row.at(0))(test::Numbers(row.at(1)));
        EXPECT_TRUE(test::IsNear(actual, test::Number(row.at(2)), test::Number(row.at(3))))
            << row[0] << "(" << row[1] << ")";
    }
}

INSTANTIATE_TEST_SUITE_P(Tables, Reference, testing::Values("Normal", "pvalues", "critvalues", "psi"),
                         [](const auto& table) { return table.param; });

}  // namespace
}  // namespace zul
