#include "clustering/host_agglomeration.h"

namespace zul::dax::clustering {

void HostAgglomeration::FindNeighbours() {
    for (std::size_t position = 0; position < active_.size(); ++position)
        Search(position);
}

void HostAgglomeration::UpdateDistances(const Cluster& joined, int absorbed) {
    for (const int c : active_) {
        if (c == joined.number || c == absorbed) continue;
        const double toJoined = distances_(c, joined.number);
        const double toAbsorbed = distances_(c, absorbed);
        const int size = clusters_[static_cast<std::size_t>(c)].size;
        distances_.Set(c, joined.number, link_.Update(joined.height, toJoined, toAbsorbed, joined, size));
    }
}

void HostAgglomeration::RefreshNeighbours(int joined, int absorbed) {
    for (std::size_t position = 0; position < active_.size(); ++position) {
        const int a = active_[position];
        Neighbour& neighbour = neighbours_[static_cast<std::size_t>(a)];
        if (a == joined || neighbour.number == joined || neighbour.number == absorbed)
            Search(position);
        else
            Approach(neighbour, distances_(joined, a), joined);
    }
}

void HostAgglomeration::Search(std::size_t position) {
    const int a = active_[position];
    Neighbour nearest;
    nearest.number = a;
    for (std::size_t i = position + 1; i < active_.size(); ++i) {
        const double distance = distances_(a, active_[i]);
        if (distance <= nearest.distance) nearest = {distance, active_[i]};
    }
    neighbours_[static_cast<std::size_t>(a)] = nearest;
}

}  // namespace zul::dax::clustering
