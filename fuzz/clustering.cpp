// Clustering of random tables and matrices, the library's and a host's: the joins are those of the written rules,
// and every cut of them, or of random joins, is the partition that they make.
#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <numeric>
#include <tuple>

#include "clustering/written_steps.h"
#include "fuzz/clustering/parts.h"
#include "fuzz/support/check.h"
#include "fuzz/support/input.h"
#include "fuzz/support/values.h"
#include "support/host_objects.h"
#include "zul/clustering.h"

namespace zul::fuzz {
namespace {

using namespace dax::clustering;
using dax::types::IReadableVector;
using dax::types::IRectangularArray;
using dax::types::StatlibraryErrorCode;
using test::HostMatrix;
using test::HostSteps;

using Labels = std::unique_ptr<IReadableVector<int>>;
using Steps = std::vector<ClusterStep>;

constexpr std::size_t kMaxObjects = 16;

// The clusters of the objects after so many joins, by the lowest objects in order.
std::vector<int> Partition(const Steps& steps, std::size_t joins) {
    std::vector<int> lowest(steps.size() + 1);
    std::iota(lowest.begin(), lowest.end(), 0);
    for (std::size_t s = 0; s < joins; ++s)
        std::replace(lowest.begin(), lowest.end(), steps[s].cluster2, steps[s].cluster1);
    std::vector<int> numbers(lowest.size());
    int next = 0;
    for (std::size_t i = 0; i < lowest.size(); ++i) {
        const auto first = static_cast<std::size_t>(lowest[i]);
        numbers[i] = first == i ? next++ : numbers[first];
    }
    return numbers;
}

bool Equal(const Labels& labels, const std::vector<int>& expected) {
    return labels != nullptr && labels->EmptyImpl() == expected.empty() &&
           std::equal(expected.begin(), expected.end(), labels->DataImpl(),
                      labels->DataImpl() + labels->size());
}

// Every partition that valid joins make, and some cuts.
void CutEverywhere(Input& input, const Steps& steps) {
    const HostSteps host(steps);
    const int n = static_cast<int>(steps.size()) + 1;
    const int wrong = input.Integer();
    std::array<double, 3> levels{};
    for (double& level : levels)
        level = input.Flag() || steps.empty() ? AnyReal(input) : steps[input.Choice(steps.size())].similarity;
    std::vector<Labels> byNumber;
    std::vector<Labels> byCut;
    Run("FindMembers", [&] {
        for (int k = 1; k <= n; ++k)
            byNumber.emplace_back(FindMembersWithNumber(host, k));
        byNumber.emplace_back(FindMembersWithNumber(host, wrong));
        for (const double level : levels)
            byCut.emplace_back(FindMembersWithCut(host, level));
    });
    for (int k = 1; k <= n; ++k) {
        const std::vector<int> numbers = Partition(steps, static_cast<std::size_t>(n - k));
        Expect(Equal(byNumber[static_cast<std::size_t>(k) - 1], numbers), "another partition");
        if (wrong == k) Expect(Equal(byNumber.back(), numbers), "another partition");
    }
    for (std::size_t i = 0; i < levels.size(); ++i) {
        std::size_t joins = 0;
        while (joins < steps.size() && !(steps[joins].similarity < levels[i]))
            ++joins;
        Expect(Equal(byCut[i], Partition(steps, joins)), "another cut");
    }
    if (wrong < 1 || wrong > n) Expect(Equal(byNumber.back(), {}), "a partition into as many clusters");
}

// The joins by one matrix, and what they leave in it.
Steps Cluster(const test::WrittenSteps& written, LinkageEnums linkage, double maximum,
              const test::Square& distances, DistanceMatrix* matrix) {
    test::Fill(matrix, distances);
    test::Steps steps;
    Run("RunClustering", [&] { steps.reset(RunClustering(linkage, maximum, *matrix)); });
    const std::string difference = test::Difference(written, steps, *matrix);
    Require(difference.empty(), [&] { return Call("not as written", linkage, maximum) + difference; });
    return {steps->DataImpl(), steps->DataImpl() + steps->size()};
}

void ClusterBoth(Input& input, const test::Square& distances) {
    const int n = static_cast<int>(distances.size());
    const auto linkage = static_cast<LinkageEnums>(1000 + input.Choice(7));
    const double maximum = input.Flag() ? 10 : AnyReal(input);
    const test::WrittenSteps written(linkage, maximum, distances);
    const std::unique_ptr<DistanceMatrix> own(MakeDistanceMatrix(n));
    HostMatrix host(n);
    const Steps steps = Cluster(written, linkage, maximum, distances, own.get());
    Cluster(written, linkage, maximum, distances, &host);
    std::vector<int> sizes(distances.size(), 1);
    for (const ClusterStep& step : steps) {
        Expect(step.cluster1 >= 0 && step.cluster1 < step.cluster2 && step.cluster2 < n, "no clusters");
        int& size = sizes[static_cast<std::size_t>(step.cluster1)];
        int& absorbed = sizes[static_cast<std::size_t>(step.cluster2)];
        Expect(size > 0 && absorbed > 0 && step.size == size + absorbed, "a join of what is no more");
        size = step.size;
        absorbed = 0;
    }
    CutEverywhere(input, steps);
}

void RandomMatrices(Input& input) {
    const std::size_t n = 1 + input.Choice(kMaxObjects);
    const std::vector<double> values = Values(input, n * (n - 1) / 2);
    test::Square distances(n);
    std::size_t next = 0;
    for (std::size_t i = 0; i < n; ++i) {
        distances[i].reserve(i + 1);
        for (std::size_t j = 0; j < i; ++j)
            distances[i].push_back(values[next++]);
        distances[i].push_back(0);
    }
    ClusterBoth(input, distances);
}

using Table = std::unique_ptr<IRectangularArray<double>>;

Table MakeTable(Input& input, int rows, int columns) {
    Table table(dax::types::MakeIRectangularArrayDouble(rows, columns));
    Expect(table != nullptr && table->RowCount() == rows && table->ColumnCount() == columns, "no table");
    const std::vector<double> values =
        Values(input, static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    for (int i = 0; i < rows * columns; ++i)
        table->Set(i / columns, i % columns, values[static_cast<std::size_t>(i)]);
    // Rows that are alike.
    if (rows > 1 && input.Flag())
        for (int column = 0; column < columns; ++column)
            table->Set(rows - 1, column, table->At(0, column));
    return table;
}

// Neither squares nor sums overflow.
bool IsModerate(const Table& table) {
    std::vector<double> values;
    for (int i = 0; i < table->RowCount() * table->ColumnCount(); ++i)
        values.push_back(table->At(i / table->ColumnCount(), i % table->ColumnCount()));
    return AreModerate(values, 1e15);
}

// The library's matrix and a host's get the same distances, which hold, and the same joins.
template <typename Create, typename Holds>
void CreateBoth(Input& input, int n, bool isKnown, Create create, Holds holds) {
    const std::unique_ptr<DistanceMatrix> own(MakeDistanceMatrix(n));
    HostMatrix host(n);
    std::array statuses = {dax::types::Failure, dax::types::Failure};
    Run("CreateForCluster", [&] { statuses = {create(*own), create(host)}; });
    const auto expected = isKnown ? dax::types::Success : dax::types::Failure;
    Expect(statuses == std::array{expected, expected}, "status of the distances");
    if (!isKnown || n == 0) return;
    test::Square distances(static_cast<std::size_t>(n));
    for (int i = 0; i < n; ++i)
        for (int j = 0; j <= i; ++j) {
            const double distance = i == j ? 0 : (*own)(i, j);
            Expect(i == j || test::SameDistance(distance, host(i, j)), "the host's distances differ");
            Expect(i == j || holds(i, j, distance), "no distance");
            distances[static_cast<std::size_t>(i)].push_back(distance);
        }
    ClusterBoth(input, distances);
}

void Observations(Input& input) {
    const int n = static_cast<int>(input.Choice(kMaxObjects + 1));
    const int columns = std::max(1, static_cast<int>(input.Choice(9)));
    const int measure =
        input.Byte() < 240 ? 2000 + static_cast<int>(input.Choice(5)) : input.Integer() % 4096;
    const bool standardize = input.Flag();
    const Table table = MakeTable(input, n, columns);
    const bool isModerate = IsModerate(table);
    const auto areAlike = [&](int i, int j) {
        for (int column = 0; column < columns; ++column)
            if (table->At(i, column) != table->At(j, column)) return false;
        return true;
    };
    const auto holds = [&](int i, int j, double distance) {
        if (isModerate && areAlike(i, j)) return distance == 0;
        return !(distance < 0) && (!isModerate || std::isfinite(distance));
    };
    const auto create = [&](DistanceMatrix& out) {
        return CreateForClusterObservations(*table, static_cast<DistanceEnums>(measure), standardize, out);
    };
    CreateBoth(input, n, measure >= 2000 && measure <= 2004, create, holds);
}

void Variables(Input& input) {
    const int rows = static_cast<int>(input.Choice(12));
    const int n = static_cast<int>(input.Choice(12));
    const bool absolute = input.Flag();
    const Table table = MakeTable(input, rows, n);
    const bool isModerate = IsModerate(table);
    const auto holds = [&](int, int, double distance) {
        if (rows < 2) return distance != distance;  // no correlation
        return !isModerate || (distance >= -1e-9 && distance <= (absolute ? 1 : 2) + 1e-9);
    };
    const auto create = [&](DistanceMatrix& out) { return CreateForClusterVariables(*table, absolute, out); };
    CreateBoth(input, n, true, create, holds);
}

// Joins that no run made: valid ones, and any.
void RandomSteps(Input& input) {
    const std::size_t joins = input.Choice(kMaxObjects);
    const bool isValid = input.Flag();
    Steps steps;
    std::vector<int> active(joins + 1);
    std::iota(active.begin(), active.end(), 0);
    for (std::size_t s = 0; s < joins; ++s) {
        ClusterStep step{AnyReal(input), AnyReal(input), 0, 0, input.Integer()};
        if (isValid) {
            const std::size_t low = input.Choice(active.size() - 1);
            const std::size_t high = low + 1 + input.Choice(active.size() - 1 - low);
            std::tie(step.cluster1, step.cluster2) = std::tuple(active[low], active[high]);
            active.erase(active.begin() + static_cast<std::ptrdiff_t>(high));
        } else {
            const auto number = [&] {
                return input.Byte() < 250 ? static_cast<int>(input.Choice(joins + 1)) : input.Integer();
            };
            step.cluster1 = number();
            step.cluster2 = number();
        }
        steps.push_back(step);
    }
    if (isValid) {
        CutEverywhere(input, steps);
        return;
    }
    const int k = input.Byte() < 200 ? 1 + static_cast<int>(input.Choice(joins + 1)) : input.Integer();
    const HostSteps host(steps);
    std::array<Labels, 2> labels;
    const double level = AnyReal(input);
    Run("FindMembers of any joins", [&] {
        labels[0].reset(FindMembersWithNumber(host, k));
        labels[1].reset(FindMembersWithCut(host, level));
    });
    const auto isObject = [joins](int number) { return number >= 0 && number <= static_cast<int>(joins); };
    const bool nameObjects = std::all_of(steps.begin(), steps.end(), [&](const ClusterStep& step) {
        return isObject(step.cluster1) && isObject(step.cluster2);
    });
    const bool hasNumber = k >= 1 && isObject(k - 1);
    Expect(labels[0] != nullptr && labels[1] != nullptr, "no labels");
    Expect(labels[0]->size() == (nameObjects && hasNumber ? joins + 1 : 0), "labels of joins that are none");
    Expect(labels[1]->size() == (nameObjects ? joins + 1 : 0), "labels of joins that are none");
}

}  // namespace
}  // namespace zul::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace zul::fuzz;
    constexpr std::array kTargets = {RandomMatrices, RandomMatrices, RandomMatrices, Observations,
                                     Variables,      RandomSteps,    MatrixElements, Vectors};
    Input input(data, size);
    kTargets[input.Choice(kTargets.size())](input);
    return 0;
}
