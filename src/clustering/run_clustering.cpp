#include <algorithm>
#include <iostream>
#include <memory>

#include "clustering/agglomeration.h"
#include "clustering/containers/vector.h"
#include "clustering/linkage.h"
#include "clustering/rows/row_agglomeration.h"
#include "clustering/rows/single_linkage.h"
#include "frame/platform.h"
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

// NaN stands for what there is not, whatever the distances are: in a mode that traps they must not trap for it.
void RunInRows(LinkageEnums linkage, double maximumDistance, DistanceMatrixImpl& distances, Steps& steps) {
    const unsigned control = frame::GetControl();
    frame::SetControl(control | frame::kDefaultControl);
    if (linkage != Single || !JoinBySingleLinkage(distances, maximumDistance, steps))
        RowAgglomeration(linkage, maximumDistance, distances, static_cast<int>(steps.size()) + 1).Run(steps);
    frame::SetControl(control);
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
        RunInRows(linkage, maximumDistance, *own, *steps);
    else
        Agglomeration(*link, maximumDistance, distances, count).Run(*steps);
    return steps;
}

}  // namespace

types::IReadableVector<ClusterStep>* RunClustering(LinkageEnums linkage, double maximumDistance,
                                                   DistanceMatrix& distances) {
    return frame::OnAnyException<Steps*>(nullptr,
                                         [&] { return Run(linkage, maximumDistance, distances).release(); });
}

}  // namespace zul::dax::clustering
