#include <algorithm>
#include <array>
#include <iomanip>
#include <ios>
#include <iterator>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench.h"
#include "processor/level.h"

namespace zul::bench {
namespace {

std::string Fixed(double value) {
    std::ostringstream text;
    text << std::fixed << std::setprecision(2) << value;
    return text.str();
}

// The median of each benchmark, and one line for each workload: ours against the fastest of the peers. All is
// printed in the end and in the order of registration, since interleaved benchmarks finish in random order. The
// table is one of Markdown: the manual takes it as it is.
class WorkloadReporter : public benchmark::ConsoleReporter {
public:
    WorkloadReporter() : ConsoleReporter(OO_None) {}

    void ReportRuns(const std::vector<Run>& runs) override {
        std::copy_if(runs.begin(), runs.end(), std::back_inserter(medians_), IsMedian);
    }

    void Finalize() override {
        std::sort(medians_.begin(), medians_.end(),
                  [](const Run& a, const Run& b) { return a.family_index < b.family_index; });
        ConsoleReporter::ReportRuns(medians_);
        GetOutputStream() << '\n';
        PrintLine({"workload", "ours (ns per element)", "best peer (name, ns)", "ratio"});
        PrintLine({"---", "---:", "---:", "---:"});
        for (const Workload& workload : Workloads())
            PrintLine(Cells(workload));
        constexpr int kLanes[] = {1, 2, 4, 8};
        GetOutputStream()
            << "\nMedians of the CPU time. The ratio is ours / peer: below 1 we are faster. Lanes: "
            << kLanes[static_cast<int>(processor::CurrentLevel())] << ".\n";
    }

private:
    struct Timing {
        std::string library;
        double nanoseconds;
    };
    struct Workload {
        std::string name;
        std::vector<Timing> ours;  // none where a filter left it out
        std::vector<Timing> peers;
    };

    // A single repetition has no aggregates.
    static bool IsMedian(const Run& run) {
        return run.aggregate_name == "median" || (run.run_type == Run::RT_Iteration && run.repetitions == 1);
    }

    std::vector<Workload> Workloads() const {
        std::vector<Workload> workloads;
        for (const Run& run : medians_) {
            const std::string& name = run.run_name.function_name;
            const auto slash = name.rfind('/');
            const Timing timing{name.substr(slash + 1), 1e9 / run.counters.at("items_per_second")};
            const std::string workload = name.substr(0, slash);
            if (workloads.empty() || workloads.back().name != workload)
                workloads.push_back({workload, {}, {}});
            (timing.library == kOurs ? workloads.back().ours : workloads.back().peers).push_back(timing);
        }
        return workloads;
    }

    static std::array<std::string, 4> Cells(const Workload& workload) {
        const auto faster = [](const Timing& a, const Timing& b) { return a.nanoseconds < b.nanoseconds; };
        const auto ours = std::min_element(workload.ours.begin(), workload.ours.end(), faster);
        const auto peer = std::min_element(workload.peers.begin(), workload.peers.end(), faster);
        const bool hasOurs = ours != workload.ours.end();
        const bool hasPeer = peer != workload.peers.end();
        return {workload.name, hasOurs ? Fixed(ours->nanoseconds) : "-",
                hasPeer ? peer->library + ", " + Fixed(peer->nanoseconds) : "-",
                hasOurs && hasPeer ? Fixed(ours->nanoseconds / peer->nanoseconds) : "-"};
    }

    void PrintLine(const std::array<std::string, 4>& cells) {
        GetOutputStream() << "| " << std::left << std::setw(34) << cells[0] << " | " << std::right
                          << std::setw(21) << cells[1] << " | " << std::setw(20) << cells[2] << " | "
                          << std::setw(5) << cells[3] << " |\n";
    }

    std::vector<Run> medians_;
};

}  // namespace

int Run(int argc, char** argv, Subsystems subsystems) {
    // Defaults: a flag of the command line comes after them and wins.
    std::string defaults[] = {"--benchmark_repetitions=9", "--benchmark_enable_random_interleaving=true",
                              "--benchmark_min_time=0.05"};
    std::vector<char*> arguments = {argv[0]};
    for (std::string& flag : defaults)
        arguments.push_back(flag.data());
    std::string filter;
    for (int i = 1; i < argc; ++i) {
        if (argv[i][0] == '-')
            arguments.push_back(argv[i]);
        else
            filter = std::string("--benchmark_filter=") + argv[i];
    }
    if (!filter.empty()) arguments.push_back(filter.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;

    for (const auto addBenchmarks : subsystems)
        addBenchmarks();
    WorkloadReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::Shutdown();
    return 0;
}

}  // namespace zul::bench
