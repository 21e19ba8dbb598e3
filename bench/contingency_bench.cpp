#include <memory>
#include <vector>

#include <zul/contingency.h>

#include "bench.h"

namespace zul::bench {
namespace {

std::vector<double> SomeCounts(unsigned cells) {
    std::vector<double> counts(cells);
    unsigned state = 1;
    for (double& count : counts) {
        state = state * 1103515245 + 12345;
        count = (state >> 16) % 20;
    }
    return counts;
}

void AddTable(const char* name, unsigned side) {
    const std::vector<double> counts = SomeCounts(side * side);
    AddBenchmark(name, kOurs, 1, [=] {
        int status = 0;
        IContingencyTable* table = MakeIContingencyTable(&status, counts.data(), side, side);
        TableChiSquare chiSquare;
        TableAssociation association;
        table->GetChiSquare(&chiSquare);
        table->GetAssociation(&association);
        benchmark::DoNotOptimize(chiSquare.pearson + association.gamma);
        DeleteIContingencyTable(&table);
    });
}

// Far from the mode of a wide distribution.
void AddFisher() {
    const double counts[] = {501'000, 499'000, 498'000, 502'500};
    int status = 0;
    const std::shared_ptr<IContingencyTable> table(
        MakeIContingencyTable(&status, counts, 2, 2),
        [](IContingencyTable* made) { DeleteIContingencyTable(&made); });
    AddBenchmark("table of 2e6, Fisher", kOurs, 1, [table] {
        TableFisher fisher;
        table->GetFisher(&fisher);
        benchmark::DoNotOptimize(fisher.twoSidedPValue);
    });
}

}  // namespace

void AddContingencyBenchmarks() {
    AddTable("table 5 x 5, test and measures", 5);
    AddTable("table 1000 x 1000, test and measures", 1000);
    AddFisher();
}

}  // namespace zul::bench
