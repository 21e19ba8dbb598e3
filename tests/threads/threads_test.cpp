// Several threads at once on different objects. Built with the thread sanitizer too, which looks for data that
// they share.
#include <gtest/gtest.h>

#include <algorithm>
#include <barrier>
#include <bit>
#include <cstdint>
#include <functional>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <vector>

#include "frame/traps.h"
#include "platforms/recording.h"
#include "sampling/slots.h"
#include "zul/frame.h"

namespace zul {
namespace {

using test::Parameters;
using Results = std::vector<double>;

constexpr unsigned kThreads = 4;
constexpr unsigned kRounds = 3;

// What a thread does, by an object of its own.
struct Work {
    std::function<Results(unsigned seed)> run;
    // It writes the numeric error state: calls are not to meet.
    bool isSerialised = false;
};

template <typename Record>
Work Recording(Record record, bool serialised) {
    return {[record](unsigned seed) {
                test::Recording recording;
                record(recording, seed);
                Results r;
                for (const test::Recorded& recorded : recording.Table())
                    r.push_back(recorded.value);
                return r;
            },
            serialised};
}

// A sampler's operation, with parameters that all of them can do something with.
Results Draw(unsigned seed, const test::Slot& slot) {
    const test::SamplerPtr sampler = test::MakeSampler(seed + 1);
    Results r;
    for (const Parameters& parameters :
         {Parameters{0.5, 0.5, 2}, Parameters{30, 20, 10}, Parameters{0.25, 0.75, 0.5, 0.5}}) {
        Results deviates(20);
        slot.draw(*sampler, deviates.data(), 20, parameters);
        r.insert(r.end(), deviates.begin(), deviates.end());
    }
    r.push_back(sampler->GetSeed());
    return r;
}

// Traps of the thread's own and of a sampler, each ended by an exception.
Results Trap(unsigned seed) {
    Results r;
    const auto count = [&r](auto call) {
        try {
            call();
            r.push_back(0);
        } catch (const std::overflow_error&) {
            r.push_back(1);
        } catch (const std::invalid_argument&) {
            r.push_back(2);
        } catch (const std::runtime_error&) {
            r.push_back(3);
        }
        ResetFpuStates();
    };
    const test::SamplerPtr sampler = test::MakeSampler(seed + 1);
    for (int i = 0; i < 20; ++i) {
        Results out(50);
        count([&] { sampler->SampleExponential(out.data(), 50, 1e308, 0); });
        r.push_back(sampler->GetSeed());
        r.insert(r.end(), out.begin(), out.end());
        SetKelFpuStates();
        count([] { test::Divide(1, 0); });
        SetKelFpuStates();
        count([] { test::Divide(0, 0); });
    }
    return r;
}

std::vector<Work> Works() {
    std::vector<Work> works = {{Trap},
                               Recording(test::RecordDescriptive, false),
                               Recording(test::RecordClustering, false),
                               Recording(test::RecordTests, true),
                               Recording(test::RecordBoxplots, true),
                               Recording(test::RecordDistributions, true)};
    for (const auto& [name, slot] : test::Slots()) {
        const bool isByQuantile = name == "Poisson" || name == "T" || name.starts_with("NegBinomial");
        works.push_back({[&draw = slot](unsigned seed) { return Draw(seed, draw); }, isByQuantile});
    }
    return works;
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
