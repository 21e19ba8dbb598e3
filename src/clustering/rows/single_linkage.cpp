#include "clustering/rows/single_linkage.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "clustering/agglomeration.h"
#include "clustering/rows/row_lanes.h"
#include "clustering/rows/tied_joins.h"

namespace zul::dax::clustering {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// All objects but the first, in the order in which they cease to be the lowest of a cluster: of equally high ones the
// higher number is first.
std::vector<int> OrderOfJoins(const std::vector<double>& heights) {
    std::vector<int> order(heights.size() - 1);
    std::iota(order.begin(), order.end(), 1);
    std::sort(order.begin(), order.end(), [&](int a, int b) {
        const double heightA = heights[static_cast<std::size_t>(a)];
        const double heightB = heights[static_cast<std::size_t>(b)];
        return heightA < heightB || (heightA == heightB && a > b);
    });
    return order;
}

bool HasTies(const std::vector<int>& order, const std::vector<double>& heights) {
    return std::adjacent_find(order.begin(), order.end(), [&](int a, int b) {
               return heights[static_cast<std::size_t>(a)] == heights[static_cast<std::size_t>(b)];
           }) != order.end();
}

// The cluster that each object joins, where no two join at the same height: the one that the lower object is in.
void FindLowerClusters(const std::vector<int>& order, std::vector<int>& lower) {
    std::vector<int> clusters(lower.size());
    std::iota(clusters.begin(), clusters.end(), 0);
    for (const int object : order) {
        int cluster = lower[static_cast<std::size_t>(object)];
        while (clusters[static_cast<std::size_t>(cluster)] != cluster) {
            int& next = clusters[static_cast<std::size_t>(cluster)];
            next = clusters[static_cast<std::size_t>(next)];
            cluster = next;
        }
        clusters[static_cast<std::size_t>(object)] = lower[static_cast<std::size_t>(object)] = cluster;
    }
}

}  // namespace

// Distances are numbers, so the joins are those of the closest pairs: in the order of their heights, and of equal
// ones in that of ComesBefore().
bool JoinBySingleLinkage(const DistanceMatrixImpl& distances, double maximumDistance,
                         types::Vector<ClusterStep>& steps) {
    if (steps.EmptyImpl()) return true;
    const std::size_t n = steps.size() + 1;
    const RowLanes& lanes = CurrentRowLanes();
    Hierarchy hierarchy{std::vector<double>(n), std::vector<int>(n)};
    std::vector<double> nearest(n);
    for (std::size_t a = n; a-- > 0;) {
        std::copy_n(distances.UpperRow(a), n - a, nearest.data() + a);
        if (!lanes.addObject({hierarchy.heights.data(), hierarchy.lower.data(), n}, a, nearest.data()))
            return false;
    }
    const std::vector<int> order = OrderOfJoins(hierarchy.heights);
    if (!(hierarchy.heights[static_cast<std::size_t>(order.back())] < kInfinity)) return false;
    if (HasTies(order, hierarchy.heights)) {
        if (!TellTiedJoins(distances, order, hierarchy)) return false;
    } else {
        FindLowerClusters(order, hierarchy.lower);
    }
    std::vector<int> sizes(n, 1);
    for (std::size_t step = 0; step < order.size(); ++step) {
        const auto object = static_cast<std::size_t>(order[step]);
        int& size = sizes[static_cast<std::size_t>(hierarchy.lower[object])];
        size += sizes[object];
        steps.AtImpl(step) =
            StepOf({hierarchy.heights[object], hierarchy.lower[object], order[step]}, size, maximumDistance);
    }
    return true;
}

}  // namespace zul::dax::clustering
