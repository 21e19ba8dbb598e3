#include "clustering/rows/row_agglomeration.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

#include "frame/missing_value.h"
#include "processor/prefetch.h"

namespace zul::dax::clustering {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = frame::kQuietNaN;
constexpr int kUnknown = -1;
constexpr std::size_t kNone = static_cast<std::size_t>(-1);
// A search looks after so many distances whether it can end.
constexpr std::size_t kStride = 512;
// In squares of the number of objects. Random data take 1.4 to 1.7, the first searches among them 0.5.
constexpr std::size_t kSearchBudget = 4;
// The memory that so many searches by chunks will read is asked for in advance.
constexpr std::size_t kSearchesAhead = 8;
// Moving clusters up costs as much as it gains where few are left.
constexpr std::size_t kFew = 64;

std::size_t Index(int position) {
    return static_cast<std::size_t>(position);
}

}  // namespace

RowAgglomeration::RowAgglomeration(LinkageEnums linkage, double maximumDistance,
                                   DistanceMatrixImpl& distances, int count)
    : lanes_(CurrentRowLanes()),
      update_(lanes_.update[linkage - Average]),
      maximumDistance_(maximumDistance),
      storage_(distances.UpperRow(0)),
      active_(Index(count)),
      numbers_(Index(count)),
      sizes_(Index(count), 1),
      absent_(Index(count)),
      updated_(Index(count)),
      distances_(Index(count)),
      outcomes_(Index(count), -kInfinity),
      links_(Index(count)),
      isAlone_(Index(count)),
      bounds_(lanes_),
      budget_(kSearchBudget * Index(count) * Index(count)) {
    std::iota(active_.begin(), active_.end(), 0);
    std::iota(numbers_.begin(), numbers_.end(), 0);
    wanted_.reserve(active_.size());
    rows_.reserve(active_.size());
    for (std::size_t row = 0; row < active_.size(); ++row)
        rows_.push_back(distances.UpperRow(row) - row);
}

void RowAgglomeration::Run(types::Vector<ClusterStep>& steps) {
    if (steps.EmptyImpl()) return;
    for (const int cluster : active_)
        Search(cluster);
    for (std::size_t step = 0;; ++step) {
        const Pair pair = FindClosestPair();
        const Cluster joined = Join(pair);
        const Pair numbers{pair.distance, numbers_[Index(pair.lower)], numbers_[Index(pair.higher)]};
        steps.AtImpl(step) = StepOf(numbers, joined.size, maximumDistance_);
        if (step + 1 == steps.size()) return;
        UpdateDistances(joined, pair.higher);
        RefreshNeighbours(pair.lower, pair.higher);
        if (active_.size() > kFew && active_.size() <= rows_.size() - rows_.size() / 5) Compact();
    }
}

Pair RowAgglomeration::FindClosestPair() const {
    const std::size_t n = distances_.size();
    const double smallest = lanes_.smallest(distances_.data(), n);
    Pair best{0, kUnknown, kUnknown};
    for (std::size_t i = lanes_.findEqual(distances_.data(), smallest, 0, n); i < n;
         i = lanes_.findEqual(distances_.data(), smallest, i + 1, n)) {
        const int a = static_cast<int>(i);
        const int b = links_[i].neighbour;
        if (a == b) continue;
        const Pair pair{distances_[i], std::min(a, b), std::max(a, b)};
        if (best.lower < 0 || ComesBefore(pair, best)) best = pair;
    }
    if (best.lower >= 0) return best;
    // No distance is a number.
    const int higher = active_[active_.size() - 1];
    const int lower = active_[active_.size() - 2];
    return {rows_[Index(lower)][higher], lower, higher};
}

Cluster RowAgglomeration::Join(const Pair& pair) const {
    const int leftSize = static_cast<int>(sizes_[Index(pair.lower)]);
    const int rightSize = static_cast<int>(sizes_[Index(pair.higher)]);
    return {pair.lower, pair.distance, leftSize + rightSize, leftSize, rightSize};
}

void RowAgglomeration::UpdateDistances(const Cluster& joined, int absorbed) {
    updated_[Index(joined.number)] = kNaN;
    update_({joined, absorbed, rows_.data(), active_.data(), active_.size(), rows_.size(), sizes_.data(),
             absent_.data(), updated_.data()});
    sizes_[Index(joined.number)] = joined.size;
    Remove(absorbed);
    if (!bounds_.IsUsed()) return;
    for (const int* c = active_.data(); *c != joined.number; ++c)
        bounds_.Include(Index(*c), Index(joined.number), updated_[Index(*c)]);
    bounds_.Forget(Index(joined.number));
}

void RowAgglomeration::Remove(int position) {
    active_.erase(std::lower_bound(active_.begin(), active_.end(), position));
    absent_[Index(position)] = kNaN;
    updated_[Index(position)] = kNaN;
    distances_[Index(position)] = kNaN;
    outcomes_[Index(position)] = kNaN;
    links_[Index(position)] = {kUnknown, kUnknown};
}

void RowAgglomeration::RefreshNeighbours(int joined, int absorbed) {
    const RowChanges changes{updated_.data(), distances_.data(), outcomes_.data(), links_.data(),
                             joined,          absorbed};
    const std::size_t lo = Index(joined);
    const std::size_t n = rows_.size();
    for (std::size_t i = lanes_.findChangeBelow(changes, 0, lo); i < lo;
         i = lanes_.findChangeBelow(changes, i + 1, lo))
        Refresh(static_cast<int>(i), joined, absorbed);
    for (std::size_t i = lanes_.findChange(changes, lo + 1, n); i < n;
         i = lanes_.findChange(changes, i + 1, n))
        Refresh(static_cast<int>(i), joined, absorbed);
    outcomes_[lo] = -kInfinity;
    wanted_.push_back(joined);
    for (std::size_t i = 0; i < wanted_.size(); ++i) {
        if (bounds_.IsUsed() && i + kSearchesAhead < wanted_.size())
            PrefetchChunk(wanted_[i + kSearchesAhead], absorbed);
        Search(wanted_[i]);
    }
    wanted_.clear();
}

// Where a search by chunks will look first: most are wanted since the neighbour has been absorbed.
void RowAgglomeration::PrefetchChunk(int cluster, int absorbed) {
    constexpr std::size_t kLine = 64 / sizeof(double);
    constexpr std::size_t kChunk = ChunkBounds::kChunk;
    bounds_.Prefetch(Index(cluster), Index(absorbed));
    const std::size_t begin = Index(absorbed) / kChunk * kChunk;
    for (std::size_t i = begin; i < std::min(begin + kChunk, rows_.size()); i += kLine)
        processor::Prefetch(rows_[Index(cluster)] + i);
}

void RowAgglomeration::Refresh(int cluster, int joined, int absorbed) {
    Links& links = links_[Index(cluster)];
    const double distance = updated_[Index(cluster)];
    if (cluster < joined)
        Follow(cluster, joined, absorbed);
    else if (links.outcome == absorbed)
        links.outcome = kUnknown;
    if (links.neighbour != joined && links.neighbour != absorbed) {
        if (distance < distances_[Index(cluster)]) {
            distances_[Index(cluster)] = distance;
            links.neighbour = joined;
        }
    } else if (links.outcome == kUnknown) {
        wanted_.push_back(cluster);
    } else {
        distances_[Index(cluster)] = outcomes_[Index(cluster)];
        links.neighbour = links.outcome;
    }
}

void RowAgglomeration::Follow(int cluster, int joined, int absorbed) {
    int& found = links_[Index(cluster)].outcome;
    double& outcome = outcomes_[Index(cluster)];
    char& isAlone = isAlone_[Index(cluster)];
    const double distance = updated_[Index(cluster)];
    const bool isAsNear = distance == outcome;
    if (distance < outcome) {
        outcome = distance;
        found = joined;
        isAlone = true;
    } else if (found == joined || found == absorbed) {
        // Without the absorbed one, others as near would have to be looked for above the joined one.
        const bool isHighest = found == joined || isAlone != 0;
        found = isAsNear && isHighest ? joined : kUnknown;
        if (isAsNear) outcome = distance;  // zeros have signs
    } else if (isAsNear && found != kUnknown) {
        isAlone = false;
        if (joined > found) {
            found = joined;
            outcome = distance;
        }
    }
}

void RowAgglomeration::Search(int cluster) {
    if (!bounds_.IsUsed() && searched_ > budget_) bounds_.Use(rows_.size(), rows_.size());
    if (bounds_.IsUsed())
        SearchChunks(cluster);
    else
        SearchRow(cluster);
}

// Descending, so that of equally near clusters the highest is found first, and the search can end at a distance that
// cannot be undercut.
void RowAgglomeration::SearchRow(int cluster) {
    const std::size_t first = Index(cluster) + 1;
    double nearest = kInfinity;
    std::size_t begin = first;
    std::size_t end = rows_.size();
    bool isAlone = true;
    for (std::size_t to = rows_.size(); to > first;) {
        const std::size_t from = to - std::min(kStride, to - first);
        const double smallest = Smallest(cluster, from, to);
        searched_ += to - from;
        if (smallest < nearest) {
            nearest = smallest;
            begin = from;
            end = to;
            isAlone = smallest > outcomes_[Index(cluster)];
            if (!isAlone) break;
        } else if (smallest == nearest) {
            isAlone = false;
        }
        to = from;
    }
    const std::size_t found = FindHighest(cluster, nearest, begin, end);
    if (found == begin) {
        Keep(cluster, kInfinity, cluster, true);
        return;
    }
    isAlone = isAlone && FindHighest(cluster, nearest, begin, found - 1) == begin;
    Keep(cluster, rows_[Index(cluster)][found - 1], static_cast<int>(found - 1), isAlone);
}

void RowAgglomeration::SearchChunks(int cluster) {
    const std::size_t row = Index(cluster);
    LastPlace nearest{};
    std::size_t looked = kNone;  // the chunk that this is of
    const auto look = [&](std::size_t number) {
        looked = number;
        nearest = LookAtChunk(cluster, number);
        bounds_.Set(row, {number, nearest.end > 0 ? nearest.value : kNaN});
    };
    // What the neighbour had made of its bound is gone with it.
    if (links_[row].neighbour > cluster) look(Index(links_[row].neighbour) / ChunkBounds::kChunk);
    for (ChunkBounds::Chunk chunk; bounds_.FindNearest(row, chunk);) {
        if (chunk.number == looked) {
            // Whether others are as near is not looked for.
            Keep(cluster, rows_[row][nearest.end - 1], static_cast<int>(nearest.end - 1), false);
            return;
        }
        look(chunk.number);
    }
    Keep(cluster, kInfinity, cluster, true);
}

LastPlace RowAgglomeration::LookAtChunk(int cluster, std::size_t number) const {
    const std::size_t begin = std::max(Index(cluster) + 1, number * ChunkBounds::kChunk);
    const std::size_t end = std::min(rows_.size(), (number + 1) * ChunkBounds::kChunk);
    LastPlace nearest =
        lanes_.lastSmallestPresent(rows_[Index(cluster)] + begin, &absent_[begin], end - begin);
    if (nearest.end > 0) nearest.end += begin;
    return nearest;
}

std::size_t RowAgglomeration::FindHighest(int cluster, double distance, std::size_t begin,
                                          std::size_t end) const {
    const double* const row = rows_[Index(cluster)];
    while (end > begin && row[end - 1] + absent_[end - 1] != distance)
        --end;
    return end;
}

void RowAgglomeration::Keep(int cluster, double distance, int found, bool isAlone) {
    distances_[Index(cluster)] = outcomes_[Index(cluster)] = distance;
    links_[Index(cluster)] = {found, found};
    isAlone_[Index(cluster)] = isAlone;
}

double RowAgglomeration::Smallest(int cluster, std::size_t begin, std::size_t end) const {
    return lanes_.smallestPresent(rows_[Index(cluster)] + begin, &absent_[begin], end - begin);
}

void RowAgglomeration::Compact() {
    const std::size_t count = active_.size();
    std::vector<int>& places = wanted_;  // it has the room, and is not in use
    places.assign(rows_.size(), kUnknown);
    for (std::size_t a = 0; a < count; ++a)
        places[Index(active_[a])] = static_cast<int>(a);
    const auto place = [&](int position) { return position < 0 ? kUnknown : places[Index(position)]; };
    for (std::size_t a = 0; a < count; ++a) {
        const std::size_t old = Index(active_[a]);
        const double* const from = rows_[old];
        rows_[a] = storage_ + UpperRowStart(a, count) - a;
        for (std::size_t b = a + 1; b < count; ++b)
            rows_[a][b] = from[active_[b]];
        numbers_[a] = numbers_[old];
        sizes_[a] = sizes_[old];
        distances_[a] = distances_[old];
        outcomes_[a] = outcomes_[old];
        links_[a] = {place(links_[old].neighbour), place(links_[old].outcome)};
        isAlone_[a] = isAlone_[old];
    }
    places.clear();
    rows_.resize(count);
    distances_.resize(count);
    std::fill(absent_.begin(), absent_.end(), 0);
    std::iota(active_.begin(), active_.end(), 0);
    if (bounds_.IsUsed()) bounds_.Use(count, count);
}

}  // namespace zul::dax::clustering
