/// @file
/// The subcommand `cluster`: hierarchical clustering of the rows of a table.
#pragma once

#include <zul/clustering.h>

#include <map>
#include <optional>
#include <ostream>
#include <string>

namespace analyze {

struct ClusterOptions {
    std::string file;
    std::string linkage = "average";
    std::string measure;  ///< empty: the one that goes with the linkage
    bool standardize = false;
    std::optional<double> clusters;  ///< number of clusters to list, or
    std::optional<double> cut;       ///< the similarity at which to cut
};

/// The names of the linkages and of the measures.
const std::map<std::string, zul::dax::clustering::LinkageEnums>& Linkages();
const std::map<std::string, zul::dax::clustering::DistanceEnums>& Measures();

/// Writes the joins, the dendrogram, and the clusters if they are asked for. Throws InputError, before anything
/// is written.
void PrintClusters(std::ostream& out, const ClusterOptions& options);

}  // namespace analyze
