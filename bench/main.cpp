#include "bench.h"

int main(int argc, char** argv) {
    using namespace zul::bench;
    return Run(argc, argv,
               {AddFrameBenchmarks, AddDistributionBenchmarks, AddDescriptiveBenchmarks,
                AddHypothesisBenchmarks, AddVarianceBenchmarks, AddRankTestBenchmarks, AddFittingBenchmarks,
                AddContingencyBenchmarks, AddSamplerBenchmarks, AddClusteringBenchmarks});
}
