#include "hypothesis/group_tests.h"

#include <zul/rank_tests.h>

#include <algorithm>
#include <iomanip>
#include <iostream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "command/options.h"
#include "input/counts.h"
#include "input/samples.h"
#include "output/test_text.h"
#include "output/text.h"

namespace analyze {
namespace {

constexpr int kNoVariation = 30007;
constexpr int kLabelWidth = 16;
constexpr int kCellWidth = 14;

struct GroupOptions {
    InputOptions input;
    std::string column;
    std::string by;
    std::string blocks;
};

// The values of all groups, one after the other.
struct GroupedValues {
    std::vector<std::string> labels;
    std::vector<double> values;
    std::vector<unsigned> sizes;
    Origin origin;
    std::string description;

    explicit GroupedValues(const GroupOptions& options) {
        const Table table(options.input);
        const Samples samples = ReadGroups(table, options.column, options.by);
        for (const Sample& sample : samples.samples) {
            const std::vector<double> group = table.Numbers(sample.cells, sample.column);
            labels.push_back(sample.label);
            values.insert(values.end(), group.begin(), group.end());
            sizes.push_back(CountOf(group));
        }
        origin = samples.origin;
        description = OneLine(samples.description);
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
void ExpectVariation(int status, const std::string& description, const std::string& what) {
    if (status == kNoVariation) throw InputError(description + ": " + what + " needs values that differ");
    Expect(status, what);
}

void PrintChiSquare(std::ostream& out, const std::string& label, double statistic, double df, double p) {
    PrintTest(out, label, statistic);
    PrintDf(out, df);
    PrintP(out, "p, chi-square approximation", p);
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
                    data.description, "the Kruskal-Wallis test");
    out << "Kruskal-Wallis test of " << data.description << '\n';
    PrintRow(out, "n", std::to_string(test.n));
    PrintOrigin(out, data.origin);
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
                    data.description, "the median test");
    out << "Mood's median test of " << data.description << ", quartiles of type 6\n";
    PrintRow(out, "n", std::to_string(test.n));
    PrintOrigin(out, data.origin);
    PrintEstimate(out, "overall median", test.overallMedian);
    PrintGroupRow(out, "group", {"<= it", "> it", "median", "Q3 - Q1"});
    for (std::size_t i = 0; i < data.sizes.size(); ++i)
        PrintGroupRow(out, data.labels[i],
                      {std::to_string(notAbove[i]), std::to_string(above[i]),
                       Significant(medians[i], kEstimateDigits), Significant(ranges[i], kEstimateDigits)});
    PrintChiSquare(out, "chi-square", test.chiSquare, test.degreesOfFreedom, test.pValue);
}

// Block by block, a value of each treatment.
struct Blocks {
    std::vector<std::string> treatments;
    std::vector<double> values;
    std::size_t leftOut = 0;  // blocks that a missing value makes incomplete
    Origin origin;
};

using Layout = std::map<std::string, std::map<std::string, double>>;

Layout ReadLayout(const Table& table, const Rows& rows, const GroupOptions& options) {
    const std::vector<double> values = rows.Numbers(0);
    const CsvRow by = rows.Cells(1);
    const CsvRow blocks = rows.Cells(2);
    Layout layout;
    for (std::size_t i = 0; i < values.size(); ++i)
        if (!layout[blocks[i].text].emplace(by[i].text, values[i]).second)
            throw InputError(table.Place(by[i], options.by) + ": block " + Quoted(blocks[i].text) +
                             " has a second value of " + Quoted(by[i].text));
    return layout;
}

Blocks ReadBlocks(const GroupOptions& options) {
    const Table table(options.input);
    const Rows rows(table, {options.column, options.by, options.blocks});
    Blocks blocks{{}, {}, 0, OriginOf(table, rows.Missing())};
    for (const Sample& sample : ReadGroups(table, options.column, options.by).samples)
        blocks.treatments.push_back(sample.label);
    for (const auto& [block, row] : ReadLayout(table, rows, options)) {
        const auto& has = row;
        const auto gap = std::ranges::find_if(
            blocks.treatments, [&has](const std::string& treatment) { return !has.contains(treatment); });
        if (gap != blocks.treatments.end() && rows.Missing() == 0)
            throw InputError(table.Path() + ": block " + Quoted(block) + " has no value of " + Quoted(*gap));
        if (gap != blocks.treatments.end())
            ++blocks.leftOut;
        else
            for (const std::string& treatment : blocks.treatments)
                blocks.values.push_back(row.at(treatment));
    }
    if (blocks.values.empty()) throw InputError(table.Path() + ": no block is complete");
    return blocks;
}

void PrintFriedman(std::ostream& out, const GroupOptions& options) {
    const Blocks blocks = ReadBlocks(options);
    const std::string description = OneLine(Quoted(options.column) + " by " + Quoted(options.by) +
                                            " in blocks of " + Quoted(options.blocks));
    zul::v0::Friedman test;
    test.treatments = CountOf(blocks.treatments);
    test.blocks = CountOf(blocks.values) / test.treatments;
    std::vector<double> rankSums(test.treatments);
    std::vector<double> effects(test.treatments);
    ExpectVariation(RunFriedman(&test, blocks.values.data(), rankSums.data(), effects.data()), description,
                    "the Friedman test");
    out << "Friedman test of " << description << '\n';
    PrintRow(out, "blocks", std::to_string(test.blocks));
    PrintOrigin(out, blocks.origin);
    if (blocks.leftOut > 0) PrintRow(out, "incomplete blocks", std::to_string(blocks.leftOut) + ", left out");
    PrintGroupRow(out, "treatment", {"rank sum", "effect", "median"});
    for (std::size_t j = 0; j < blocks.treatments.size(); ++j)
        PrintGroupRow(out, blocks.treatments[j],
                      {AsGiven(rankSums[j]), Significant(effects[j], kEstimateDigits),
                       Significant(test.grandMedian + effects[j], kEstimateDigits)});
    PrintEstimate(out, "grand median", test.grandMedian);
    PrintTest(out, "S", test.s);
    PrintChiSquare(out, "S, adjusted for ties", test.sAdjusted, test.degreesOfFreedom, test.pValueAdjusted);
    PrintTest(out, "Kendall's W", test.kendallW);
}

template <typename Print>
void Add(const Command& app, const std::string& name, const std::string& description, bool hasBlocks,
         Print print) {
    const auto options = std::make_shared<GroupOptions>();
    const Command command = app.AddCommand(name, description);
    AddInput(command, options->input);
    AddColumn(command, options->column);
    AddBy(command, options->by);
    if (hasBlocks)
        AddHeading(command, "--blocks", options->blocks,
                   "Heading of the column that names the block of each value")
            .Require();
    command.OnCall([options, print] { print(std::cout, *options); });
}

}  // namespace

void AddGroupTests(const Command& app) {
    Add(app, "kruskal-wallis", "Rank test of the groups of one column", false, PrintKruskalWallis);
    Add(app, "mood", "Median test of the groups of one column", false, PrintMood);
    Add(app, "friedman", "Rank test of treatments in blocks", true, PrintFriedman);
}

}  // namespace analyze
