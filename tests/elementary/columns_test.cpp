#include "elementary/lanes/columns.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "elementary/arguments.h"
#include "elementary/exponential.h"
#include "elementary/functions.h"
#include "elementary/logarithm.h"
#include "elementary/power.h"
#include "processor/level.h"

namespace zul::test {
namespace {

using elementary::Columns;
using elementary::ColumnsOf;
using processor::Level;

std::vector<Level> Levels() {
    std::vector<Level> levels;
    for (const Level level : {Level::One, Level::Two, Level::Four, Level::Eight})
        if (level <= processor::HighestLevel()) levels.push_back(level);
    return levels;
}

// Source: G. Fowler, L. C. Noll, K.-P. Vo, 1991, by words.
std::uint64_t Hash(const std::vector<double>& values) {
    std::uint64_t hash = 14695981039346656037u;
    for (const double value : values)
        hash = (hash ^ std::bit_cast<std::uint64_t>(value)) * 1099511628211u;
    return hash;
}

constexpr std::size_t kCount = 8192;

struct PowerArguments {
    std::vector<double> x;
    std::vector<double> y;
};

PowerArguments MakePowerArguments() {
    RandomArguments arguments;
    PowerArguments made;
    for (std::size_t k = 0; k < kCount; ++k) {
        made.x.push_back(k % 2 ? arguments.Uniform(0.99, 1.01) : arguments.AnyDouble(0x1p-10, 0x1p10));
        made.y.push_back(arguments.Uniform(-90, 90));
    }
    return made;
}

// The same on every platform and processor, by every compiler and with every option.
TEST(Columns, BitsOfAllLevels) {
    constexpr std::uint64_t kHashes[kElementaryFunctions] = {
        0x95b7316549bcecb5, 0x7af794d283eca7eb, 0x4d92e98645926221, 0x9daef74139b5defb, 0xdd90bfdc0e12ccca,
        0xa23dfb9f679c68eb, 0x4b832b10dbe8e251, 0x9a10b0e65f91e468, 0x4949e16a969958af};
    constexpr std::uint64_t kHashOfPow = 0x438ae47592aa6d9c;
    for (int f = 0; f < kElementaryFunctions; ++f) {
        RandomArguments arguments;
        std::vector<double> x;
        std::vector<double> scalar;
        for (std::size_t k = 0; k < kCount; ++k) {
            const double near = k % 4 == 0 ? 0.001 : 1;
            x.push_back(near * arguments.Uniform(kFunctions[f].lowest, kFunctions[f].highest));
            scalar.push_back(kFunctions[f].scalar(x.back()));
        }
        EXPECT_EQ(Hash(scalar), kHashes[f]) << kFunctions[f].name;
        for (const Level level : Levels()) {
            std::vector<double> inPlace = x;
            (ColumnsOf(level).*kFunctions[f].column)(inPlace.data(), inPlace.data(), kCount);
            EXPECT_EQ(Hash(inPlace), kHashes[f]) << kFunctions[f].name << ' ' << static_cast<int>(level);
        }
    }
    const PowerArguments powers = MakePowerArguments();
    for (const Level level : Levels()) {
        std::vector<double> inPlace = powers.x;
        ColumnsOf(level).pow(inPlace.data(), inPlace.data(), powers.y.data(), kCount);
        EXPECT_EQ(Hash(inPlace), kHashOfPow) << static_cast<int>(level);
    }
    EXPECT_EQ(elementary::Pow(powers.x[5], powers.y[5]), [&] {
        double power = 0;
        elementary::CurrentColumns().pow(&power, &powers.x[5], &powers.y[5], 1);
        return power;
    }());
}

std::vector<std::uint64_t> BitsOf(const std::vector<double>& values) {
    std::vector<std::uint64_t> bits;
    bits.reserve(values.size());
    for (const double value : values)
        bits.push_back(std::bit_cast<std::uint64_t>(value));
    return bits;
}

// Special arguments among others, in each place of a vector, and lengths that leave a part of one.
TEST(ColumnsDomain, SpecialArgumentsAtAnyPlace) {
    const double special[] = {0.0,
                              -0.0,
                              -1,
                              -3,
                              1e300,
                              -1e300,
                              1e-310,
                              30,
                              std::numeric_limits<double>::infinity(),
                              -std::numeric_limits<double>::infinity(),
                              std::numeric_limits<double>::quiet_NaN()};
    for (const Level level : Levels()) {
        for (const double argument : special) {
            for (std::size_t n = 0; n < 20; ++n) {
                std::vector<double> x(20, 0.75);
                x[n * 7 % 20] = argument;
                for (const ElementaryFunction& f : kFunctions) {
                    std::vector<double> expected(20, 17);
                    for (std::size_t k = 0; k < n; ++k)
                        expected[k] = f.scalar(x[k]);
                    std::vector<double> out(20, 17);
                    (ColumnsOf(level).*f.column)(out.data(), x.data(), n);
                    EXPECT_EQ(BitsOf(out), BitsOf(expected)) << f.name << ' ' << argument << ' ' << n;
                }
                const std::vector<double> y(x.rbegin(), x.rend());
                std::vector<double> out(20, 17);
                ColumnsOf(level).pow(out.data(), x.data(), y.data(), n);
                for (std::size_t k = 0; k < 20; ++k)
                    EXPECT_EQ(std::bit_cast<std::uint64_t>(out[k]),
                              std::bit_cast<std::uint64_t>(k < n ? elementary::Pow(x[k], y[k]) : 17.0))
                        << argument << ' ' << n << ' ' << k;
            }
        }
    }
}

TEST(Columns, LevelCanBeLimited) {
    processor::LimitLevel(Level::One);
    EXPECT_EQ(&elementary::CurrentColumns(), &ColumnsOf(Level::One));
    processor::LimitLevel(Level::Eight);
    EXPECT_EQ(&elementary::CurrentColumns(), &ColumnsOf(processor::HighestLevel()));
}

}  // namespace
}  // namespace zul::test
