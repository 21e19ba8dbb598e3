#include "proportion_tests.h"

#include <zul/hypothesis.h>

#include <iostream>
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

struct ProportionOptions : TestOptions {
    ProportionOptions() { hypothesised = 0.5; }
    std::string event = "1";
    bool exact = false;
    bool midP = false;
    bool continuity = false;
};

struct TwoProportionOptions : TestOptions {
    std::string event = "1";
    bool pooled = false;
    bool continuity = false;
    bool agrestiCaffo = false;
};

bool IsDifferenceOfProbabilities(double x) {
    return x > -1 && x < 1;
}

// Numbers are compared by their value, so that 1.0 is 1.
bool IsEvent(const std::string& text, const std::string& event) {
    const auto value = ParseNumber(text);
    const auto wanted = ParseNumber(event);
    return value && wanted ? *value == *wanted : text == event;
}

// For each cell 1 for an event and 0 otherwise.
std::vector<int> ReadEvents(const CsvTable& table, const CsvRow& cells, const std::string& column,
                            const std::string& event) {
    std::vector<int> events;
    events.reserve(cells.size());
    for (const CsvCell& cell : cells) {
        if (cell.text.empty()) throw InputError(table.Place(cell, column) + ": the cell is blank");
        events.push_back(IsEvent(cell.text, event));
    }
    return events;
}

void PrintCount(std::ostream& out, const std::string& label, unsigned events, unsigned trials) {
    std::string count = std::to_string(events);
    PrintRow(out, label, count.append(" of ").append(std::to_string(trials)));
}

std::string Run(zul::v0::OneProportion& test, const int* data, const ProportionOptions& options) {
    const zul::IntervalType type = IntervalOf(options.alternative);
    Expect(RunOneProportion(&test, data, !options.exact, options.confidence, type, options.alternative,
                            options.hypothesised),
           "the test of a proportion");
    if (options.midP) {
        Expect(RunOneProportionMidP(&test, options.confidence, type), "the mid-p interval");
        Expect(RunOneProportionMidP(&test, options.alternative, options.hypothesised), "the mid-p test");
        return "mid-p";
    }
    if (options.exact) return "exact (Clopper-Pearson)";
    if (!options.continuity) return "normal approximation (Wilson's score)";
    Expect(RunOneProportionWilson(&test, true, options.confidence, type), "Wilson's interval");
    Expect(RunOneProportionWilson(&test, true, options.alternative, options.hypothesised), "Wilson's test");
    return "normal approximation (Wilson's score) with continuity correction";
}

void PrintProportion(std::ostream& out, const ProportionOptions& options) {
    const CsvTable table(options.file);
    const std::vector<int> events =
        ReadEvents(table, table.ReadCells(options.column), options.column, options.event);
    zul::v0::OneProportion test;
    test.n = CountOf(events);
    const std::string method = Run(test, events.data(), options);

    out << "Proportion of " << OneLine(Quoted(options.event)) << " in " << OneLine(Quoted(options.column))
        << ", " << method << '\n';
    PrintCount(out, "events", test.x, test.n);
    PrintEstimate(out, "proportion", test.proportion);
    PrintInterval(out, "proportion", options, test.lowerBound, test.upperBound);
    PrintHypotheses(out, "proportion", options);
    if (!options.exact && !options.midP) PrintTest(out, "z", test.zStatistic);
    PrintTest(out, "p", test.pValue);
}

zul::v0::TwoProportion Run(const std::vector<int>& events1, const std::vector<int>& events2,
                           const TwoProportionOptions& options) {
    const zul::IntervalType type = IntervalOf(options.alternative);
    zul::v0::TwoProportion test;
    test.n1 = CountOf(events1);
    test.n2 = CountOf(events2);
    Expect(RunKelTwoProportion(&test, events1.data(), events2.data(), options.pooled, options.confidence,
                               type, options.alternative, options.hypothesised),
           "the test of two proportions");
    if (options.continuity)
        Expect(RunTwoProportionWaldCI(&test, true, options.confidence, type), "Wald's interval");
    if (options.agrestiCaffo)
        Expect(RunTwoProportionAgrestiCaffoCI(&test, false, options.confidence, type),
               "Agresti and Caffo's interval");
    return test;
}

void PrintTwoProportions(std::ostream& out, const TwoProportionOptions& options) {
    const CsvTable table(options.file);
    const auto [first, second] = ReadTwoSamples(table, options);
    const zul::v0::TwoProportion test =
        Run(ReadEvents(table, first.cells, first.column, options.event),
            ReadEvents(table, second.cells, second.column, options.event), options);

    out << "Difference of the proportions of " << OneLine(Quoted(options.event)) << " in "
        << OneLine(Quoted(first.label)) << " and " << OneLine(Quoted(second.label)) << '\n';
    PrintCount(out, "first", test.x1, test.n1);
    PrintCount(out, "second", test.x2, test.n2);
    PrintEstimate(out, "first proportion", test.proportion1);
    PrintEstimate(out, "second proportion", test.proportion2);
    PrintEstimate(out, "difference", test.difference);
    PrintInterval(out, "difference", options, test.lowerBound, test.upperBound);
    PrintHypotheses(out, "difference", options);
    PrintTest(out, "z", test.zStatistic);
    PrintTest(out, "p", test.pValue);
    if (options.hypothesised == 0) PrintTest(out, "p, Fisher's exact", test.fisherPValue);
}

void AddEvent(CLI::App& command, std::string& event) {
    command.add_option("--event", event, "What a cell says for an event (default: 1)")->type_name("TEXT");
}

}  // namespace

void AddProportionTests(CLI::App& app) {
    const auto one = std::make_shared<ProportionOptions>();
    CLI::App& proportion = *app.add_subcommand("proportion", "Interval and test of the proportion of events");
    AddColumn(proportion, one->file, one->column);
    AddEvent(proportion, one->event);
    AddNumber(proportion, "--proportion", one->hypothesised, Number("between 0 and 1", IsProbability),
              "Hypothesised proportion (default: 0.5)");
    CLI::Option* exact = proportion.add_flag("--exact", one->exact, "The binomial distribution itself");
    CLI::Option* midP =
        proportion.add_flag("--mid-p", one->midP, "The same with half of the probability of the count");
    proportion.add_flag("--continuity", one->continuity, "Correct the normal approximation for continuity")
        ->excludes(exact, midP);
    midP->excludes(exact);
    AddInference(proportion, *one);
    proportion.callback([one] { PrintProportion(std::cout, *one); });

    const auto two = std::make_shared<TwoProportionOptions>();
    CLI::App& difference =
        *app.add_subcommand("two-proportions", "Interval and tests of the difference of two proportions");
    AddColumn(difference, two->file, two->column);
    AddSecondSample(difference, *two);
    AddEvent(difference, two->event);
    AddNumber(difference, "--difference", two->hypothesised,
              Number("between -1 and 1", IsDifferenceOfProbabilities),
              "Hypothesised difference (default: 0)");
    difference.add_flag("--pooled", two->pooled,
                        "Estimate the variance of the test from both samples together");
    CLI::Option* continuity =
        difference.add_flag("--continuity", two->continuity, "Correct the interval for continuity");
    difference.add_flag("--agresti-caffo", two->agrestiCaffo, "The interval of Agresti and Caffo")
        ->excludes(continuity);
    AddInference(difference, *two);
    difference.callback([two] { PrintTwoProportions(std::cout, *two); });
}

}  // namespace analyze
