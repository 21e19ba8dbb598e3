#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <functional>
#include <iostream>
#include <memory>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#ifdef __GLIBC__
#include <pthread.h>
#endif

#include "clustering/written_steps.h"
#include "frame/traps.h"
#include "support/clustering.h"
#include "support/float_mode.h"
#include "support/reference_table.h"
#include "zul/clustering.h"
#include "zul/frame.h"

namespace zul::dax::clustering {
namespace {

using test::HostMatrix;
using test::MakeMatrix;
using test::Matrix;
using test::Square;
using test::Steps;
constexpr LinkageEnums kLinkages[] = {Average, Single, Complete, Ward, McQuitty, Median, Centroid};

// Both ways to run against the written rules, for each linkage.
void ExpectWritten(const Square& distances, const std::string& where) {
    const int n = static_cast<int>(distances.size());
    for (const LinkageEnums linkage : kLinkages) {
        const test::WrittenSteps written(linkage, 10, distances);
        const Matrix own = MakeMatrix(n);
        HostMatrix host(n);
        for (DistanceMatrix* m : {own.get(), static_cast<DistanceMatrix*>(&host)}) {
            test::Fill(m, distances);
            const Steps steps(RunClustering(linkage, 10, *m));
            ASSERT_EQ(test::Difference(written, steps), "")
                << where << ", linkage " << linkage << (m == &host ? ", host" : "");
        }
    }
}

Square Draw(std::size_t n, const std::function<double()>& draw) {
    Square distances(n);
    for (std::size_t i = 0; i < n; ++i) {
        for (std::size_t j = 0; j < i; ++j)
            distances[i].push_back(draw());
        distances[i].push_back(0);
    }
    return distances;
}

// From a few values, so that almost every choice is between ties, to none alike; with and without values that
// are no distances.
TEST(RunClustering, TakesTheWrittenSteps) {
    std::mt19937_64 random(11);
    for (int round = 0; round < 64 && !HasFatalFailure(); ++round) {
        const std::size_t n = round % 2 == 0 ? 2 + random() % 24 : 40 + random() % 60;
        const int values = std::vector<int>{1, 2, 3, 5, 10, 100, 1'000'000}[random() % 7];
        const double strange = round % 4 < 2 ? std::vector<double>{0.02, 0.3, 0.9, 1}[random() % 4] : 0;
        const auto draw = [&]() -> double {
            if (std::generate_canonical<double, 53>(random) >= strange)
                return static_cast<double>(1 + static_cast<int>(random() % static_cast<unsigned>(values)));
            return std::vector<double>{kNaN, kInf, -kInf, -1, -0.0}[random() % (round % 8 < 2 ? 1 : 5)];
        };
        ExpectWritten(Draw(n, draw), "round " + std::to_string(round));
    }
}

// The matrix of a reference case.
Matrix ReadCase(const test::Row& row) {
    if (row.at(1) != "matrix")
        return test::Distances(test::ReadDataTable(row.at(2), SIZE_MAX), row.at(3), row.at(4) == "1");
    const int n = static_cast<int>(test::Number(row.at(5)));
    Matrix m = MakeMatrix(n);
    for (const test::Row& matrix : test::ReadTable("clustering/matrices.csv", ',')) {
        if (matrix.at(0) != row.at(2)) continue;
        std::size_t next = 0;
        const std::vector<double> values = test::Numbers(matrix.at(2));
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < i; ++j)
                m->Set(i, j, values.at(next++));
    }
    return m;
}

// The joins of a reference case by a linkage.
Steps RunCase(const std::string& name, const std::string& linkage) {
    for (const test::Row& row : test::ReadTable("clustering/cases.csv", ','))
        if (row.at(0) == name)
            return Steps(RunClustering(static_cast<LinkageEnums>(static_cast<int>(test::Number(linkage))),
                                       test::Number(row.at(6)), *ReadCase(row)));
    return nullptr;
}

// Calls check(row, joins) for the rows of a table, whose first two cells name a case and a linkage.
template <typename Check>
void ForEachCase(const std::string& table, Check check) {
    std::string current;
    Steps steps;
    for (const test::Row& row : test::ReadTable(table, ',')) {
        if (current != row.at(0) + row.at(1)) steps = RunCase(row[0], row[1]);
        current = row[0] + row[1];
        ASSERT_NE(steps, nullptr);
        SCOPED_TRACE(testing::PrintToString(row));
        check(row, *steps);
    }
}

TEST(RunClustering, MatchesReference) {
    ForEachCase("clustering/steps.csv", [](const test::Row& row, const auto& steps) {
        const auto step = static_cast<std::size_t>(test::Number(row.at(2)));
        if (static_cast<double>(step) >= test::Number(row.at(8))) return;
        ASSERT_LT(step, steps.size());
        const ClusterStep& actual = steps[step];
        EXPECT_TRUE(actual.cluster1 == test::Number(row.at(5)) &&
                    actual.cluster2 == test::Number(row.at(6)) && actual.size == test::Number(row.at(7)));
        EXPECT_NEAR(actual.similarity, test::Number(row.at(3)), 1e-10);
        EXPECT_NEAR(actual.distance, test::Number(row.at(4)), 1e-12 * (1 + std::abs(actual.distance)));
    });
}

TEST(FindMembers, MatchesReference) {
    ForEachCase("clustering/membership.csv", [](const test::Row& row, const auto& steps) {
        const double argument = test::Number(row.at(3));
        const std::unique_ptr<types::IReadableVector<int>> labels(
            row.at(2) == "k" ? FindMembersWithNumber(steps, static_cast<int>(argument))
                             : FindMembersWithCut(steps, argument));
        const std::vector<double> expected = row.size() > 4 ? test::Numbers(row[4]) : std::vector<double>();
        EXPECT_EQ(std::vector<double>(labels->DataImpl(), labels->DataImpl() + labels->size()), expected);
    });
}

TEST(FindMembers, HasNoneOfStepsThatNameNoObjects) {
    for (const int wrong : {-1, 3})
        for (const auto& [low, high] : {std::pair{0, wrong}, {wrong, 2}}) {
            const test::HostSteps steps({{50, 1, 0, 1, 2}, {40, 1, low, high, 3}});
            EXPECT_TRUE(
                std::unique_ptr<types::IReadableVector<int>>(FindMembersWithNumber(steps, 2))->EmptyImpl());
        }
}

TEST(RunClustering, OfFewObjectsOrAnUnknownLinkage) {
    for (int n = 0; n < 2; ++n) {
        const Steps steps(RunClustering(Ward, 1, *MakeMatrix(n)));
        EXPECT_TRUE(steps != nullptr && steps->EmptyImpl());
    }
    EXPECT_EQ(Steps(RunClustering(Ward, 0, *MakeMatrix(2)))->size(), 1u);
    for (const int linkage : {999, 1007}) {
        testing::internal::CaptureStdout();
        EXPECT_EQ(RunClustering(static_cast<LinkageEnums>(linkage), 1, *MakeMatrix(3)), nullptr);
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "invalid linkage\n");
    }
}

// The matrix has fewer objects than rows, or more.
TEST(RunClustering, TakesDistancesOutsideForNaN) {
    const Matrix m = MakeMatrix(4);
    ASSERT_EQ(m->Init(2, 1), types::Success);
    const Steps steps(RunClustering(Average, 1, *m));
    const test::WrittenSteps written(Average, 1, {{0}, {1, 0}, {kNaN, kNaN, 0}, {kNaN, kNaN, kNaN, 0}});
    for (std::size_t s = 0; s < 3; ++s)
        EXPECT_TRUE(test::SameStep((*steps)[s], written.steps[s])) << s;
    ASSERT_EQ(m->Init(6, 1), types::Success);
    EXPECT_EQ(Steps(RunClustering(Average, 1, *m))->size(), 3u);
}

// A matrix whose operations do what the host has to say.
class ScriptedMatrix : public DistanceMatrix {
public:
    explicit ScriptedMatrix(std::function<double()> get) : get_(std::move(get)) {}

private:
    int RowCountImpl() const override { return 3; }
    double GetImpl(int, int) const override { return get_(); }
    void SetImpl(int, int, double) override {}
    StatlibraryErrorCode InitImpl(int, double) override { return types::Success; }

    std::function<double()> get_;
};

TEST(HostOperations, LetNoExceptionOutAndKeepTheMode) {
    ScriptedMatrix throwing([]() -> double { throw 1; });
    ScriptedMatrix trapping([] {
        SetKelFpuStates();
        return test::Divide(1, 0);
    });
    for (DistanceMatrix* const matrix : {&throwing, &trapping}) {
        for (const unsigned mode : {test::kDefaultMode, test::kForeignMode}) {
            _mm_setcsr(mode);
            const bool failed = RunClustering(Single, 1, *matrix) == nullptr;
            const unsigned after = _mm_getcsr();
            ResetFpuStates();
            EXPECT_TRUE(failed);
            EXPECT_EQ(after & ~test::kFlags, mode & ~test::kFlags);
        }
    }
}

TEST(ClusteringInTrappingMode, DoesNotTrapInTheLibrarysMatrix) {
    for (const LinkageEnums linkage : kLinkages) {
        const Matrix m = MakeMatrix(4);
        test::Fill(m.get(), {{0}, {1, 0}, {kNaN, kInf, 0}, {2, -kInf, 3, 0}});
        SetKelFpuStates();
        const Steps steps(RunClustering(linkage, 1, *m));
        const unsigned after = _mm_getcsr();
        ResetFpuStates();
        EXPECT_NE(steps, nullptr);
        EXPECT_EQ(after & ~test::kFlags, test::kTrappingMode & ~test::kFlags);
    }
}

#ifdef __GLIBC__
// The end of a thread passes through the library, in the middle of a host's operation and where the library writes
// the line about an unknown linkage.
TEST(RunClustering, LetsAThreadEnd) {
    const auto endsIn = [](const std::function<void()>& work) {
        bool wentOn = false;
        std::thread([&] {
            work();
            wentOn = true;
        }).join();
        return !wentOn;
    };
    EXPECT_TRUE(endsIn([] {
        ScriptedMatrix leaving([]() -> double { pthread_exit(nullptr); });
        delete RunClustering(Single, 1, leaving);
    }));
    EXPECT_TRUE(endsIn([] {
        ScriptedMatrix cancelled([] {
            pthread_cancel(pthread_self());
            pthread_testcancel();
            return 0.0;
        });
        delete RunClustering(Single, 1, cancelled);
    }));
    EXPECT_TRUE(endsIn([] {
        ScriptedMatrix any([] { return 1.0; });
        pthread_cancel(pthread_self());
        delete RunClustering(static_cast<LinkageEnums>(99), 1, any);
    }));
    EXPECT_TRUE(std::cout.good());
}
#endif

}  // namespace
}  // namespace zul::dax::clustering
