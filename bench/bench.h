#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>

#include <benchmark/benchmark.h>

namespace zul::bench {

// The library name of this project's rows; every other one is a peer.
inline constexpr char kOurs[] = "zul";

// Adds the benchmark "workload/library", and none for a null library, the empty row of an absent peer. One
// call of `operation` works on `elements` elements.
template <typename Operation>
void AddBenchmark(const std::string& workload, const char* library, std::int64_t elements,
                  Operation operation) {
    if (library == nullptr) return;
    const std::string name = workload + '/' + library;
    auto run = [operation = std::move(operation), elements](benchmark::State& state) mutable {
        for (auto _ : state)
            operation();
        state.SetItemsProcessed(state.iterations() * elements);
    };
    benchmark::RegisterBenchmark(name.c_str(), std::move(run));
}

// The same for an operation that says how many seconds of processor time it took, for what is to be timed alone or
// runs in another process; as long a one is called a few times only.
template <typename Operation>
void AddTimedBenchmark(const std::string& workload, const char* library, std::int64_t elements,
                       Operation operation) {
    if (library == nullptr) return;
    const std::string name = workload + '/' + library;
    auto run = [operation = std::move(operation), elements](benchmark::State& state) mutable {
        for (auto _ : state)
            state.SetIterationTime(operation());
        state.SetItemsProcessed(state.iterations() * elements);
    };
    constexpr int kRepetitions = 3;
    auto* const registered = benchmark::RegisterBenchmark(name.c_str(), std::move(run));
    registered->UseManualTime()->Iterations(1)->Repetitions(kRepetitions);
}

using Subsystems = std::initializer_list<void (*)()>;

// Runs what the subsystems add, in their order, and prints the table. An argument that is no option is a filter.
int Run(int argc, char** argv, Subsystems subsystems);

// The same for a program of the library's objects, which the shared library hides: the arguments may begin with
// "--level" and the most doubles that a vector has, 8, 4, 2 or 1.
int RunAtLevel(int argc, char** argv, Subsystems subsystems);

// One for each subsystem.
void AddFrameBenchmarks();
void AddDistributionBenchmarks();
void AddDescriptiveBenchmarks();
void AddHypothesisBenchmarks();
void AddVarianceBenchmarks();
void AddFittingBenchmarks();
void AddRankTestBenchmarks();
void AddSamplerBenchmarks();
void AddClusteringBenchmarks();
void AddContingencyBenchmarks();

inline constexpr Subsystems kExports = {
    AddFrameBenchmarks,    AddDistributionBenchmarks, AddDescriptiveBenchmarks, AddHypothesisBenchmarks,
    AddVarianceBenchmarks, AddRankTestBenchmarks,     AddFittingBenchmarks,     AddContingencyBenchmarks,
    AddSamplerBenchmarks,  AddClusteringBenchmarks,
};

}  // namespace zul::bench
