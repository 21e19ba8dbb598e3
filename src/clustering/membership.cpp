#include <algorithm>
#include <limits>
#include <memory>
#include <vector>

#include "clustering/containers/vector.h"
#include "frame/recover.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {
namespace {

using Steps = types::IReadableVector<ClusterStep>;
using Labels = types::Vector<int>;

// Objects have int numbers, and there is one more than steps.
constexpr std::size_t kMaxSteps = std::numeric_limits<int>::max() - 1;

std::size_t Index(int number) {
    return static_cast<std::size_t>(number);
}

// Whether steps 0 to m - 1 name objects 0 to m only.
bool NameObjects(const Steps& steps, int m) {
    const auto isObject = [m](int number) { return number >= 0 && number <= m; };
    for (int s = 0; s < m; ++s)
        if (!isObject(steps[Index(s)].cluster1) || !isObject(steps[Index(s)].cluster2)) return false;
    return true;
}

std::unique_ptr<Labels> LabelMembers(const Steps& steps, int k) {
    auto labels = std::make_unique<Labels>();
    if (steps.size() > kMaxSteps) return labels;
    const int m = static_cast<int>(steps.size());
    if (k < 1 || k > m + 1 || !NameObjects(steps, m)) return labels;
    labels = std::make_unique<Labels>(Index(m) + 1, -1);
    // A join keeps the lower number, so object 0 names the last cluster, and each of the last joins taken back
    // sets its higher number free.
    std::vector<int> roots = {0};
    for (int s = m - 1; s > m - k; --s)
        roots.push_back(steps[Index(s)].cluster2);
    std::sort(roots.begin(), roots.end());
    for (int label = 0; label < k; ++label)
        labels->AtImpl(Index(roots[Index(label)])) = label;
    for (int s = m - k; s >= 0; --s)
        labels->AtImpl(Index(steps[Index(s)].cluster2)) = labels->AtImpl(Index(steps[Index(s)].cluster1));
    return labels;
}

int CountClusters(const Steps& steps, double level) {
    const std::size_t count = std::min(steps.size(), kMaxSteps);
    for (std::size_t s = 0; s < count; ++s)
        if (steps[s].similarity < level) return static_cast<int>(count - s) + 1;
    return 1;
}

}  // namespace

types::IReadableVector<int>* FindMembersWithNumber(const Steps& steps, int k) {
    return frame::OnAnyException<Labels*>(nullptr, [&] { return LabelMembers(steps, k).release(); });
}

types::IReadableVector<int>* FindMembersWithCut(const Steps& steps, double level) {
    return frame::OnAnyException<Labels*>(
        nullptr, [&] { return LabelMembers(steps, CountClusters(steps, level)).release(); });
}

}  // namespace zul::dax::clustering
