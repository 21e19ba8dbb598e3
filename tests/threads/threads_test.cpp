// Several threads at once on different objects. Built with the thread sanitizer too, which looks for data that
// they share.
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <barrier>
#include <bit>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <thread>
#include <vector>

#include "frame/traps.h"
#include "platforms/recording.h"
#include "sampling/slots.h"
#include "zul/distributions.h"
#include "zul/frame.h"

namespace zul {
namespace {

using test::Parameters;
using Results = std::vector<double>;

constexpr unsigned kThreads = 4;
constexpr unsigned kRounds = 3;

// What a thread does, on objects of its own.
using Work = std::function<Results(unsigned seed)>;

template <typename Record>
Work Recorder(Record record) {
    return [record](unsigned seed) {
        test::Recording recording;
        record(recording, seed);
        Results r;
        for (const test::Result& result : recording.Table())
            r.push_back(result.value);
        return r;
    };
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

// Calls that end with a failure in the numeric error state.
Results Fail(unsigned) {
    Results r;
    for (int i = 0; i < 100; ++i) {
        for (const double p : {-1.0, 2.0}) {
            r.insert(r.end(), {NormalInvCdf(p, 0, 1), GammaInvCdf(p, 2, 1, 0), BetaInvCdf(p, 2, 3),
                               TInvCdf(p, 5, 0), BinomialInvCdf(p, 10, 0.5), PoissonInvCdf(p, 3)});
        }
    }
    return r;
}

std::vector<Work> Works() {
    std::vector<Work> works = {Trap,
                               Fail,
                               Recorder(test::RecordDescriptive),
                               Recorder(test::RecordClustering),
                               Recorder(test::RecordTests),
                               Recorder(test::RecordVariances),
                               Recorder(test::RecordRankTests),
                               Recorder(test::RecordBoxplots),
                               Recorder(test::RecordTables),
                               Recorder(test::RecordFits),
                               Recorder(test::RecordDistributions)};
    for (const auto& [name, slot] : test::Slots())
        works.emplace_back([&draw = slot](unsigned seed) { return Draw(seed, draw); });
    return works;
}

bool HaveTheSameBits(const Results& a, const Results& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](double x, double y) {
        return std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y);
    });
}

// The threads register at the same time, as the first of their process, and nothing orders what they do. One more
// makes calls that fail for as long as the others compute.
TEST(Threads, GetTheResultsOfOne) {
    const std::vector<Work> works = Works();
    std::vector<std::vector<Results>> results(kThreads, std::vector<Results>(works.size()));
    std::barrier start(kThreads + 1);
    std::atomic<unsigned> running = kThreads;
    const auto compute = [&](unsigned thread) {
        start.arrive_and_wait();
        RegisterKelSigfpeHandler();
        for (std::size_t i = 0; i < works.size() * kRounds; ++i) {
            const std::size_t at = (i + thread * works.size() / kThreads) % works.size();
            results[thread][at] = works[at](thread);
        }
        --running;
    };
    {
        std::vector<std::jthread> threads;
        for (unsigned thread = 0; thread < kThreads; ++thread)
            threads.emplace_back(compute, thread);
        threads.emplace_back([&] {
            start.arrive_and_wait();
            RegisterKelSigfpeHandler();
            while (running != 0)
                Fail(0);
        });
    }
    RegisterKelSigfpeHandler();
    for (unsigned thread = 0; thread < kThreads; ++thread)
        for (std::size_t i = 0; i < works.size(); ++i)
            EXPECT_TRUE(HaveTheSameBits(results[thread][i], works[i](thread))) << thread << " " << i;
}

// Without a trap a thread need not register.
TEST(Threads, GetAnErrorStateWithoutRegistering) {
    for (int i = 0; i < 100; ++i) {
        std::thread([] {
            EXPECT_EQ(NormalCdf(0.5, 0, 1, false) + NormalCdf(0.5, 0, 1, true), 1);
            EXPECT_TRUE(IsNaN(NormalInvCdf(2, 0, 1)));
        }).join();
    }
}

}  // namespace
}  // namespace zul

// Without the usual environment, which would register the first thread before the others.
int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
