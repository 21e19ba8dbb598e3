#include "zul/ticks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <map>
#include <random>
#include <string>

#include "support/reference_table.h"

namespace zul::deprecated {
namespace {

double Field(const TickCalculationResult& r, int status, const std::string& name) {
    if (name.starts_with("tick[")) return TickValue(&r, static_cast<unsigned>(std::stoul(name.substr(5))));
    const std::map<std::string, double> fields = {{"status", status},
                                                  {"low", r.low},
                                                  {"high", r.high},
                                                  {"step", r.step},
                                                  {"firstInside", r.firstInside},
                                                  {"lastInside", r.lastInside},
                                                  {"count", r.count},
                                                  {"countInside", r.countInside},
                                                  {"decimals", r.decimals}};
    return fields.at(name);
}

TEST(Ticks, AreThoseOfTheTable) {
    TickCalculationResult used;
    ASSERT_EQ(ComputeTicks(&used, 0, 7, 5), 0);
    for (const test::Row& row : test::ReadTable("ticks/ticks.csv", ';')) {
        const std::vector<double> arguments = test::Numbers(row[3]);
        TickCalculationResult r = used;
        const int status = ComputeTicks(&r, arguments[0], arguments[1], static_cast<unsigned>(arguments[2]));
        EXPECT_TRUE(test::IsNear(Field(r, status, row[4]), test::Number(row[5]), test::Number(row[6])))
            << row[3] << " " << row[4];
    }
}

void ExpectCover(double low, double high, unsigned wanted) {
    TickCalculationResult r;
    ASSERT_EQ(ComputeTicks(&r, low, high, wanted), 0);
    const double near = r.step * 1e-9 + std::max(std::abs(low), std::abs(high)) * 1e-15;
    SCOPED_TRACE(testing::Message() << low << " " << high << " " << wanted);
    EXPECT_LE(r.low, low + near);
    EXPECT_GE(r.high, high - near);
    EXPECT_GT(r.low + r.step, low - near);
    EXPECT_LT(r.high - r.step, high + near);
    EXPECT_GT(r.countInside, 0.6 * (wanted - 1) - 1);
    EXPECT_LT(r.count, 1.5 * (wanted - 1) + 3);
    EXPECT_EQ(TickValue(&r, 0), r.low);
    EXPECT_EQ(TickValue(&r, r.count - 1), r.high);
    // Exact in their decimals: the double nearest to what the decimals say, without a sign of zero.
    for (unsigned i = 0; i < r.count; ++i) {
        const double tick = TickValue(&r, i);
        char text[400];
        std::snprintf(text, sizeof text, "%.*f", static_cast<int>(r.decimals), tick);
        const bool isExact = r.step > 1e-22 && r.step < 1e22;
        EXPECT_TRUE(std::strtod(text, nullptr) == tick || !isExact);
        EXPECT_FALSE(tick == 0 && std::signbit(tick));
    }
}

TEST(Ticks, CoverTheRange) {
    std::mt19937_64 engine(20);
    std::uniform_real_distribution<double> part(0, 1);
    for (int i = 0; i < 20000; ++i) {
        const double size = std::pow(10, std::floor(part(engine) * 60 - 30));
        const double low = (part(engine) - 0.5) * size;
        const double high = low + part(engine) * size + std::abs(low) * 1e-6;
        ExpectCover(low, high, 2 + static_cast<unsigned>(part(engine) * 99));
    }
}

TEST(Ticks, ReachTheEndsOfTheRange) {
    constexpr double kLargest = std::numeric_limits<double>::max();
    TickCalculationResult r;
    EXPECT_EQ(ComputeTicks(&r, -1e308, 1e308, 5), 0);
    EXPECT_EQ(r.count, 5U);
    EXPECT_EQ(r.step, 5e307);
    for (const unsigned wanted : {2U, 5U}) {
        EXPECT_EQ(ComputeTicks(&r, -kLargest, kLargest, wanted), 30000);
        EXPECT_EQ(ComputeTicks(&r, kLargest, kLargest, wanted), 30000);
        EXPECT_TRUE(std::isnan(r.high));
    }
    EXPECT_EQ(ComputeTicks(&r, 0, 1e-305, 5), 0);
    EXPECT_EQ(r.count, 6U);
    EXPECT_EQ(ComputeTicks(&r, 0, 5e-324, 5), 0);
    EXPECT_EQ(r.low, 0);
    // A cut is reached in spite of rounding.
    EXPECT_EQ(ComputeTicks(&r, 0.1, 0.7, 5), 0);
    EXPECT_EQ(r.step, 0.2);
}

}  // namespace
}  // namespace zul::deprecated
