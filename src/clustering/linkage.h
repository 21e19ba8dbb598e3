// The linkages: how the distances to a joined cluster follow from those to its parts.
#pragma once

#include <memory>

#include "processor/processor.h"
#include "zul/clustering.h"

namespace zul::dax::clustering {

// A cluster of the agglomeration. Of its parts it keeps their sizes only, which is all that the formulas need:
// a tree of clusters could be as deep as there are objects.
struct Cluster {
    int number;
    double height;  // the distance at which it was formed; 0: a single object
    int size;
    int leftSize;  // of the part with the lower number; 0: a single object
    int rightSize;
};

// The formulas: the distance of cluster k, of size nk, to the union of clusters i and j, of which i has the lower
// number; D is a double, or a vector of them for several clusters k.
// Source: G. N. Lance and W. T. Williams, A general theory of classificatory sorting strategies, 1967. Sizes
// are multiplied as doubles: the products pass 32 bits.

struct AverageLinkage {
    template <class D>
    ZUL_INLINE static D Update(double, D dki, D dkj, const Cluster& joined, D) {
        const double ni = joined.leftSize;
        const double nj = joined.rightSize;
        const double nij = joined.size;
        return (ni * dki + nj * dkj) / nij;
    }
};

struct SingleLinkage {
    template <class D>
    ZUL_INLINE static D Update(double, D dki, D dkj, const Cluster&, D) {
        return dkj < dki ? dkj : dki;
    }
};

struct CompleteLinkage {
    template <class D>
    ZUL_INLINE static D Update(double, D dki, D dkj, const Cluster&, D) {
        return dkj > dki ? dkj : dki;
    }
};

struct WardLinkage {
    template <class D>
    ZUL_INLINE static D Update(double dij, D dki, D dkj, const Cluster& joined, D nk) {
        const double ni = joined.leftSize;
        const double nj = joined.rightSize;
        const double nij = joined.size;
        return ((ni + nk) * dki + (nj + nk) * dkj - nk * dij) / (nij + nk);
    }
};

struct McQuittyLinkage {
    template <class D>
    ZUL_INLINE static D Update(double, D dki, D dkj, const Cluster&, D) {
        return (dki + dkj) * 0.5;
    }
};

struct MedianLinkage {
    template <class D>
    ZUL_INLINE static D Update(double dij, D dki, D dkj, const Cluster&, D) {
        return (dki + dkj) * 0.5 - dij * 0.25;
    }
};

struct CentroidLinkage {
    template <class D>
    ZUL_INLINE static D Update(double dij, D dki, D dkj, const Cluster& joined, D) {
        const double ni = joined.leftSize;
        const double nj = joined.rightSize;
        const double nij = joined.size;
        return (ni * dki + nj * dkj) / nij - nj * ni * dij / (nij * nij);
    }
};

// A formula that is chosen while the program runs.
class LinkFunction {
public:
    virtual ~LinkFunction() = default;
    virtual double Update(double dij, double dki, double dkj, const Cluster& joined, int nk) const = 0;
};

// Null for an unknown linkage.
std::unique_ptr<LinkFunction> MakeLinkFunction(LinkageEnums linkage);

}  // namespace zul::dax::clustering
