#include <cmath>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <zul/clustering.h>

#include "bench.h"

#ifdef ZUL_BENCH_WITH_SCIPY
#include "python_peers.h"
#endif

namespace zul::bench {
namespace {

using namespace zul::dax;
using namespace zul::dax::clustering;

constexpr int kObjects = 2000;
constexpr std::int64_t kPairs = std::int64_t{kObjects} * (kObjects - 1) / 2;

using Table = std::shared_ptr<types::IRectangularArray<double>>;
using Matrix = std::shared_ptr<DistanceMatrix>;

Table DrawTable(int columns) {
    std::mt19937_64 generator(21);
    std::normal_distribution<> normal;
    Table table(types::MakeIRectangularArrayDouble(kObjects, columns));
    for (int row = 0; row < kObjects; ++row)
        for (int column = 0; column < columns; ++column)
            table->Set(row, column, normal(generator));
    return table;
}

// The distances that a program without this library would compute, one pair after the other.
void FillPlainly(const Table& table, std::vector<double>& out) {
    const int columns = table->ColumnCount();
    std::size_t next = 0;
    for (int i = 0; i < kObjects; ++i) {
        const double* const a = &table->At(i, 0);
        for (int j = 0; j < i; ++j) {
            const double* const b = &table->At(j, 0);
            double sum = 0;
            for (int column = 0; column < columns; ++column)
                sum += (a[column] - b[column]) * (a[column] - b[column]);
            out[next++] = std::sqrt(sum);
        }
    }
}

void AddDistances(int columns) {
    const std::string workload = "Euclidean, columns " + std::to_string(columns);
    const Table table = DrawTable(columns);
    const Matrix matrix(MakeDistanceMatrix(kObjects));
    AddBenchmark(workload, kOurs, kPairs,
                 [=] { CreateForClusterObservations(*table, Euclidean, false, *matrix); });
    AddBenchmark(workload, "plain loop", kPairs,
                 [=, out = std::vector<double>(kPairs)]() mutable { FillPlainly(table, out); });
#ifdef ZUL_BENCH_WITH_SCIPY
    AddTimedBenchmark(workload, "SciPy", kPairs,
                      [columns] { return SecondsInPython("euclidean", kObjects, columns); });
#endif
}

// A run overwrites its matrix, so each is after a computation of the distances.
void AddLinkage(const std::string& name, LinkageEnums linkage) {
    const Table table = DrawTable(6);
    const Matrix matrix(MakeDistanceMatrix(kObjects));
    AddBenchmark("distances + " + name, kOurs, kPairs, [=] {
        CreateForClusterObservations(*table, SquaredEuclidean, false, *matrix);
        const std::unique_ptr<types::IReadableVector<ClusterStep>> steps(RunClustering(linkage, 1, *matrix));
        benchmark::DoNotOptimize(steps->size());
    });
}

}  // namespace

void AddClusteringBenchmarks() {
    AddDistances(10);
    AddDistances(100);
    AddLinkage("average", Average);
    AddLinkage("single", Single);
    AddLinkage("Ward", Ward);
    AddLinkage("centroid", Centroid);
}

}  // namespace zul::bench
