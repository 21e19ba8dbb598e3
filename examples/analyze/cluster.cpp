#include "cluster.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <limits>
#include <memory>
#include <new>
#include <string_view>
#include <vector>

#include "csv_table.h"
#include "dendrogram.h"
#include "text.h"

namespace analyze {
namespace {

using namespace zul::dax;
using namespace zul::dax::clustering;

using Steps = std::unique_ptr<types::IReadableVector<ClusterStep>>;
using Labels = std::unique_ptr<types::IReadableVector<int>>;
using Table = std::unique_ptr<types::IRectangularArray<double>>;
using Matrix = std::unique_ptr<DistanceMatrix>;

constexpr int kDigits = 8;
constexpr int kNameWidth = 70;
constexpr int kCountWidth = 9;
constexpr int kValueWidth = 16;
constexpr std::size_t kLineWidth = 78;

// What the library could not make, it had no memory for.
template <typename Pointer>
Pointer Checked(Pointer made) {
    if (made == nullptr) throw std::bad_alloc();
    return made;
}

Table ReadTable(const CsvTable& csv, const std::vector<std::string>& names) {
    std::vector<std::vector<double>> columns;
    columns.reserve(names.size());
    for (const std::string& name : names)
        columns.push_back(csv.ReadColumn(name));
    const std::size_t rows = columns.front().size();
    if (rows > std::numeric_limits<int>::max()) throw InputError("too many rows");
    Table table = Checked(
        Table(types::MakeIRectangularArrayDouble(static_cast<int>(rows), static_cast<int>(columns.size()))));
    for (std::size_t column = 0; column < columns.size(); ++column)
        for (std::size_t row = 0; row < rows; ++row)
            table->Set(static_cast<int>(row), static_cast<int>(column), columns[column][row]);
    return table;
}

Matrix ComputeDistances(const types::IRectangularArray<double>& table, const std::string& measure,
                        bool standardize) {
    Matrix distances = Checked(Matrix(MakeDistanceMatrix(table.RowCount())));
    if (CreateForClusterObservations(table, Measures().at(measure), standardize, *distances) !=
        types::Success)
        throw std::bad_alloc();
    return distances;
}

double MaxDistance(const DistanceMatrix& distances) {
    double maximum = 0;
    for (int i = 0; i < distances.RowCount(); ++i)
        for (int j = 0; j < i; ++j)
            maximum = std::max(maximum, distances(i, j));
    return maximum;
}

// The linkages whose formulas are about squared distances.
std::string MeasureOf(const ClusterOptions& options) {
    if (!options.measure.empty()) return options.measure;
    const bool squared =
        options.linkage == "ward" || options.linkage == "median" || options.linkage == "centroid";
    return squared ? "squared-euclidean" : "euclidean";
}

Labels FindMembers(const types::IReadableVector<ClusterStep>& steps, const ClusterOptions& options) {
    if (options.cut) return Checked(Labels(FindMembersWithCut(steps, *options.cut)));
    const double k = *options.clusters;
    if (k != std::floor(k) || k < 1 || k > static_cast<double>(steps.size() + 1))
        throw InputError(AsGiven(k) + " clusters cannot be made of " + std::to_string(steps.size() + 1) +
                         " rows");
    return Checked(Labels(FindMembersWithNumber(steps, static_cast<int>(k))));
}

void PrintJoins(std::ostream& out, const types::IReadableVector<ClusterStep>& steps) {
    const auto row = [&out](const auto&... cells) { (..., (out << std::setw(kCountWidth) << cells)); };
    out << "Joins, of objects numbered by their rows from 1\n" << std::right;
    row("step", "cluster", "with", "size");
    out << std::setw(kValueWidth) << "distance" << std::setw(kValueWidth) << "similarity" << '\n';
    for (std::size_t s = 0; s < steps.size(); ++s) {
        row(s + 1, steps[s].cluster1 + 1, steps[s].cluster2 + 1, steps[s].size);
        out << std::setw(kValueWidth) << Significant(steps[s].distance, kDigits) << std::setw(kValueWidth)
            << Significant(steps[s].similarity, kDigits) << '\n';
    }
}

void PrintMembers(std::ostream& out, const types::IReadableVector<int>& labels) {
    const int count = *std::max_element(labels.DataImpl(), labels.DataImpl() + labels.size()) + 1;
    for (int cluster = 0; cluster < count; ++cluster) {
        out << "Cluster " << cluster + 1 << ", "
            << std::count(labels.DataImpl(), labels.DataImpl() + labels.size(), cluster) << " objects\n";
        std::string line;
        for (std::size_t object = 0; object < labels.size(); ++object) {
            if (labels[object] != cluster) continue;
            const std::string word = ' ' + std::to_string(object + 1);
            if (line.size() + word.size() >= kLineWidth) {
                out << ' ' << line << '\n';
                line.clear();
            }
            line += word;
        }
        out << ' ' << line << '\n';
    }
}

}  // namespace

const std::map<std::string, LinkageEnums>& Linkages() {
    static const std::map<std::string, LinkageEnums> linkages = {
        {"average", Average},   {"single", Single}, {"complete", Complete}, {"ward", Ward},
        {"mcquitty", McQuitty}, {"median", Median}, {"centroid", Centroid}};
    return linkages;
}

const std::map<std::string, DistanceEnums>& Measures() {
    static const std::map<std::string, DistanceEnums> measures = {{"euclidean", Euclidean},
                                                                  {"squared-euclidean", SquaredEuclidean},
                                                                  {"manhattan", Manhattan},
                                                                  {"pearson", Pearson},
                                                                  {"squared-pearson", SquaredPearson}};
    return measures;
}

void PrintClusters(std::ostream& out, const ClusterOptions& options) {
    const CsvTable csv(options.file);
    const std::vector<std::string> names = csv.NumericColumns();
    const Table table = ReadTable(csv, names);
    const std::string measure = MeasureOf(options);
    const Matrix distances = ComputeDistances(*table, measure, options.standardize);
    const double maximum = MaxDistance(*distances);
    const Steps steps = Checked(Steps(RunClustering(Linkages().at(options.linkage), maximum, *distances)));
    const bool wantsMembers = options.clusters || options.cut;
    const Labels labels = wantsMembers ? FindMembers(*steps, options) : nullptr;

    out << "File     " << OneLine(ShortenedToEnd(options.file, kNameWidth)) << "\nColumns ";
    for (const std::string& name : names)
        out << ' ' << OneLine(name);
    out << "\nLinkage  " << options.linkage << ", distances " << measure
        << (options.standardize ? ", standardized columns" : "") << "\n\n";
    PrintJoins(out, *steps);
    out << '\n';
    DrawDendrogram(out, *steps);
    if (!wantsMembers) return;
    out << '\n';
    PrintMembers(out, *labels);
}

}  // namespace analyze
