// The runs in the rows of the library's matrix, on data that take each of their ways, at each level of processors.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "clustering/rows/chunk_bounds.h"
#include "clustering/rows/row_lanes.h"
#include "clustering/written_steps.h"
#include "processor/level.h"
#include "support/clustering.h"

namespace zul::test {
namespace {

using namespace dax::clustering;
using processor::Level;

struct Case {
    std::string name;
    std::size_t n;
    std::function<double(std::size_t i, std::size_t j)> distance;  // i > j
};

double Draw() {
    static std::mt19937_64 random(5);
    return std::generate_canonical<double, 53>(random);
}

double Number(std::size_t i) {
    return static_cast<double>(i);
}

// The nearest of all objects is again and again the highest that is left.
double ToHighest(std::size_t i, std::size_t j) {
    return 1000 - Number(i) + Number(j) / 1024;
}

// Each object joins all that are higher than it: a chain as long as there are objects.
double ToHigher(std::size_t, std::size_t j) {
    return 1000 - Number(j);
}

const std::vector<Case>& Cases() {
    static const std::vector<Case> kCases = {
        {"one alone", 1, [](auto, auto) { return 1.0; }},
        {"no two alike", 540, [](auto, auto) { return Draw(); }},
        {"few values", 300, [](auto, auto) { return std::floor(Draw() * 9); }},
        {"a grid", 300,
         [](auto i, auto j) {
             return std::hypot(Number(i / 20) - Number(j / 20), Number(i % 20) - Number(j % 20));
         }},
        {"all alike", 150, [](auto, auto) { return 1.0; }},
        {"one pair of equal heights", 60,
         [](auto i, auto j) { return ToHigher(i, std::max<std::size_t>(j, 1)); }},
        {"no equal heights", 60, ToHigher},
        {"to the highest", 180, ToHighest},
        {"to the highest, with ties", 180, [](auto i, auto) { return 1000 - Number(i); }},
        {"to the highest, with strange ones", 180,
         [](auto i, auto j) {
             constexpr double kStrange[] = {kNaN, kInf, -kInf, -0.0, 0.0};
             return (i * 7 + j) % 50 == 0 ? kStrange[(i + j) % 5] : ToHighest(i, j);
         }},
        {"to the highest, or infinite", 180, [](auto i, auto j) { return j < 120 ? kInf : ToHighest(i, j); }},
        {"to the highest, then any", 400,
         [](auto i, auto) { return i < 340 ? 1000 + std::floor(Draw() * 300) : 1000 - Number(i); }},
        {"hardly any number", 150, [](auto i, auto j) { return (i + j) % 40 == 0 ? Number(i) : kNaN; }},
        {"zeros", 100, [](auto i, auto j) { return (i + j) % 3 == 0 ? -0.0 : 0.0; }},
    };
    return kCases;
}

Square DrawSquare(const Case& c) {
    Square distances(c.n);
    for (std::size_t i = 0; i < c.n; ++i) {
        for (std::size_t j = 0; j < i; ++j)
            distances[i].push_back(c.distance(i, j));
        distances[i].push_back(0);
    }
    return distances;
}

bool HaveSameBits(const Steps& a, const Steps& b) {
    return std::equal(a->DataImpl(), a->DataImpl() + a->size(), b->DataImpl(),
                      [](const ClusterStep& x, const ClusterStep& y) {
                          return std::bit_cast<std::uint64_t>(x.distance) ==
                                     std::bit_cast<std::uint64_t>(y.distance) ||
                                 (std::isnan(x.distance) && std::isnan(y.distance));
                      });
}

TEST(Rows, TakeTheWrittenStepsAtEachLevelForAnyArgument) {
    for (const Case& c : Cases()) {
        const Square distances = DrawSquare(c);
        for (int linkage = Average; linkage <= Centroid; ++linkage) {
            const WrittenSteps written(static_cast<LinkageEnums>(linkage), 10, distances);
            Steps first;
            for (const Level level : {Level::One, Level::Two, Level::Four, Level::Eight}) {
                processor::LimitLevel(level);
                const Matrix matrix = MakeMatrix(static_cast<int>(c.n));
                Fill(matrix.get(), distances);
                Steps steps(RunClustering(static_cast<LinkageEnums>(linkage), 10, *matrix));
                processor::LimitLevel(Level::Eight);
                ASSERT_EQ(Difference(written, steps), "") << c.name << ", linkage " << linkage;
                if (first == nullptr)
                    first = std::move(steps);
                else
                    ASSERT_TRUE(HaveSameBits(first, steps)) << c.name << ", linkage " << linkage;
            }
        }
    }
}

// One row of distances, and the searches in it by bounds and by looking at all. What changes comes nearer than what was
// there, or all is infinite or NaN.
class BoundedRow {
public:
    BoundedRow(std::size_t columns, bool isStrange)
        : isStrange_(isStrange), distances_(columns, -1), bounds_(CurrentRowLanes()) {
        bounds_.Use(1, columns);
        for (std::size_t column = 1; column < columns; ++column)  // the row itself is never found
            distances_[column] = DrawDistance();
        limit_ = 500;
    }

    void Change() {
        const std::size_t column = DrawColumn();
        distances_[column] = DrawDistance();
        bounds_.Include(0, column, distances_[column]);
        limit_ *= 0.995;
    }
    void Remove() { distances_[DrawColumn()] = kNaN; }
    void RemoveLast(std::size_t count) { std::fill_n(distances_.rbegin(), count, kNaN); }
    void Forget() { bounds_.Forget(0); }

    // The place of the nearest; 0: none.
    std::size_t SearchByBounds() {
        for (ChunkBounds::Chunk chunk; bounds_.FindNearest(0, chunk); bounds_.Set(0, chunk)) {
            const std::size_t begin = std::max(std::size_t{1}, chunk.number * ChunkBounds::kChunk);
            const std::size_t place =
                SearchAll(begin, std::min(distances_.size(), (chunk.number + 1) * ChunkBounds::kChunk));
            ++looks;
            if (place != 0 && distances_[place] == chunk.bound) return place;
            chunk.bound = place != 0 ? distances_[place] : kNaN;
        }
        return 0;
    }
    std::size_t SearchAll() const { return SearchAll(1, distances_.size()); }

    std::size_t looks = 0;

private:
    double DrawDistance() const {
        if (isStrange_) return Draw() < 0.5 ? kInf : kNaN;
        return std::floor((0.9 + Draw() / 10) * limit_);
    }
    std::size_t DrawColumn() const {
        return 1 + static_cast<std::size_t>(Draw() * Number(distances_.size() - 1));
    }
    std::size_t SearchAll(std::size_t begin, std::size_t end) const {
        std::size_t place = 0;
        for (std::size_t column = begin; column < end; ++column)
            if (distances_[column] <= (place != 0 ? distances_[place] : kInf)) place = column;
        return place;
    }

    bool isStrange_;
    double limit_ = 1e4;
    std::vector<double> distances_;
    ChunkBounds bounds_;
};

// On both sides of where chunks become one more and layers do.
TEST(ChunkBounds, LeadToTheHighestOfTheNearestForAnyArgument) {
    constexpr std::size_t kTurns = 400;
    for (const Level level : {Level::One, Level::Two, Level::Four, Level::Eight}) {
        processor::LimitLevel(level);
        for (const std::size_t columns : {2u, 64u, 65u, 4096u, 4097u, 16384u, 16385u, 30000u}) {
            for (const bool isStrange : {false, true}) {
                BoundedRow row(columns, isStrange);
                for (std::size_t turn = 0; turn < kTurns; ++turn) {
                    if (turn == kTurns / 4) row.Forget();
                    if (turn >= kTurns / 2) row.RemoveLast((columns - 1) * (2 * turn - kTurns) / kTurns);
                    row.Change();
                    row.Remove();
                    ASSERT_EQ(row.SearchByBounds(), row.SearchAll()) << columns << " columns, turn " << turn;
                }
                // What is known of a chunk is not looked for again.
                EXPECT_LE(row.looks, 2 * (columns / ChunkBounds::kChunk + 1) + 3 * kTurns) << columns;
            }
        }
        processor::LimitLevel(Level::Eight);
    }
}

}  // namespace
}  // namespace zul::test
