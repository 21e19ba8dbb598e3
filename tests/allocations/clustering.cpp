#include "zul/clustering.h"

#include <cmath>
#include <memory>
#include <type_traits>

#include "allocations/calls.h"
#include "support/clustering.h"

namespace zul::test {
namespace {

using namespace dax::types;
using namespace dax::clustering;

constexpr int kRows = 12;

const IRectangularArray<double>& Data() {
    static const Table kTable = ReadDataTable("attitude", kRows);
    return *kTable;
}

DistanceMatrix& Distances() {
    static const Matrix kMatrix = MakeMatrix(kRows);
    return *kMatrix;
}

DistanceMatrix& HostDistances() {
    static HostMatrix matrix(kRows);
    return matrix;
}

// Making it anew for no more objects obtains nothing.
DistanceMatrix& HostOutput() {
    static HostMatrix matrix(kRows);
    return matrix;
}

const HostSteps& TwoJoins() {
    static const HostSteps kSteps({{50, 1, 0, 1, 2}, {40, 1, 0, 2, 3}});
    return kSteps;
}

// The nearest of all objects is again and again the last one, for which a run takes memory on the way.
DistanceMatrix& DistancesToLast() {
    constexpr int kObjects = 40;
    static const Matrix kMatrix = MakeMatrix(kObjects);
    for (int i = 0; i < kObjects; ++i)
        for (int j = 0; j < i; ++j)
            kMatrix->Set(i, j, kObjects - i);
    return *kMatrix;
}

// An object or, without memory, none.
template <typename Make>
AllocatingCall Making(std::string name, Make make) {
    return {std::move(name), [make](int) {
                const auto object = make();
                const bool isThere = static_cast<bool>(object);
                if constexpr (std::is_pointer_v<decltype(make())>) delete object;
                return Judge(isThere, !isThere);
            }};
}

// An operation of a vector {3, 3}, which leaves these elements after a failure.
template <typename Operation>
AllocatingCall Growing(Operation operation, std::size_t left) {
    return {"", [operation, left](int) {
                const std::unique_ptr<IVector<double>> v(MakeIVectorDouble(2, 3));
                if (v == nullptr) return Outcome::Failure;
                const auto status = operation(*v);
                bool isAsBefore = v->size() == left;
                for (std::size_t i = 0; i < left; ++i)
                    isAsBefore = isAsBefore && (*v)[i] == 3;
                return Judge(status == Success, status == Failure && isAsBefore);
            }};
}

// A matrix that could not be made anew has no elements.
Outcome Init(int) {
    const std::unique_ptr<DistanceMatrix> m(MakeDistanceMatrix(1));
    if (m == nullptr) return Outcome::Failure;
    const auto status = m->Init(4, 1);
    return Judge(status == Success && (*m)(3, 3) == 1, status == Failure && std::isnan((*m)(0, 0)));
}

// On failure the matrix is one of the library's in good order still.
template <typename Create>
Outcome OwnDistances(Create create) {
    const std::unique_ptr<DistanceMatrix> m(MakeDistanceMatrix(0));
    if (m == nullptr) return Outcome::Failure;
    const auto status = create(*m);
    m->Set(0, 0, 1);
    return Judge(status == Success && (*m)(1, 0) > 0, status == Failure);
}

template <typename Create>
void AddDistances(const char* name, Create create, std::vector<AllocatingCall>* calls) {
    calls->push_back({name, [create](int) { return OwnDistances(create); }});
    calls->push_back({name, [create](int) {
                          const auto status = create(HostOutput());
                          return Judge(status == Success, status == Failure);
                      }});
}

}  // namespace

std::vector<AllocatingCall> AllocatingClustering() {
    Data();
    Distances();
    DistancesToLast();
    HostDistances();
    HostOutput();
    TwoJoins();
    std::vector<AllocatingCall> calls = {
        Making("MakeIVectorDouble", [] { return MakeIVectorDouble(3, 1); }),
        Making("MakeIVectorInt", [] { return MakeIVectorInt(3, 1); }),
        Making("MakeIRectangularArrayDouble", [] { return MakeIRectangularArrayDouble(2, 3); }),
        Making("MakeDefaultMissingInfo", [] { return MakeDefaultMissingInfo(); }),
        Making("MakeMissingInfo", [] { return MakeMissingInfo(3); }),
        Making("MakeDistanceMatrix", [] { return MakeDistanceMatrix(3); }),
        Growing([](auto& v) { return v.ReserveImpl(3); }, 2),
        Growing([](auto& v) { return v.ResizeImpl(3); }, 2),
        Growing([](auto& v) { return v.ResizeImpl(3, v.AtImpl(0)); }, 2),
        Growing([](auto& v) { return v.assign(3, 1); }, 0),
        {"DistanceMatrix::Init", Init},
        Making("FindMembersWithNumber", [] { return FindMembersWithNumber(TwoJoins(), 2); }),
        Making("FindMembersWithCut", [] { return FindMembersWithCut(TwoJoins(), 45); }),
    };
    for (const bool standardize : {false, true})
        for (const auto measure : {Euclidean, SquaredEuclidean, Manhattan, Pearson, SquaredPearson})
            AddDistances(
                "CreateForClusterObservations",
                [=](auto& out) { return CreateForClusterObservations(Data(), measure, standardize, out); },
                &calls);
    AddDistances(
        "CreateForClusterVariables", [](auto& out) { return CreateForClusterVariables(Data(), false, out); },
        &calls);
    for (const auto linkage : {Average, Single, Complete, Ward, McQuitty, Median, Centroid}) {
        calls.push_back(Making("RunClustering", [=] { return RunClustering(linkage, 1, Distances()); }));
        calls.push_back(
            Making("RunClustering", [=] { return RunClustering(linkage, 1, DistancesToLast()); }));
        calls.push_back(Making("RunClustering", [=] { return RunClustering(linkage, 1, HostDistances()); }));
    }
    return calls;
}

}  // namespace zul::test
