#include "clustering/packed_agglomeration.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "clustering/prefetch.h"
#include "frame/missing_value.h"

namespace zul::dax::clustering {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
// A distance in the next rows lies in another page each; their latency halves the speed unless they are asked
// for so many rows in advance. It changed little between 24 and 48.
constexpr std::ptrdiff_t kRowsAhead = 32;
// Where more clusters than these are searched for, they often share the lines of a row.
constexpr std::size_t kFew = 4;
// The threshold of a search that has ended: no distance passes it.
constexpr double kEnded = frame::kQuietNaN;

std::size_t Index(int number) {
    return static_cast<std::size_t>(number);
}

}  // namespace

PackedAgglomeration::PackedAgglomeration(const LinkFunction& link, double maximumDistance,
                                         DistanceMatrixImpl& distances, int count)
    : Agglomeration(link, maximumDistance, count),
      distances_(distances),
      outcomes_(Index(count), {-kInfinity, kUnknown, false}),
      wanted_(active_),
      found_(Index(count)),
      thresholds_(Index(count)) {}

void PackedAgglomeration::FindNeighbours() {
    Search();
}

double PackedAgglomeration::Distance(int i, int j) {
    return distances_.Row(Index(std::max(i, j)))[std::min(i, j)];
}

template <typename Iterator>
const double* PackedAgglomeration::RowAhead(Iterator next, Iterator end) {
    return distances_.Row(Index(next[std::min(kRowsAhead, end - next - 1)]));
}

void PackedAgglomeration::UpdateDistances(const Cluster& joined, int absorbed) {
    const int lo = joined.number;
    double* const loRow = distances_.Row(Index(lo));
    const double* const hiRow = distances_.Row(Index(absorbed));
    Outcome outcome{kInfinity, lo, true};
    wanted_.clear();
    const auto update = [&](int c, double& toJoined, double toAbsorbed) {
        toJoined = link_.Update(joined.height, toJoined, toAbsorbed, joined, clusters_[Index(c)].size);
        if (c < lo) Follow(outcomes_[Index(c)], toJoined, lo, absorbed);
        if (c > lo) Extend(outcome, toJoined, c);
        RefreshNeighbour(c, toJoined, lo, absorbed);
    };
    auto next = active_.begin();
    for (; *next != lo; ++next)
        update(*next, loRow[*next], hiRow[*next]);
    for (++next; *next != absorbed; ++next) {
        Prefetch(RowAhead(next, active_.end()) + lo);
        int& number = outcomes_[Index(*next)].number;
        if (number == absorbed) number = kUnknown;
        update(*next, distances_.Row(Index(*next))[lo], hiRow[*next]);
    }
    for (++next; next != active_.end(); ++next) {
        const double* const ahead = RowAhead(next, active_.end());
        Prefetch(ahead + lo);
        Prefetch(ahead + absorbed);
        double* const row = distances_.Row(Index(*next));
        update(*next, row[lo], row[absorbed]);
    }
    outcomes_[Index(lo)] = outcome;
    neighbours_[Index(lo)] = {outcome.distance, outcome.number};
}

void PackedAgglomeration::RefreshNeighbours(int, int) {
    Search();
}

void PackedAgglomeration::Follow(Outcome& outcome, double distance, int joined, int absorbed) {
    if (distance < outcome.distance) {
        outcome = {distance, joined, true};
    } else if (outcome.number == joined || outcome.number == absorbed) {
        // Without the absorbed one, others as near would have to be looked for above the joined one.
        const bool isHighest = outcome.number == joined || outcome.isAlone;
        outcome.number = distance == outcome.distance && isHighest ? joined : kUnknown;
    } else if (distance == outcome.distance && outcome.number != kUnknown) {
        outcome.isAlone = false;
        outcome.number = std::max(outcome.number, joined);
    }
}

void PackedAgglomeration::Extend(Outcome& outcome, double distance, int other) {
    if (!(distance <= outcome.distance)) return;
    outcome.isAlone = distance < outcome.distance;
    outcome.distance = distance;
    outcome.number = other;
}

void PackedAgglomeration::RefreshNeighbour(int cluster, double distance, int joined, int absorbed) {
    Neighbour& neighbour = neighbours_[Index(cluster)];
    if (neighbour.number != joined && neighbour.number != absorbed) {
        Approach(neighbour, distance, joined);
        return;
    }
    const Outcome& outcome = outcomes_[Index(cluster)];
    if (outcome.number == kUnknown)
        wanted_.push_back(cluster);
    else
        neighbour = {outcome.distance, outcome.number};
}

// Descending, so that of equally near clusters the highest is found first, and a search can end at a distance
// that cannot be undercut.
void PackedAgglomeration::Search() {
    for (std::size_t i = 0; i < wanted_.size(); ++i) {
        found_[i] = {kInfinity, wanted_[i], true};
        thresholds_[i] = kInfinity;
    }
    for (auto next = active_.rbegin(); !wanted_.empty(); ++next) {
        for (; !wanted_.empty() && wanted_.back() >= *next; wanted_.pop_back())
            Keep(wanted_.size() - 1);
        const double* const ahead = RowAhead(next, active_.rend());
        for (std::size_t i = 0; i < std::min(wanted_.size(), kFew); ++i)
            Prefetch(ahead + wanted_[i]);
        if (SearchRow(*next)) DropEnded();
    }
}

bool PackedAgglomeration::SearchRow(int number) {
    const double* const row = distances_.Row(Index(number));
    bool ended = false;
    for (std::size_t i = 0; i < wanted_.size(); ++i) {
        const double distance = row[wanted_[i]];
        if (!(distance <= thresholds_[i])) continue;
        Outcome& found = found_[i];
        if (distance < found.distance || found.number == wanted_[i]) {
            found = {distance, number, true};
            thresholds_[i] = distance;
            if (distance > outcomes_[Index(wanted_[i])].distance) continue;
            // The rest is not looked at.
            found.isAlone = false;
            thresholds_[i] = kEnded;
            ended = true;
        } else {
            found.isAlone = false;
        }
    }
    return ended;
}

void PackedAgglomeration::DropEnded() {
    std::size_t left = 0;
    for (std::size_t i = 0; i < wanted_.size(); ++i) {
        if (std::isnan(thresholds_[i])) {
            Keep(i);
        } else {
            wanted_[left] = wanted_[i];
            found_[left] = found_[i];
            thresholds_[left++] = thresholds_[i];
        }
    }
    wanted_.resize(left);
}

void PackedAgglomeration::Keep(std::size_t i) {
    outcomes_[Index(wanted_[i])] = found_[i];
    neighbours_[Index(wanted_[i])] = {found_[i].distance, found_[i].number};
}

}  // namespace zul::dax::clustering
