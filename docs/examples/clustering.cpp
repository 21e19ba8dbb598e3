#include <cstdio>
#include <memory>

#include <zul/clustering.h>

using namespace zul::dax;

namespace {

// Arrests for murder, assault and rape per 100,000 inhabitants, 1973.
const struct {
    const char* name;
    double arrests[3];
} kStates[] = {{"Alabama", {13.2, 236, 21.2}},    {"Alaska", {10, 263, 44.5}},
               {"Arizona", {8.1, 294, 31}},       {"Arkansas", {8.8, 190, 19.5}},
               {"California", {9, 276, 40.6}},    {"Colorado", {7.9, 204, 38.7}},
               {"Connecticut", {3.3, 110, 11.1}}, {"Delaware", {5.9, 238, 15.8}},
               {"Florida", {15.4, 335, 31.9}},    {"Georgia", {17.4, 211, 25.8}}};
constexpr int kCount = 10;

}  // namespace

int main() {
    //! [distances]
    // What a function returns by pointer is the caller's to delete.
    const std::unique_ptr<types::IRectangularArray<double>> table(
        types::MakeIRectangularArrayDouble(kCount, 3));
    const std::unique_ptr<clustering::DistanceMatrix> distances(clustering::MakeDistanceMatrix(kCount));
    if (!table || !distances) return 1;
    for (int row = 0; row < kCount; ++row)
        for (int column = 0; column < 3; ++column)
            table->Set(row, column, kStates[row].arrests[column]);
    if (clustering::CreateForClusterObservations(*table, clustering::SquaredEuclidean, /*standardize=*/true,
                                                 *distances) != types::Success)
        return 1;
    //! [distances]

    //! [joins]
    // The largest distance is that of similarity 0. The call uses the distances up.
    double largest = 0;
    for (int i = 1; i < kCount; ++i)
        for (int j = 0; j < i; ++j)
            if ((*distances)(i, j) > largest) largest = (*distances)(i, j);
    const std::unique_ptr<types::IReadableVector<clustering::ClusterStep>> steps(
        clustering::RunClustering(clustering::Ward, largest, *distances));
    if (!steps) return 1;
    for (std::size_t i = 0; i < steps->size(); ++i) {
        const clustering::ClusterStep& step = (*steps)[i];
        std::printf("%-11s + %-11s %2d objects, distance %8.4f, similarity %9.4f\n",
                    kStates[step.cluster1].name, kStates[step.cluster2].name, step.size, step.distance,
                    step.similarity);
    }
    //! [joins]

    //! [members]
    const std::unique_ptr<types::IReadableVector<int>> members(clustering::FindMembersWithNumber(*steps, 3));
    if (!members) return 1;
    for (int cluster = 0; cluster < 3; ++cluster) {
        std::printf("cluster %d:", cluster);
        for (std::size_t i = 0; i < members->size(); ++i)
            if ((*members)[i] == cluster) std::printf(" %s", kStates[i].name);
        std::printf("\n");
    }
    //! [members]
}
