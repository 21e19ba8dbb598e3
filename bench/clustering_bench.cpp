#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <stdlib.h>
#include <unistd.h>

#include <zul/clustering.h>

#include "bench.h"
#include "peers.h"
#include "python_peer.h"

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

// A table of normal values with the file of them that peers.py reads, which goes with it. Rounded to tenths, the
// values make many distances equal.
class SharedTable {
public:
    SharedTable(int rows, int columns, bool isRounded)
        : table(types::MakeIRectangularArrayDouble(rows, columns)) {
        std::mt19937_64 generator(22);
        std::normal_distribution<> normal;
        std::FILE* const out = fdopen(mkstemp(path_), "wb");
        for (int row = 0; row < rows; ++row) {
            for (int column = 0; column < columns; ++column) {
                const double value = normal(generator);
                table->Set(row, column, isRounded ? std::round(value * 10) / 10 : value);
            }
            if (out != nullptr)
                std::fwrite(&table->At(row, 0), sizeof(double), static_cast<std::size_t>(columns), out);
        }
        if (out != nullptr) std::fclose(out);
        arguments = std::string(path_) + ' ' + std::to_string(columns);
    }
    ~SharedTable() { unlink(path_); }
    SharedTable(const SharedTable&) = delete;
    SharedTable& operator=(const SharedTable&) = delete;

    Table table;
    std::string arguments;  // the last ones of peers.py

private:
    char path_[32] = "/tmp/zul_bench_XXXXXX";
};

void AddDistances(int columns) {
    const std::string workload = "Euclidean, columns " + std::to_string(columns);
    const Table table = DrawTable(columns);
    const Matrix matrix(MakeDistanceMatrix(kObjects));
    AddBenchmark(workload, kOurs, kPairs,
                 [=] { CreateForClusterObservations(*table, Euclidean, false, *matrix); });
    AddBenchmark(workload, "plain loop", kPairs,
                 [=, out = std::vector<double>(kPairs)]() mutable { FillPlainly(table, out); });
    AddTimedBenchmark(workload, kScipy, kPairs,
                      [shared = std::make_shared<SharedTable>(kObjects, columns, false)] {
                          return SecondsInPython("pdist euclidean " + shared->arguments);
                      });
}

// Those that take the columns' means and deviations.
void AddStatisticalDistances(int columns) {
    const std::string suffix = ", columns " + std::to_string(columns);
    const Table table = DrawTable(columns);
    const auto shared = std::make_shared<SharedTable>(kObjects, columns, false);
    const auto addPeer = [=](const std::string& workload, std::int64_t pairs, const std::string& metric) {
        AddTimedBenchmark(workload, kScipy, pairs,
                          [=] { return SecondsInPython("pdist " + metric + ' ' + shared->arguments); });
    };
    AddBenchmark("Pearson" + suffix, kOurs, kPairs, [=, matrix = Matrix(MakeDistanceMatrix(kObjects))] {
        CreateForClusterObservations(*table, Pearson, false, *matrix);
    });
    addPeer("Pearson" + suffix, kPairs, "seuclidean");
    const std::int64_t pairs = std::int64_t{columns} * (columns - 1) / 2;
    AddBenchmark("between variables" + suffix, kOurs, pairs,
                 [=, matrix = Matrix(MakeDistanceMatrix(columns))] {
                     CreateForClusterVariables(*table, false, *matrix);
                 });
    addPeer("between variables" + suffix, pairs, "correlation");
}

double ThreadSeconds() {
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

// The joins alone, of 10,000 objects with 6 columns or fewer objects.
void AddJoins(const std::string& data, const std::shared_ptr<SharedTable>& shared) {
    const int objects = shared->table->RowCount();
    const std::int64_t pairs = std::int64_t{objects} * (objects - 1) / 2;
    const struct {
        LinkageEnums linkage;
        std::string method;
        DistanceEnums measure;
    } linkages[] = {{Single, "single", Euclidean},       {Complete, "complete", Euclidean},
                    {Average, "average", Euclidean},     {McQuitty, "weighted", Euclidean},
                    {Ward, "ward", SquaredEuclidean},    {Centroid, "centroid", SquaredEuclidean},
                    {Median, "median", SquaredEuclidean}};
    for (const auto& [linkage, method, measure] : linkages) {
        std::string workload = method;
        workload.append(", ").append(std::to_string(objects)).append(data);
        AddTimedBenchmark(workload, kOurs, pairs, [=, link = linkage, distance = measure] {
            const Matrix matrix(MakeDistanceMatrix(objects));
            CreateForClusterObservations(*shared->table, distance, false, *matrix);
            const double start = ThreadSeconds();
            const std::unique_ptr<types::IReadableVector<ClusterStep>> steps(RunClustering(link, 1, *matrix));
            benchmark::DoNotOptimize(steps->size());
            return ThreadSeconds() - start;
        });
        AddTimedBenchmark(workload, kFastcluster, pairs, [shared, arguments = "linkage " + method + ' '] {
            return SecondsInPython(arguments + shared->arguments);
        });
    }
}

// Each is the nearest of all lower ones, again and again: what a search finds is gone with the next join.
void AddFarthestFirst(int objects) {
    AddTimedBenchmark("complete, " + std::to_string(objects) + " to the last", kOurs,
                      std::int64_t{objects} * (objects - 1) / 2, [=] {
                          const Matrix matrix(MakeDistanceMatrix(objects));
                          for (int i = 0; i < objects; ++i)
                              for (int j = 0; j < i; ++j)
                                  matrix->Set(i, j, objects - i + 1e-7 * j);
                          const double start = ThreadSeconds();
                          const std::unique_ptr<types::IReadableVector<ClusterStep>> steps(
                              RunClustering(Complete, 1, *matrix));
                          benchmark::DoNotOptimize(steps->size());
                          return ThreadSeconds() - start;
                      });
}

// A run uses its matrix up, so each is after a computation of the distances.
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
    AddStatisticalDistances(10);
    AddStatisticalDistances(100);
    AddLinkage("average", Average);
    AddLinkage("single", Single);
    AddLinkage("Ward", Ward);
    AddLinkage("centroid", Centroid);
    constexpr int kColumns = 6;
    for (const int objects : {2500, 10000}) {
        AddJoins("", std::make_shared<SharedTable>(objects, kColumns, false));
        AddJoins(" tied", std::make_shared<SharedTable>(objects, kColumns, true));
        AddFarthestFirst(objects);
    }
}

}  // namespace zul::bench
