#include <gtest/gtest.h>

#include <array>
#include <exception>
#include <vector>

#include "allocations/calls.h"
#include "sampling/slots.h"
#include "support/allocations.h"
#include "support/float_mode.h"
#include "zul/frame.h"

namespace zul {
namespace {

using test::AllocatingCall;
using test::Outcome;

std::vector<AllocatingCall> AllocatingCalls() {
    std::vector<AllocatingCall> all;
    for (const auto& calls : {test::AllocatingDescriptive(), test::AllocatingDistributions(),
                              test::AllocatingFits(), test::AllocatingHypothesis(), test::AllocatingSampler(),
                              test::AllocatingClustering(), test::AllocatingContingency()})
        all.insert(all.end(), calls.begin(), calls.end());
    return all;
}

struct Result {
    Outcome outcome;
    int tried;
    int live;
};

Result RunWithFailure(const AllocatingCall& call, int failing) {
    const test::AllocationWatch watch(failing);
    const Outcome outcome = call.run(failing);
    return {outcome, watch.Count(), watch.Live()};
}

// The 1st, 2nd, ... allocation fails until the call needs none that does.
TEST(Allocations, ReportEachFailure) {
    int row = 0;
    for (const AllocatingCall& call : AllocatingCalls()) {
        ++row;
        for (int failing = 1;; ++failing) {
            SCOPED_TRACE("row " + std::to_string(row) + " " + call.name + " without allocation " +
                         std::to_string(failing));
            const Result run = RunWithFailure(call, failing);
            const bool hasFailed = run.tried >= failing;
            EXPECT_EQ(run.live, 0);
            EXPECT_EQ(test::ModeWithoutFlags(), test::kDefaultMode);
            EXPECT_TRUE(run.outcome == (hasFailed ? Outcome::Failure : Outcome::Success) ||
                        (call.isFrugal && run.outcome == Outcome::Success));
            EXPECT_TRUE(hasFailed || failing > 1) << "allocates nothing";
            if (!hasFailed) break;
        }
    }
}

TEST(Allocations, FewIndicesOfManyTakeLittle) {
    const test::SamplerPtr sampler = test::MakeSampler(5);
    std::array<unsigned, 3> out{};
    const test::AllocationWatch watch;
    EXPECT_EQ(sampler->SampleIndices(out.data(), 1000000, 3, true), 0);
    EXPECT_LT(watch.Bytes(), 1000);
}

// Nor does a call that ends in an exception. What other functions need is seen in their objects:
// check_allocations.sh.
TEST(Allocations, AreNotMadeForDeviates) {
    const test::SamplerPtr sampler = test::MakeSampler(5);
    for (const auto& [name, slot] : test::Slots())
        for (const test::Parameters& parameters :
             {test::Parameters{0.5, 0.5, 2}, {20, 7, 12}, {1e308, 1, 0}}) {
            if (name == "Discrete" || name == "Indices" || (slot.isDiscrete && parameters[0] > 20)) continue;
            std::array<double, 20> out{};
            const test::AllocationWatch watch(1);
            try {
                slot.draw(*sampler, out.data(), 20, parameters);
            } catch (const std::exception&) {
                ResetFpuStates();
            }
            EXPECT_EQ(watch.Count(), 0) << name;
        }
}

}  // namespace
}  // namespace zul
