// The linkages: how the distances to a joined cluster follow from those to its parts.
#pragma once

#include <memory>

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

// The distance of cluster k, of size nk, to the union of clusters i and j, of which i has the lower number.
// Source: G. N. Lance and W. T. Williams, A general theory of classificatory sorting strategies, 1967. Sizes
// are multiplied as doubles: the products pass 32 bits.
class LinkFunction {
public:
    virtual ~LinkFunction() = default;
    virtual double Update(double dij, double dki, double dkj, const Cluster& joined, int nk) const = 0;
};

// Null for an unknown linkage.
std::unique_ptr<LinkFunction> MakeLinkFunction(LinkageEnums linkage);

}  // namespace zul::dax::clustering
