// Clustering of random tables and matrices, the library's and a host's: the joins are those of the written rules,
// and every cut of them, or of random joins, is the partition that they make.
#include <map>
#include <memory>
#include <numeric>

#include "clustering/written_steps.h"
#include "fuzz/support/target.h"
#include "support/host_objects.h"
#include "zul/clustering.h"

namespace zul::fuzz {
namespace {

using namespace dax::clustering;
using namespace dax::types;

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

// cut() gives the expected labels.
template <typename Cut>
void ExpectCut(const char* name, Cut cut, const std::vector<int>& expected) {
    Labels labels;
    Run(name, [&] { labels.reset(cut()); });
    Expect(labels != nullptr && labels->EmptyImpl() == expected.empty() &&
               std::equal(expected.begin(), expected.end(), labels->DataImpl(),
                          labels->DataImpl() + labels->size()),
           name, "another partition");
}

// Every partition that valid joins make, and some cuts.
void CutEverywhere(Input& input, const Steps& steps) {
    const test::HostSteps host(steps);
    const int n = static_cast<int>(steps.size()) + 1;
    const int any = input.Integer();
    std::array<double, 3> levels{};
    for (double& level : levels)
        level = input.Flag() || steps.empty() ? AnyReal(input) : steps[input.Choice(steps.size())].similarity;
    for (const int k : {1, n / 2, n, any}) {
        const bool isNumber = k >= 1 && k <= n;
        ExpectCut(
            "FindMembersWithNumber", [&] { return FindMembersWithNumber(host, k); },
            isNumber ? Partition(steps, static_cast<std::size_t>(n - k)) : std::vector<int>());
    }
    for (const double level : levels) {
        const auto end =
            std::ranges::find_if(steps, [=](const auto& step) { return step.similarity < level; });
        ExpectCut(
            "FindMembersWithCut", [&] { return FindMembersWithCut(host, level); },
            Partition(steps, static_cast<std::size_t>(end - steps.begin())));
    }
}

// The joins by the library's matrix, those by a host's being the same.
void ClusterBoth(Input& input, const test::Square& distances) {
    const int n = static_cast<int>(distances.size());
    const auto linkage = static_cast<LinkageEnums>(1000 + input.Choice(7));
    const double maximum = input.Flag() ? 10 : AnyReal(input);
    const test::WrittenSteps written(linkage, maximum, distances);
    const std::unique_ptr<DistanceMatrix> own(MakeDistanceMatrix(n));
    test::HostMatrix host(n);
    test::Steps steps;
    for (DistanceMatrix* const matrix : {static_cast<DistanceMatrix*>(&host), own.get()}) {
        test::Fill(matrix, distances);
        Run("RunClustering", [&] { steps.reset(RunClustering(linkage, maximum, *matrix)); });
        const std::string difference = test::Difference(written, steps);
        Require(difference.empty(), [&] { return Call("not as written", linkage, maximum) + difference; });
    }
    CutEverywhere(input, {steps->DataImpl(), steps->DataImpl() + steps->size()});
}

void RandomMatrices(Input& input) {
    const std::size_t n = 1 + input.Choice(kMaxObjects);
    const Data values = Values(input, n * (n - 1) / 2);
    test::Square distances(n);
    for (std::size_t i = 0; i < n; ++i) {
        const auto row = values.begin() + static_cast<std::ptrdiff_t>((i * i - i) / 2);
        distances[i].assign(row, row + static_cast<std::ptrdiff_t>(i));
        distances[i].push_back(0);
    }
    ClusterBoth(input, distances);
}

using Table = std::unique_ptr<IRectangularArray<double>>;

Table MakeTable(Input& input, int rows, int columns) {
    Table table(MakeIRectangularArrayDouble(rows, columns));
    Expect(table != nullptr && table->RowCount() == rows && table->ColumnCount() == columns, "no table");
    const Data values = Values(input, static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    for (int i = 0; i < rows * columns; ++i)
        table->Set(i / columns, i % columns, values[static_cast<std::size_t>(i)]);
    // Rows that are alike.
    const bool areAlike = rows > 1 && input.Flag();
    for (int column = 0; areAlike && column < columns; ++column)
        table->Set(rows - 1, column, table->At(0, column));
    return table;
}

// The library's matrix and a host's get the same distances and the same joins.
template <typename Create>
void CreateBoth(Input& input, int n, bool isKnown, Create create) {
    const std::unique_ptr<DistanceMatrix> own(MakeDistanceMatrix(n));
    test::HostMatrix host(n);
    std::array statuses = {Failure, Failure};
    Run("CreateForCluster", [&] { statuses = {create(*own), create(host)}; });
    const auto expected = isKnown ? Success : Failure;
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
    CreateBoth(input, n, measure >= 2000 && measure <= 2004, [&](DistanceMatrix& out) {
        return CreateForClusterObservations(*table, static_cast<DistanceEnums>(measure), standardize, out);
    });
}

void Variables(Input& input) {
    const int rows = static_cast<int>(input.Choice(12));
    const int n = static_cast<int>(input.Choice(12));
    const bool absolute = input.Flag();
    const Table table = MakeTable(input, rows, n);
    CreateBoth(input, n, true,
               [&](DistanceMatrix& out) { return CreateForClusterVariables(*table, absolute, out); });
}

// Joins that no run made: valid ones, and any.
void RandomSteps(Input& input) {
    const std::size_t joins = input.Choice(kMaxObjects);
    const bool isValid = input.Flag();
    Steps steps;
    std::vector<int> active(joins + 1);
    std::iota(active.begin(), active.end(), 0);
    const auto number = [&] {
        return input.Byte() < 250 ? static_cast<int>(input.Choice(joins + 1)) : input.Integer();
    };
    for (std::size_t s = 0; s < joins; ++s) {
        ClusterStep step{AnyReal(input), AnyReal(input), 0, 0, input.Integer()};
        const std::size_t low = isValid ? input.Choice(active.size() - 1) : 0;
        const std::size_t high = isValid ? low + 1 + input.Choice(active.size() - 1 - low) : 0;
        step.cluster1 = isValid ? active[low] : number();
        step.cluster2 = isValid ? active[high] : number();
        if (isValid) active.erase(active.begin() + static_cast<std::ptrdiff_t>(high));
        steps.push_back(step);
    }
    if (isValid) return CutEverywhere(input, steps);
    const int k = input.Byte() < 200 ? 1 + static_cast<int>(input.Choice(joins + 1)) : input.Integer();
    const test::HostSteps host(steps);
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
    const auto number = [&] { return static_cast<int>(input.Choice(9)) - 1; };
    const auto index = [&] { return input.Byte() < 240 ? number() : input.Integer(); };
    const int n = number();
    const std::unique_ptr<DistanceMatrix> matrix(MakeDistanceMatrix(n));
    Expect((matrix != nullptr) == (n >= 0), "MakeDistanceMatrix()");
    if (matrix == nullptr) return;
    int size = n;
    double filler = 0;
    std::map<std::pair<int, int>, double> set;
    for (int operation = 0; operation < 40; ++operation) {
        const int i = index();
        const int j = index();
        const bool isInside = i >= 0 && j >= 0 && i < size && j < size;
        const double value = AnyReal(input);
        if (input.Byte() < 8) {
            const int objects = static_cast<int>(input.Choice(10)) - 1;
            StatlibraryErrorCode status = Failure;
            Run("Init", [&] { status = matrix->Init(objects, value); });
            Expect((status == Success) == (objects >= 0), "Init()");
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
    const std::unique_ptr<IVector<double>> vector(MakeIVectorDouble(n, first));
    Data expected(n, first);
    for (int operation = 0; operation < 20; ++operation) {
        const std::size_t size = input.Choice(20);
        const std::size_t element = expected.empty() ? 0 : input.Choice(expected.size());
        const double any = AnyReal(input);
        const bool isOwn = !expected.empty() && input.Flag();
        const double value = isOwn ? expected[element] : any;
        const double& given = isOwn ? vector->AtImpl(element) : any;
        StatlibraryErrorCode status = Success;
        const std::size_t kind = input.Choice(5);
        Run("vector", [&] {
            if (kind == 0) status = vector->AssignImpl(size, given);
            if (kind == 1) status = vector->ResizeImpl(size, given);
            if (kind == 2) status = vector->ResizeImpl(size);
            if (kind == 3) status = vector->ReserveImpl(size * 10);
            if (kind == 4 && !expected.empty()) vector->AtImpl(element) = any;
        });
        if (kind == 0) expected.assign(size, value);
        if (kind == 1) expected.resize(size, value);
        if (kind == 2) expected.resize(size);
        if (kind == 4 && !expected.empty()) expected[element] = any;
        Expect(status == Success && vector->size() == expected.size() &&
                   vector->EmptyImpl() == expected.empty() &&
                   std::equal(expected.begin(), expected.end(), vector->DataImpl(), SameBits),
               "the vector differs");
    }
}

}  // namespace

void RunInput(Input& input) {
    constexpr std::array kTargets = {RandomMatrices, RandomMatrices, RandomMatrices, Observations,
                                     Variables,      RandomSteps,    MatrixElements, Vectors};
    input.OneOf(kTargets)(input);
}

}  // namespace zul::fuzz
