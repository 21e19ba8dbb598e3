#include "group_tests.h"

#include <zul/rank_tests.h>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "csv_table.h"
#include "options.h"
#include "samples.h"
#include "summary.h"
#include "test_text.h"
#include "text.h"

namespace analyze {
namespace {

constexpr int kNoVariation = 30007;
constexpr int kLabelWidth = 16;
constexpr int kCellWidth = 14;

struct GroupOptions {
    std::string file;
    std::string column;
    std::string by;
    std::string blocks;
};

std::string Place(const GroupOptions& options) {
    return options.file + ": column " + Quoted(options.column);
}

// The values of all groups, one after the other.
struct GroupedValues {
    std::vector<std::string> labels;
    std::vector<double> values;
    std::vector<unsigned> sizes;

    explicit GroupedValues(const GroupOptions& options) {
        const CsvTable table(options.file);
        for (const Sample& sample : ReadGroups(table, options.column, options.by)) {
            const std::vector<double> group = table.ReadNumbers(sample.cells, sample.column);
            labels.push_back(sample.label);
            values.insert(values.end(), group.begin(), group.end());
            sizes.push_back(CountOf(group));
        }
        if (sizes.size() < 2)
            throw InputError(options.file + ": column " + Quoted(options.by) + " has fewer than two groups");
    }
    unsigned Count() const { return CountOf(sizes); }
};

void PrintGroupRow(std::ostream& out, const std::string& label, const std::vector<std::string>& cells) {
    out << "  " << std::left << std::setw(kLabelWidth) << OneLine(ShortenedToEnd(label, kLabelWidth))
        << std::right;
    for (const std::string& cell : cells)
        out << std::setw(kCellWidth) << cell;
    out << '\n';
}

// Equal values are no failure of the program, but have no p-value.
void ExpectVariation(int status, const GroupOptions& options, const std::string& what) {
    if (status == kNoVariation) throw InputError(Place(options) + ": " + what + " needs values that differ");
    Expect(status, what);
}

void PrintChiSquare(std::ostream& out, const std::string& label, double statistic, double df, double p) {
    PrintTest(out, label, statistic);
    PrintRow(out, "df", AsGiven(df));
    PrintTest(out, "p, chi-square approximation", p);
}

void PrintKruskalWallis(std::ostream& out, const GroupOptions& options) {
    const GroupedValues data(options);
    zul::v0::KruskalWallis test;
    test.groups = data.Count();
    std::vector<double> medians(test.groups);
    std::vector<double> meanRanks(test.groups);
    std::vector<double> z(test.groups);
    ExpectVariation(RunKruskalWallis(&test, data.values.data(), data.sizes.data(), medians.data(),
                                     meanRanks.data(), z.data()),
                    options, "the Kruskal-Wallis test");
    out << "Kruskal-Wallis test of " << OneLine(Quoted(options.column)) << " by "
        << OneLine(Quoted(options.by)) << '\n';
    PrintGroupRow(out, "group", {"n", "median", "mean rank", "z"});
    for (std::size_t i = 0; i < data.sizes.size(); ++i)
        PrintGroupRow(out, data.labels[i],
                      {std::to_string(data.sizes[i]), Significant(medians[i], kEstimateDigits),
                       Significant(meanRanks[i], kEstimateDigits), Significant(z[i], kTestDigits)});
    PrintTest(out, "H", test.h);
    PrintChiSquare(out, "H, adjusted for ties", test.hAdjusted, test.degreesOfFreedom, test.pValueAdjusted);
}

void PrintMood(std::ostream& out, const GroupOptions& options) {
    const GroupedValues data(options);
    zul::v0::MoodMedian test;
    test.groups = data.Count();
    std::vector<unsigned> notAbove(test.groups);
    std::vector<unsigned> above(test.groups);
    std::vector<double> medians(test.groups);
    std::vector<double> ranges(test.groups);
    ExpectVariation(RunMoodMedian(&test, data.values.data(), data.sizes.data(), notAbove.data(), above.data(),
                                  medians.data(), ranges.data()),
                    options, "the median test");
    out << "Mood's median test of " << OneLine(Quoted(options.column)) << " by "
        << OneLine(Quoted(options.by)) << '\n';
    PrintEstimate(out, "overall median", test.overallMedian);
    PrintGroupRow(out, "group", {"<= it", "> it", "median", "Q3 - Q1"});
    for (std::size_t i = 0; i < data.sizes.size(); ++i)
        PrintGroupRow(out, data.labels[i],
                      {std::to_string(notAbove[i]), std::to_string(above[i]),
                       Significant(medians[i], kEstimateDigits), Significant(ranges[i], kEstimateDigits)});
    PrintChiSquare(out, "chi-square", test.chiSquare, test.degreesOfFreedom, test.pValue);
}

// Block by block; each has one value of each treatment.
std::vector<double> ReadBlocks(const GroupOptions& options, std::vector<std::string>* treatments) {
    const CsvTable table(options.file);
    const std::vector<double> values = table.ReadColumn(options.column);
    const CsvRow by = table.ReadCells(options.by);
    const CsvRow blocks = table.ReadCells(options.blocks);
    for (const Sample& sample : ReadGroups(table, options.column, options.by))
        treatments->push_back(sample.label);
    std::map<std::string, std::map<std::string, double>> layout;
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!layout[blocks[i].text].emplace(by[i].text, values[i]).second)
            throw InputError(table.Place(by[i], options.by) + ": block " + Quoted(blocks[i].text) +
                             " has a second value of " + Quoted(by[i].text));
    std::vector<double> ordered;
    for (const auto& [block, row] : layout)
        for (const std::string& treatment : *treatments) {
            const auto cell = row.find(treatment);
            if (cell == row.end())
                throw InputError(options.file + ": block " + Quoted(block) + " has no value of " +
                                 Quoted(treatment));
            ordered.push_back(cell->second);
        }
    return ordered;
}

void PrintFriedman(std::ostream& out, const GroupOptions& options) {
    std::vector<std::string> treatments;
    const std::vector<double> values = ReadBlocks(options, &treatments);
    zul::v0::Friedman test;
    test.treatments = CountOf(treatments);
    test.blocks = CountOf(values) / test.treatments;
    if (test.treatments < 2)
        throw InputError(options.file + ": column " + Quoted(options.by) + " has fewer than two groups");
    std::vector<double> rankSums(test.treatments);
    std::vector<double> effects(test.treatments);
    ExpectVariation(RunFriedman(&test, values.data(), rankSums.data(), effects.data()), options,
                    "the Friedman test");
    out << "Friedman test of " << OneLine(Quoted(options.column)) << " by " << OneLine(Quoted(options.by))
        << ", " << test.blocks << " blocks\n";
    PrintGroupRow(out, "treatment", {"rank sum", "effect", "median"});
    for (std::size_t j = 0; j < treatments.size(); ++j)
        PrintGroupRow(out, treatments[j],
                      {AsGiven(rankSums[j]), Significant(effects[j], kEstimateDigits),
                       Significant(test.grandMedian + effects[j], kEstimateDigits)});
    PrintEstimate(out, "grand median", test.grandMedian);
    PrintTest(out, "S", test.s);
    PrintChiSquare(out, "S, adjusted for ties", test.sAdjusted, test.degreesOfFreedom, test.pValueAdjusted);
    PrintTest(out, "Kendall's W", test.kendallW);
}

template <typename Print>
void Add(CLI::App& app, const std::string& name, const std::string& description, bool hasBlocks,
         Print print) {
    const auto options = std::make_shared<GroupOptions>();
    CLI::App& command = *app.add_subcommand(name, description);
    AddColumn(command, options->file, options->column);
    command.add_option("--by", options->by, "Heading of the column that names the group of each value")
        ->required()
        ->type_name("NAME");
    if (hasBlocks)
        command
            .add_option("--blocks", options->blocks,
                        "Heading of the column that names the block of each value")
            ->required()
            ->type_name("NAME");
    command.callback([options, print] { print(std::cout, *options); });
}

}  // namespace

void AddGroupTests(CLI::App& app) {
    Add(app, "kruskal-wallis", "Rank test of the groups of one column", false, PrintKruskalWallis);
    Add(app, "mood", "Median test of the groups of one column", false, PrintMood);
    Add(app, "friedman", "Rank test of treatments in blocks", true, PrintFriedman);
}

}  // namespace analyze
