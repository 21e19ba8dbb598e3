#include "clusters/cluster.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "clusters/dendrogram.h"
#include "clusters/distances.h"
#include "command/options.h"
#include "input/rows.h"
#include "output/text.h"

namespace analyze {
namespace {

using namespace zul::dax;
using namespace zul::dax::clustering;

using Steps = std::unique_ptr<types::IReadableVector<ClusterStep>>;
using Members = std::unique_ptr<types::IReadableVector<int>>;

constexpr int kDigits = 8;
constexpr int kCountWidth = 9;
constexpr int kValueWidth = 16;
constexpr std::size_t kNameWidth = 15;
constexpr std::size_t kLineWidth = 78;

struct ClusterOptions {
    InputOptions input;
    std::vector<std::string> columns;   // empty: those of numbers
    std::optional<std::string> labels;  // absent: the rows are numbered
    LinkageEnums linkage = Average;
    std::optional<DistanceEnums> measure;  // absent: the one that goes with the linkage
    bool standardize = false;
    bool variables = false;          // the columns are the objects
    std::optional<double> clusters;  // number of clusters to list, or
    std::optional<double> cut;       // the similarity at which to cut
};

const Choices<LinkageEnums>& Linkages() {
    static const Choices<LinkageEnums> linkages = {
        {"average", Average},   {"single", Single}, {"complete", Complete}, {"ward", Ward},
        {"mcquitty", McQuitty}, {"median", Median}, {"centroid", Centroid}};
    return linkages;
}

template <typename T>
std::string NameOf(const Choices<T>& choices, T value) {
    return std::ranges::find(choices, value, [](const auto& choice) { return choice.second; })->first;
}

// What is clustered.
struct Objects {
    NumericColumns columns;
    std::vector<std::vector<double>> numbers;  // column by column
    std::vector<std::string> labels;
    std::size_t rows = 0;
    Origin origin;
};

Objects ReadObjects(const ClusterOptions& options) {
    const Table table(options.input);
    Objects objects;
    objects.columns =
        FindNumericColumns(table, options.columns, options.labels.value_or(""), RowNumbers::LeaveOut);
    const Rows rows(table, objects.columns.names);
    for (std::size_t column = 0; column < objects.columns.names.size(); ++column)
        objects.numbers.push_back(rows.Numbers(column));
    objects.rows = rows.Count();
    objects.origin = OriginOf(table, rows.Missing());
    if (options.variables) {
        objects.labels = objects.columns.names;
        return objects;
    }
    const std::size_t labels = options.labels ? table.FindColumn(*options.labels) : 0;
    for (const std::size_t row : rows.Places())
        objects.labels.push_back(options.labels ? table.Cell(row, labels).text : std::to_string(row + 1));
    return objects;
}

// The linkages whose formulas are about squared distances.
DistanceEnums MeasureOf(const ClusterOptions& options) {
    const LinkageEnums linkage = options.linkage;
    const bool squared = linkage == Ward || linkage == Median || linkage == Centroid;
    return options.measure.value_or(squared ? SquaredEuclidean : Euclidean);
}

std::string MethodOf(const ClusterOptions& options) {
    return NameOf(Linkages(), options.linkage) + " linkage, " +
           (options.variables ? "distances 1 - r" : NameOf(Measures(), MeasureOf(options)) + " distances") +
           (options.standardize ? ", standardized columns" : "");
}

Members FindMembers(const types::IReadableVector<ClusterStep>& steps, const ClusterOptions& options) {
    if (options.cut) return Checked(Members(FindMembersWithCut(steps, *options.cut)));
    const double k = *options.clusters;
    if (k != std::floor(k) || k < 1 || k > static_cast<double>(steps.size() + 1))
        throw InputError(AsGiven(k) + " clusters cannot be made of " + std::to_string(steps.size() + 1) +
                         " objects");
    return Checked(Members(FindMembersWithNumber(steps, static_cast<int>(k))));
}

void PrintJoins(std::ostream& out, const types::IReadableVector<ClusterStep>& steps,
                const std::vector<std::string>& labels) {
    const auto name = [&labels](int cluster) {
        return OneLine(ShortenedToEnd(labels[static_cast<std::size_t>(cluster)], kNameWidth));
    };
    out << "Joins, a cluster named after the first of its objects\n" << std::right;
    out << std::setw(kCountWidth) << "step" << std::setw(kNameWidth + 1) << "cluster"
        << std::setw(kNameWidth + 1) << "with" << std::setw(kCountWidth) << "size" << std::setw(kValueWidth)
        << "distance" << std::setw(kValueWidth) << "similarity" << '\n';
    for (std::size_t s = 0; s < steps.size(); ++s)
        out << std::setw(kCountWidth) << s + 1 << std::setw(kNameWidth + 1) << name(steps[s].cluster1)
            << std::setw(kNameWidth + 1) << name(steps[s].cluster2) << std::setw(kCountWidth) << steps[s].size
            << std::setw(kValueWidth) << Cell(steps[s].distance, kDigits) << std::setw(kValueWidth)
            << Cell(steps[s].similarity, kDigits) << '\n';
}

void PrintMembers(std::ostream& out, const types::IReadableVector<int>& members,
                  const std::vector<std::string>& labels) {
    const int count = *std::max_element(members.DataImpl(), members.DataImpl() + members.size()) + 1;
    for (int cluster = 0; cluster < count; ++cluster) {
        out << "Cluster " << cluster + 1 << ", "
            << std::count(members.DataImpl(), members.DataImpl() + members.size(), cluster) << " objects\n";
        std::string line;
        for (std::size_t object = 0; object < members.size(); ++object) {
            if (members[object] != cluster) continue;
            const std::string word = ' ' + OneLine(labels[object]);
            if (!line.empty() && line.size() + word.size() >= kLineWidth) {
                out << ' ' << line << '\n';
                line.clear();
            }
            line += word;
        }
        out << ' ' << line << '\n';
    }
}

void PrintClusters(std::ostream& out, const ClusterOptions& options) {
    const Objects objects = ReadObjects(options);
    const Matrix distances = options.variables
                                 ? DistancesOfColumns(objects.numbers)
                                 : DistancesOfRows(objects.numbers, MeasureOf(options), options.standardize);
    const double maximum = MaxDistance(*distances);
    const Steps steps = Checked(Steps(RunClustering(options.linkage, maximum, *distances)));
    const Members members = options.clusters || options.cut ? FindMembers(*steps, options) : nullptr;

    out << "Clusters of the " << (options.variables ? "columns " : "rows by ")
        << OneLine(Joined(objects.columns.names)) << '\n';
    out << "  " << MethodOf(options) << '\n';
    PrintRow(out, options.variables ? "rows" : "n", std::to_string(objects.rows));
    PrintOrigin(out, objects.origin);
    PrintLeftOut(out, objects.columns.leftOut);
    out << '\n';
    PrintJoins(out, *steps, objects.labels);
    if (maximum == 0) out << "  -: not defined, all distances are 0\n";
    out << '\n';
    DrawDendrogram(out, *steps, objects.labels);
    if (members == nullptr) return;
    out << '\n';
    PrintMembers(out, *members, objects.labels);
}

}  // namespace

void AddCluster(const Command& app) {
    const auto options = std::make_shared<ClusterOptions>();
    const Command cluster =
        app.AddCommand("cluster", "Hierarchical clustering of the rows or columns of a table");
    AddInput(cluster, options->input);
    AddHeadings(cluster, "--columns", options->columns,
                "Headings of the columns (default: those of numbers)");
    const Option labels =
        AddHeading(cluster, "--labels", options->labels, "Heading of the names of the rows");
    AddChoice(cluster, "--linkage", options->linkage, Linkages(), "distance of clusters (default: average)");
    const Option measure = AddChoice(cluster, "--measure", options->measure, Measures(),
                                     "distance of rows (default: euclidean, or its square)");
    const Option standardize =
        cluster.AddFlag("--standardize", options->standardize, "Take columns in units of their sd");
    cluster.AddFlag("--variables", options->variables, "Cluster the columns, by their correlations")
        .Exclude({labels, measure, standardize});
    const Option clusters = AddNumber(cluster, "--clusters", options->clusters, Number("a number", IsAny),
                                      "List so many clusters");
    AddNumber(cluster, "--cut", options->cut, Number("a number", IsAny), "List the clusters at a similarity")
        .Exclude({clusters});
    cluster.OnCall([options] { PrintClusters(std::cout, *options); });
}

}  // namespace analyze
