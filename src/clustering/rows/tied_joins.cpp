#include "clustering/rows/tied_joins.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <numeric>

#include "clustering/rows/row_lanes.h"

namespace zul::dax::clustering {
namespace {

constexpr int kNone = -1;
// So many edges for each object are kept before they are thinned out to the ones that tell.
constexpr std::size_t kEdgesKept = 16;
// So many links may be followed for each pair of objects. Random data take a hundredth.
constexpr std::size_t kClimbBudget = 4;

std::size_t Index(int object) {
    return static_cast<std::size_t>(object);
}

// The root of the cluster that an object is in, with paths halved.
int Root(std::vector<int>& parents, int object) {
    while (parents[Index(object)] != object) {
        int& parent = parents[Index(object)];
        parent = parents[Index(parent)];
        object = parent;
    }
    return object;
}

// The smaller part of a join: its members from the first to the last one.
struct Part {
    int first;
    int last;
    double height;  // of the join
    int inner;      // an object of the other part
};

std::vector<double> HeightsOfParts(const std::vector<Part>& parts, int inner, const std::vector<int>& next) {
    std::vector<double> heights(next.size(), -std::numeric_limits<double>::infinity());
    for (const Part& part : parts) {
        if (part.inner != inner) continue;
        for (int object = part.first;; object = next[Index(object)]) {
            heights[Index(object)] = part.height;
            if (object == part.last) break;
        }
    }
    return heights;
}

// The height at which each object and an inner one are first in one cluster. The inner one is in the larger part of
// each join, so that few objects have the same height. For u and v of different heights, their clusters join at the
// greater; for others, not above it.
std::vector<double> HeightsToInner(const std::vector<int>& order, const Hierarchy& hierarchy) {
    const std::size_t n = hierarchy.heights.size();
    std::vector<int> parents(n);
    std::iota(parents.begin(), parents.end(), 0);
    std::vector<int> inner = parents;  // of the cluster of a root, as are:
    std::vector<int> last = parents;
    std::vector<int> sizes(n, 1);
    std::vector<int> next(n, kNone);  // the members of a cluster, from its root to the last
    std::vector<Part> parts;
    parts.reserve(order.size());
    for (const int object : order) {
        const int low = Root(parents, hierarchy.lower[Index(object)]);
        const bool isLarger = sizes[Index(object)] > sizes[Index(low)];
        const int outer = isLarger ? low : object;
        const int inside = isLarger ? object : low;
        parts.push_back({outer, last[Index(outer)], hierarchy.heights[Index(object)], inner[Index(inside)]});
        parents[Index(object)] = low;
        inner[Index(low)] = inner[Index(inside)];
        sizes[Index(low)] += sizes[Index(object)];
        next[Index(last[Index(low)])] = object;
        last[Index(low)] = last[Index(object)];
    }
    return HeightsOfParts(parts, parts.back().inner, next);
}

// Pairs of clusters at a distance at which they are joined, and the elimination trees of their graphs.
class Ties {
public:
    explicit Ties(const Hierarchy& hierarchy)
        : hierarchy_(hierarchy), tree_(hierarchy.heights.size(), kNone), roots_(hierarchy.heights.size()) {
        edges_.reserve(kEdgesKept * tree_.size());
    }

    // Two objects at a distance which may be the height at which their clusters join.
    void Add(int u, int v, double distance) {
        const int a = ClusterBelow(u, distance);
        const int b = ClusterBelow(v, distance);
        if (a == b) return;
        edges_.push_back({std::min(a, b), std::max(a, b)});
        if (edges_.size() == edges_.capacity()) ThinOut();
    }

    bool IsOverBudget() const { return climbed_ > kClimbBudget * tree_.size() * tree_.size(); }

    // For each object the cluster that it joins.
    const std::vector<int>& Tree() {
        Eliminate();
        return tree_;
    }

private:
    struct Edge {
        int lower;
        int higher;
    };

    // The number of the object's cluster just below the height.
    int ClusterBelow(int object, double height) {
        while (hierarchy_.heights[Index(object)] < height) {
            object = hierarchy_.lower[Index(object)];
            ++climbed_;
        }
        return object;
    }

    // The edges of the trees have the same trees.
    void ThinOut() {
        Eliminate();
        edges_.clear();
        for (std::size_t object = 0; object < tree_.size(); ++object)
            if (tree_[object] != kNone) edges_.push_back({tree_[object], static_cast<int>(object)});
    }

    // All heights at once: a cluster that is joined at a height is a root at lower ones.
    void Eliminate() {
        std::sort(edges_.begin(), edges_.end(),
                  [](const Edge& a, const Edge& b) { return a.lower > b.lower; });
        std::fill(tree_.begin(), tree_.end(), kNone);
        std::iota(roots_.begin(), roots_.end(), 0);
        for (const Edge& edge : edges_) {
            const int root = RootAt(edge.higher, hierarchy_.heights[Index(edge.higher)]);
            if (root != edge.lower) tree_[Index(root)] = roots_[Index(root)] = edge.lower;
        }
    }

    int RootAt(int cluster, double height) {
        const auto isJoined = [&](int number) {
            return hierarchy_.heights[Index(number)] == height && roots_[Index(number)] != number;
        };
        while (isJoined(cluster)) {
            int& parent = roots_[Index(cluster)];
            if (isJoined(parent)) parent = roots_[Index(parent)];
            cluster = parent;
        }
        return cluster;
    }

    const Hierarchy& hierarchy_;
    std::vector<int> tree_;
    std::vector<int> roots_;
    std::vector<Edge> edges_;
    std::size_t climbed_ = 0;
};

}  // namespace

bool TellTiedJoins(const DistanceMatrixImpl& distances, const std::vector<int>& order, Hierarchy& hierarchy) {
    const RowLanes& lanes = CurrentRowLanes();
    const std::size_t n = hierarchy.heights.size();
    const std::vector<double> heights = HeightsToInner(order, hierarchy);
    Ties ties(hierarchy);
    for (std::size_t u = n; u-- > 0;) {
        const double* const row = distances.UpperRow(u) - u;
        const auto find = [&](std::size_t from) {
            return lanes.findNotAbove(row, heights.data(), heights[u], from, n);
        };
        for (std::size_t v = find(u + 1); v < n; v = find(v + 1))
            ties.Add(static_cast<int>(u), static_cast<int>(v), row[v]);
        if (ties.IsOverBudget()) return false;
    }
    hierarchy.lower = ties.Tree();
    return true;
}

}  // namespace zul::dax::clustering
