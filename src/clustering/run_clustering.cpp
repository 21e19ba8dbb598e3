#include <algorithm>
#include <iostream>
#include <memory>

#include "clustering/containers/vector.h"
#include "clustering/host_agglomeration.h"
#include "clustering/linkage.h"
#include "clustering/packed_agglomeration.h"
#include "frame/recover.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {
namespace {

using Steps = types::Vector<ClusterStep>;

// A thread may be cancelled while it writes. The stream is the host's, too, and good for other threads then.
void PrintLine(const char* line) {
    try {
        std::cout << line << std::endl;
    } catch (frame::ForcedUnwind&) {
        std::cout.clear();
        throw;
    }
}

std::unique_ptr<Steps> Run(LinkageEnums linkage, double maximumDistance, DistanceMatrix& distances) {
    const std::unique_ptr<LinkFunction> link = MakeLinkFunction(linkage);
    if (link == nullptr) {
        PrintLine("invalid linkage");
        return nullptr;
    }
    const int count = std::max(1, distances.RowCount());
    auto steps = std::make_unique<Steps>(static_cast<std::size_t>(count - 1), ClusterStep());
    auto* const own = dynamic_cast<DistanceMatrixImpl*>(&distances);
    if (own != nullptr && own->Dimension() >= count)
        PackedAgglomeration(*link, maximumDistance, *own, count).Run(*steps);
    else
        HostAgglomeration(*link, maximumDistance, distances, count).Run(*steps);
    return steps;
}

}  // namespace

types::IReadableVector<ClusterStep>* RunClustering(LinkageEnums linkage, double maximumDistance,
                                                   DistanceMatrix& distances) {
    return frame::OnAnyException<Steps*>(nullptr,
                                         [&] { return Run(linkage, maximumDistance, distances).release(); });
}

}  // namespace zul::dax::clustering
