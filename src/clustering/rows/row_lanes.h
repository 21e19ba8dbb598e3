// What an agglomeration in rows does with many clusters at a time, for each level of processors. The results are the
// same at all levels.
#pragma once

#include <cstddef>

#include "clustering/linkage.h"
#include "processor/level.h"

namespace zul::dax::clustering {

// Clusters stand at positions, in the order of their numbers. Of each: its nearest neighbour, and what a search among
// the higher ones would find.
struct Links {
    int neighbour;
    int outcome;
};

// The distances to a joined cluster, which become those to the union with another.
struct RowUpdate {
    Cluster joined;       // its number is a position here
    int absorbed;         // a higher position
    double* const* rows;  // element [a][b] for positions a < b
    const int* active;    // the positions of the clusters, ascending
    std::size_t activeCount;
    std::size_t positions;
    const double* sizes;
    const double* absent;  // 0 for a cluster, NaN for a position that has none any more
    double* updated;       // out: the new distances; left alone at absent positions below `absorbed`
};

// What tells whether a join concerns a cluster.
struct RowChanges {
    const double* updated;
    const double* distances;  // to the neighbour
    const double* outcomes;   // the distances to what would be found
    const Links* links;
    int joined;
    int absorbed;
};

// The pointer representation of a single-linkage hierarchy: for each object the height at which it ceases to be the
// lowest of its cluster, and the lowest of the cluster that it is in then.
struct PointerRepresentation {
    double* heights;
    int* lower;
    std::size_t objects;
};

// A value and one more than the last place that has it; 0: none has.
struct LastPlace {
    double value;
    std::size_t end;
};

struct RowLanes {
    // The smallest value; infinity without any. NaN counts as none.
    double (*smallest)(const double* values, std::size_t n);
    // That of values[i] + absent[i].
    double (*smallestPresent)(const double* values, const double* absent, std::size_t n);
    // The first place at or after `from` that has the value; n: none.
    std::size_t (*findEqual)(const double* values, double value, std::size_t from, std::size_t n);
    // The smallest value and one more than its last place, and those of values[i] + absent[i].
    LastPlace (*lastSmallest)(const double* values, std::size_t n);
    LastPlace (*lastSmallestPresent)(const double* values, const double* absent, std::size_t n);
    // The first place at or after `from` whose value is at most the limit or its own bound; n: none.
    std::size_t (*findNotAbove)(const double* values, const double* bounds, double limit, std::size_t from,
                                std::size_t n);
    // The first position at or after `from` which a join concerns, since it comes nearer than the neighbour or one of
    // its clusters is linked to; `end`: none. Below the joined cluster, also since it comes as near as the outcome.
    std::size_t (*findChange)(const RowChanges& changes, std::size_t from, std::size_t end);
    std::size_t (*findChangeBelow)(const RowChanges& changes, std::size_t from, std::size_t end);
    // Adds the object below those that the representation has: objects a + 1 and up, at the distances nearest[a + 1]
    // and up, which are changed. Returns whether all of them are numbers.
    bool (*addObject)(const PointerRepresentation& to, std::size_t a, double* nearest);
    // For each linkage, in the order of the enumeration.
    void (*update[Centroid - Average + 1])(const RowUpdate& update);
};

// Of the current level, and of any that the processor has.
const RowLanes& CurrentRowLanes();
const RowLanes& RowLanesOf(processor::Level level);

extern const RowLanes kRowLanesOfOne;
extern const RowLanes kRowLanesOfTwo;
extern const RowLanes kRowLanesOfFour;
extern const RowLanes kRowLanesOfEight;

}  // namespace zul::dax::clustering
