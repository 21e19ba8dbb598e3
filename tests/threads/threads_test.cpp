// Several threads at once on different objects. Built with the thread sanitizer too, which looks for data that
// they share.
#include <gtest/gtest.h>

#include <algorithm>
#include <barrier>
#include <bit>
#include <cstdint>
#include <mutex>
#include <thread>
#include <vector>

#include "threads/works.h"
#include "zul/frame.h"

namespace zul {
namespace {

using test::Results;
using test::Work;

constexpr unsigned kThreads = 4;
constexpr unsigned kRounds = 3;

std::vector<Work> Works() {
    std::vector<Work> all;
    for (const auto& works :
         {test::DescriptiveWorks(), test::SamplerWorks(), test::ClusteringWorks(), test::DistributionWorks()})
        all.insert(all.end(), works.begin(), works.end());
    return all;
}

bool HaveTheSameBits(const Results& a, const Results& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](double x, double y) {
        return std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y);
    });
}

// The threads register at the same time, as the first of their process. The serialised works come last: before
// them nothing orders what the threads do, so that the sanitizer sees any two accesses that meet, however the
// threads happen to run.
TEST(Threads, GetTheResultsOfOne) {
    std::vector<Work> works = Works();
    const auto serialised = std::stable_partition(works.begin(), works.end(),
                                                  [](const Work& work) { return !work.isSerialised; });
    const auto freeCount = static_cast<std::size_t>(serialised - works.begin());
    std::vector<std::vector<Results>> results(kThreads, std::vector<Results>(works.size()));
    std::mutex serial;
    std::barrier start(kThreads);
    const auto run = [&](unsigned thread) {
        start.arrive_and_wait();
        RegisterKelSigfpeHandler();
        for (std::size_t i = 0; i < freeCount * kRounds; ++i) {
            const std::size_t at = (i + thread * freeCount / kThreads) % freeCount;
            results[thread][at] = works[at].run(thread);
        }
        for (std::size_t at = freeCount; at < works.size(); ++at) {
            const std::lock_guard lock(serial);
            results[thread][at] = works[at].run(thread);
        }
    };
    {
        std::vector<std::jthread> threads;
        for (unsigned thread = 0; thread < kThreads; ++thread)
            threads.emplace_back(run, thread);
    }
    RegisterKelSigfpeHandler();
    for (unsigned thread = 0; thread < kThreads; ++thread)
        for (std::size_t i = 0; i < works.size(); ++i)
            EXPECT_TRUE(HaveTheSameBits(results[thread][i], works[i].run(thread))) << thread << " " << i;
}

}  // namespace
}  // namespace zul

// Without the usual environment, which would register the first thread before the others.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
