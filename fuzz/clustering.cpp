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

template <typename T>
std::vector<T> Elements(const IReadableVector<T>& vector) {
    return {vector.DataImpl(), vector.DataImpl() + vector.size()};
}

// The clusters of the objects after the joins before `end`, by the lowest objects in order.
std::vector<int> Partition(const Steps& steps, Steps::const_iterator end) {
    std::vector<int> lowest(steps.size() + 1);
    std::iota(lowest.begin(), lowest.end(), 0);
    for (auto step = steps.begin(); step != end; ++step)
        std::ranges::replace(lowest, step->cluster2, step->cluster1);
    std::map<int, int> numbers;
    for (int& cluster : lowest)
        cluster = numbers.try_emplace(cluster, static_cast<int>(numbers.size())).first->second;
    return lowest;
}

// cut() gives the expected labels.
void ExpectCut(const char* name, const std::vector<int>& expected, auto cut) {
    const Labels labels(Result(name, cut));
    Expect(labels != nullptr && labels->EmptyImpl() == expected.empty(), name, "labels");
    Expect(Elements(*labels) == expected, name, "another partition");
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
        const auto expected = isNumber ? Partition(steps, steps.begin() + (n - k)) : std::vector<int>();
        ExpectCut("FindMembersWithNumber", expected, [&] { return FindMembersWithNumber(host, k); });
    }
    for (const double level : levels) {
        const auto isBelow = [=](const ClusterStep& step) { return step.similarity < level; };
        const auto expected = Partition(steps, std::ranges::find_if(steps, isBelow));
        ExpectCut("FindMembersWithCut", expected, [&] { return FindMembersWithCut(host, level); });
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
        Expect(difference.empty(), [&] { return Call("not as written", linkage, maximum) + difference; });
    }
    CutEverywhere(input, Elements(*steps));
}

void RandomMatrices(Input& input) {
    const std::size_t n = 1 + input.Choice(kMaxObjects);
    const Data values = Values(input, n * (n - 1) / 2);
    auto value = values.begin();
    test::Square distances(n);
    for (std::size_t i = 0; i < n; ++i)
        for (std::size_t j = 0; j <= i; ++j)
            distances[i].push_back(i == j ? 0 : *value++);
    ClusterBoth(input, distances);
}

using Table = std::unique_ptr<IRectangularArray<double>>;

Table MakeTable(Input& input, int rows, int columns) {
    Table table(MakeIRectangularArrayDouble(rows, columns));
    Expect(table != nullptr && table->RowCount() == rows && table->ColumnCount() == columns, "no table");
    Data values = Values(input, static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    if (rows > 1 && input.Flag()) std::copy_n(values.begin(), columns, values.end() - columns);  // two alike
    for (int i = 0; i < rows * columns; ++i)
        table->Set(i / columns, i % columns, values[static_cast<std::size_t>(i)]);
    return table;
}

// The library's matrix and a host's get the same distances and the same joins.
void CreateBoth(Input& input, int n, bool isKnown, auto create) {
    const std::unique_ptr<DistanceMatrix> own(MakeDistanceMatrix(n));
    test::HostMatrix host(n);
    const auto statuses = Result("CreateForCluster", [&] { return std::array{create(*own), create(host)}; });
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
    const int n = input.Choice<int>(kMaxObjects + 1);
    const int columns = std::max(1, input.Choice<int>(9));
    const int measure = input.Byte() < 240 ? 2000 + input.Choice<int>(5) : input.Integer() % 4096;
    const bool standardize = input.Flag();
    const Table table = MakeTable(input, n, columns);
    CreateBoth(input, n, measure >= 2000 && measure <= 2004, [&](DistanceMatrix& out) {
        return CreateForClusterObservations(*table, static_cast<DistanceEnums>(measure), standardize, out);
    });
}

void Variables(Input& input) {
    const int rows = input.Choice<int>(12);
    const int n = input.Choice<int>(12);
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
    const auto number = [&] { return input.Byte() < 250 ? input.Choice<int>(joins + 1) : input.Integer(); };
    while (steps.size() < joins) {
        ClusterStep step{AnyReal(input), AnyReal(input), 0, 0, input.Integer()};
        const std::size_t low = isValid ? input.Choice(active.size() - 1) : 0;
        const std::size_t high = isValid ? low + 1 + input.Choice(active.size() - 1 - low) : 0;
        step.cluster1 = isValid ? active[low] : number();
        step.cluster2 = isValid ? active[high] : number();
        if (isValid) active.erase(active.begin() + static_cast<std::ptrdiff_t>(high));
        steps.push_back(step);
    }
    if (isValid) return CutEverywhere(input, steps);
    const int k = input.Byte() < 200 ? 1 + input.Choice<int>(joins + 1) : input.Integer();
    const test::HostSteps host(steps);
    const double level = AnyReal(input);
    const Labels some(Result("a number of any joins", [&] { return FindMembersWithNumber(host, k); }));
    const Labels others(Result("a cut of any joins", [&] { return FindMembersWithCut(host, level); }));
    Expect(some != nullptr && others != nullptr, "no labels");
}

// The library's matrix against a table of what was set.
void MatrixElements(Input& input) {
    const auto number = [&] { return input.Choice<int>(9) - 1; };
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
            const int objects = input.Choice<int>(10) - 1;
            const auto status = Result("Init", [&] { return matrix->Init(objects, value); });
            Expect((status == Success) == (objects >= 0), "Init()");
            size = std::max(objects, 0);
            filler = value;
            set.clear();
            continue;
        }
        const double read = Result("Set", [&] {
            matrix->Set(i, j, value);
            return (*matrix)(j, i);
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
        Expect(status == Success && vector->EmptyImpl() == expected.empty(), "status or size of a vector");
        Expect(std::ranges::equal(Elements(*vector), expected, SameBits), "the vector differs");
    }
}

}  // namespace

void RunInput(Input& input) {
    constexpr std::array kTargets = {RandomMatrices, RandomMatrices, RandomMatrices, Observations,
                                     Variables,      RandomSteps,    MatrixElements, Vectors};
    input.OneOf(kTargets)(input);
}

}  // namespace zul::fuzz
