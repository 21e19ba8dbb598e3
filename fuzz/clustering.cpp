// Clustering of random tables and matrices, the library's and a host's: the joins are those of the written rules,
// and every cut of them, or of random joins, is the partition that they make.
#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <numeric>
#include <tuple>

#include "clustering/written_steps.h"
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
using dax::types::IVector;
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
    const int any = input.Integer();
    std::array<double, 3> levels{};
    for (double& level : levels)
        level = input.Flag() || steps.empty() ? AnyReal(input) : steps[input.Choice(steps.size())].similarity;
    for (const int k : {1, n / 2, n, any}) {
        Labels labels;
        Run("FindMembersWithNumber", [&] { labels.reset(FindMembersWithNumber(host, k)); });
        const bool isNumber = k >= 1 && k <= n;
        Expect(
            Equal(labels, isNumber ? Partition(steps, static_cast<std::size_t>(n - k)) : std::vector<int>()),
            "another partition");
    }
    for (const double level : levels) {
        Labels labels;
        Run("FindMembersWithCut", [&] { labels.reset(FindMembersWithCut(host, level)); });
        const auto end =
            std::ranges::find_if(steps, [=](const auto& step) { return step.similarity < level; });
        Expect(Equal(labels, Partition(steps, static_cast<std::size_t>(end - steps.begin()))), "another cut");
    }
}

// The joins by one matrix.
Steps Cluster(const test::WrittenSteps& written, LinkageEnums linkage, double maximum,
              const test::Square& distances, DistanceMatrix* matrix) {
    test::Fill(matrix, distances);
    test::Steps steps;
    Run("RunClustering", [&] { steps.reset(RunClustering(linkage, maximum, *matrix)); });
    const std::string difference = test::Difference(written, steps);
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
    CutEverywhere(input, steps);
}

void RandomMatrices(Input& input) {
    const std::size_t n = 1 + input.Choice(kMaxObjects);
    const std::vector<double> values = Values(input, n * (n - 1) / 2);
    auto value = values.begin();
    test::Square distances(n);
    for (std::size_t i = 0; i < n; ++i) {
        distances[i].assign(value, value + static_cast<std::ptrdiff_t>(i));
        distances[i].push_back(0);
        value += static_cast<std::ptrdiff_t>(i);
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

// The library's matrix and a host's get the same distances and the same joins.
template <typename Create>
void CreateBoth(Input& input, int n, bool isKnown, Create create) {
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
    const auto create = [&](DistanceMatrix& out) {
        return CreateForClusterObservations(*table, static_cast<DistanceEnums>(measure), standardize, out);
    };
    CreateBoth(input, n, measure >= 2000 && measure <= 2004, create);
}

void Variables(Input& input) {
    const int rows = static_cast<int>(input.Choice(12));
    const int n = static_cast<int>(input.Choice(12));
    const bool absolute = input.Flag();
    const Table table = MakeTable(input, rows, n);
    const auto create = [&](DistanceMatrix& out) { return CreateForClusterVariables(*table, absolute, out); };
    CreateBoth(input, n, true, create);
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
    Expect(labels[0] != nullptr && labels[1] != nullptr, "no labels");
}

// The library's matrix against a table of what was set.
void MatrixElements(Input& input) {
    const int n = static_cast<int>(input.Choice(9)) - 1;
    const std::unique_ptr<DistanceMatrix> matrix(MakeDistanceMatrix(n));
    Expect((matrix != nullptr) == (n >= 0), "MakeDistanceMatrix()");
    if (matrix == nullptr) return;
    int size = n;
    double filler = 0;
    std::map<std::pair<int, int>, double> set;
    for (int operation = 0; operation < 40; ++operation) {
        const auto number = [&] {
            return input.Byte() < 240 ? static_cast<int>(input.Choice(9)) - 1 : input.Integer();
        };
        const int i = number();
        const int j = number();
        const bool isInside = i >= 0 && j >= 0 && i < size && j < size;
        const double value = AnyReal(input);
        if (input.Byte() < 8) {
            const int objects = static_cast<int>(input.Choice(10)) - 1;
            StatlibraryErrorCode status = dax::types::Failure;
            Run("Init", [&] { status = matrix->Init(objects, value); });
            Expect((status == dax::types::Success) == (objects >= 0), "Init()");
            size = std::max(objects, 0);
            filler = value;
            set.clear();
            continue;
        }
        double read = 0;
        Run("Set", [&] {
            matrix->Set(i, j, value);
            read = (*matrix)(j, i);
        });
        if (isInside) set[std::minmax(i, j)] = value;
        Expect(isInside ? Same(read, value) : read != read, "an element of the matrix");
        Expect(matrix->RowCount() == n, "RowCount()");
    }
    for (int i = 0; i < size; ++i)
        for (int j = 0; j <= i; ++j)
            Expect(Same((*matrix)(i, j), set.contains({j, i}) ? set[{j, i}] : filler), "another element");
}

// The library's vector against the standard one.
void Vectors(Input& input) {
    const std::size_t n = input.Choice(9);
    const double first = AnyReal(input);
    const std::unique_ptr<IVector<double>> vector(dax::types::MakeIVectorDouble(n, first));
    std::vector<double> expected(n, first);
    for (int operation = 0; operation < 20; ++operation) {
        const std::size_t size = input.Choice(20);
        const std::size_t element = expected.empty() ? 0 : input.Choice(expected.size());
        const double any = AnyReal(input);
        const bool isOwn = !expected.empty() && input.Flag();
        const double value = isOwn ? expected[element] : any;
        const double& given = isOwn ? vector->AtImpl(element) : any;
        StatlibraryErrorCode status = dax::types::Failure;
        const std::size_t kind = input.Choice(5);
        Run("vector", [&] {
            status = kind == 0   ? vector->AssignImpl(size, given)
                     : kind == 1 ? vector->ResizeImpl(size, given)
                     : kind == 2 ? vector->ResizeImpl(size)
                     : kind == 3 ? vector->ReserveImpl(size * 10)
                                 : dax::types::Success;
            if (kind == 4 && !expected.empty()) vector->AtImpl(element) = any;
        });
        if (kind == 0) expected.assign(size, value);
        if (kind == 1) expected.resize(size, value);
        if (kind == 2) expected.resize(size);
        if (kind == 4 && !expected.empty()) expected[element] = any;
        const bool isSame = status == dax::types::Success && vector->size() == expected.size() &&
                            vector->EmptyImpl() == expected.empty() &&
                            std::equal(expected.begin(), expected.end(), vector->DataImpl(), SameBits);
        Expect(isSame, "the vector differs");
    }
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
