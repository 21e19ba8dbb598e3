#include "clustering/linkage.h"

namespace zul::dax::clustering {
namespace {

class AverageLinkage final : public LinkFunction {
    double Update(double, double dki, double dkj, const Cluster& joined, int) const override {
        const double ni = joined.leftSize;
        const double nj = joined.rightSize;
        return (ni * dki + nj * dkj) / joined.size;
    }
};

class SingleLinkage final : public LinkFunction {
    double Update(double, double dki, double dkj, const Cluster&, int) const override {
        return dkj < dki ? dkj : dki;
    }
};

class CompleteLinkage final : public LinkFunction {
    double Update(double, double dki, double dkj, const Cluster&, int) const override {
        return dkj > dki ? dkj : dki;
    }
};

class WardLinkage final : public LinkFunction {
    double Update(double dij, double dki, double dkj, const Cluster& joined, int size) const override {
        const double ni = joined.leftSize;
        const double nj = joined.rightSize;
        const double nij = joined.size;
        const double nk = size;
        return ((ni + nk) * dki + (nj + nk) * dkj - nk * dij) / (nij + nk);
    }
};

class McQuittyLinkage final : public LinkFunction {
    double Update(double, double dki, double dkj, const Cluster&, int) const override {
        return (dki + dkj) * 0.5;
    }
};

class MedianLinkage final : public LinkFunction {
    double Update(double dij, double dki, double dkj, const Cluster&, int) const override {
        return (dki + dkj) * 0.5 - dij * 0.25;
    }
};

class CentroidLinkage final : public LinkFunction {
    double Update(double dij, double dki, double dkj, const Cluster& joined, int) const override {
        const double ni = joined.leftSize;
        const double nj = joined.rightSize;
        const double nij = joined.size;
        return (ni * dki + nj * dkj) / nij - nj * ni * dij / (nij * nij);
    }
};

}  // namespace

std::unique_ptr<LinkFunction> MakeLinkFunction(LinkageEnums linkage) {
    switch (linkage) {
        case Average:
            return std::make_unique<AverageLinkage>();
        case Single:
            return std::make_unique<SingleLinkage>();
        case Complete:
            return std::make_unique<CompleteLinkage>();
        case Ward:
            return std::make_unique<WardLinkage>();
        case McQuitty:
            return std::make_unique<McQuittyLinkage>();
        case Median:
            return std::make_unique<MedianLinkage>();
        case Centroid:
            return std::make_unique<CentroidLinkage>();
    }
    return nullptr;
}

}  // namespace zul::dax::clustering
