#include "clustering/linkage.h"

namespace zul::dax::clustering {
namespace {

template <class Formula>
class LinkFunctionOf final : public LinkFunction {
    double Update(double dij, double dki, double dkj, const Cluster& joined, int nk) const override {
        return Formula::Update(dij, dki, dkj, joined, static_cast<double>(nk));
    }
};

}  // namespace

std::unique_ptr<LinkFunction> MakeLinkFunction(LinkageEnums linkage) {
    switch (linkage) {
        case Average:
            return std::make_unique<LinkFunctionOf<AverageLinkage>>();
        case Single:
            return std::make_unique<LinkFunctionOf<SingleLinkage>>();
        case Complete:
            return std::make_unique<LinkFunctionOf<CompleteLinkage>>();
        case Ward:
            return std::make_unique<LinkFunctionOf<WardLinkage>>();
        case McQuitty:
            return std::make_unique<LinkFunctionOf<McQuittyLinkage>>();
        case Median:
            return std::make_unique<LinkFunctionOf<MedianLinkage>>();
        case Centroid:
            return std::make_unique<LinkFunctionOf<CentroidLinkage>>();
    }
    return nullptr;
}

}  // namespace zul::dax::clustering
