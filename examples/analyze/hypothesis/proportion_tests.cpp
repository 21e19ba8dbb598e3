#include "hypothesis/proportion_tests.h"

#include <zul/hypothesis.h>

#include <array>
#include <cmath>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "command/options.h"
#include "hypothesis/events.h"
#include "input/counts.h"
#include "input/rows.h"
#include "output/test_text.h"
#include "output/text.h"

namespace analyze {
namespace {

struct ProportionOptions : TestOptions {
    ProportionOptions() { hypothesised = 0.5; }
    std::string event = "1";
    double events = 0;  // the counts instead of a file
    double trials = 0;
    bool isSummary = false;
    bool exact = false;
    bool midP = false;
    bool continuity = false;
};

struct TwoProportionOptions : TestOptions {
    std::string event = "1";
    std::vector<double> events;
    std::vector<double> trials;
    bool isSummary = false;
    bool pooled = false;
    bool continuity = false;
    bool agrestiCaffo = false;
};

// What is counted, as a report names it.
struct Counted {
    std::string description;
    std::array<std::string, 2> labels;
    std::array<EventCount, 2> counts;
    Origin origin;
};

bool IsDifferenceOfProbabilities(double x) {
    return x > -1 && x < 1;
}

EventCount Given(double events, double trials) {
    if (trials < 1 || events > trials)
        throw InputError(AsGiven(events) + " events of " + AsGiven(trials) + " trials are not possible");
    return {static_cast<unsigned>(events), static_cast<unsigned>(trials)};
}

void PrintCount(std::ostream& out, const std::string& label, unsigned events, unsigned trials) {
    std::string count = std::to_string(events);
    PrintRow(out, label, count.append(" of ").append(std::to_string(trials)));
}

Counted ReadProportion(const ProportionOptions& options) {
    if (options.isSummary) return {"a given count", {}, {Given(options.events, options.trials)}, {}};
    const Table table(options.input);
    const Rows rows(table, {options.columns.column});
    const CsvRow cells = rows.Cells(0);
    const std::string& name = rows.Names()[0];
    CheckEvent(table, cells, name, options.event);
    return {Quoted(options.event) + " in " + Quoted(name),
            {},
            {CountEvents(table, cells, options.event)},
            OriginOf(table, rows.Missing())};
}

// The library corrects the statistic of a one-sided test, and that of a two-sided one only where the count is as far
// from the expected one as it can be.
bool CorrectsTest(const zul::v0::OneProportion& test, const ProportionOptions& options) {
    if (options.alternative != zul::AlternativeHypothesis::NotEqual) return true;
    const double n = test.n;
    return std::abs(test.x - n * options.hypothesised) >= n / 2;
}

std::string NormalMethod(const zul::v0::OneProportion& test, const ProportionOptions& options) {
    std::string method = "normal approximation (Wilson's score)";
    if (!options.continuity) return method;
    method += CorrectsTest(test, options) ? ", interval and test corrected for continuity"
                                          : ", interval corrected for continuity, z and p not";
    return method;
}

std::string Run(zul::v0::OneProportion& test, const ProportionOptions& options) {
    const zul::IntervalType type = IntervalOf(options.alternative);
    Expect(RunOneProportion(&test, !options.exact, options.confidence, type, options.alternative,
                            options.hypothesised),
           "the test of a proportion");
    if (options.midP) {
        Expect(RunOneProportionMidP(&test, options.confidence, type), "the mid-p interval");
        Expect(RunOneProportionMidP(&test, options.alternative, options.hypothesised), "the mid-p test");
        return "mid-p";
    }
    if (options.exact) return "exact (Clopper-Pearson)";
    if (options.continuity) {
        Expect(RunOneProportionWilson(&test, true, options.confidence, type), "Wilson's interval");
        Expect(RunOneProportionWilson(&test, true, options.alternative, options.hypothesised),
               "Wilson's test");
    }
    return NormalMethod(test, options);
}

void PrintProportion(std::ostream& out, const ProportionOptions& options) {
    const Counted counted = ReadProportion(options);
    zul::v0::OneProportion test;
    test.x = counted.counts[0].events;
    test.n = counted.counts[0].trials;
    const std::string method = Run(test, options);
    const bool isNormal = !options.exact && !options.midP;

    out << "Proportion of " << OneLine(counted.description) << ", " << method << '\n';
    PrintCount(out, "events", test.x, test.n);
    PrintOrigin(out, counted.origin);
    PrintEstimate(out, "proportion", test.proportion);
    PrintInterval(out, "proportion", options, test.lowerBound, test.upperBound,
                  isNormal ? "the corrected count is outside 0 to n" : "too many trials for the exact law");
    if (isNormal && options.alternative != zul::AlternativeHypothesis::NotEqual)
        out << "    by the two-sided normal quantile, but for its factor, the one-sided one\n";
    PrintHypotheses(out, "proportion", options);
    if (isNormal) PrintTest(out, "z", test.zStatistic);
    PrintP(out, "p", test.pValue, "too many trials for the exact law");
}

Counted ReadTwoProportions(const TwoProportionOptions& options) {
    if (options.isSummary)
        return {"given counts",
                {"first", "second"},
                {Given(options.events[0], options.trials[0]), Given(options.events[1], options.trials[1])},
                {}};
    const Table table(options.input);
    const Samples read = ReadTwoSamples(table, options.columns);
    const Sample& first = read.samples[0];
    const Sample& second = read.samples[1];
    CsvRow all = first.cells;
    all.insert(all.end(), second.cells.begin(), second.cells.end());
    CheckEvent(table, all, options.columns.column, options.event);
    return {Quoted(options.event) + " in " + read.description,
            {first.label, second.label},
            {CountEvents(table, first.cells, options.event), CountEvents(table, second.cells, options.event)},
            read.origin};
}

zul::v0::TwoProportion Run(const Counted& counted, const TwoProportionOptions& options) {
    const zul::IntervalType type = IntervalOf(options.alternative);
    zul::v0::TwoProportion test;
    test.x1 = counted.counts[0].events;
    test.n1 = counted.counts[0].trials;
    test.x2 = counted.counts[1].events;
    test.n2 = counted.counts[1].trials;
    Expect(RunKelTwoProportion(&test, options.pooled, options.confidence, type, options.alternative,
                               options.hypothesised),
           "the test of two proportions");
    if (options.continuity)
        Expect(RunTwoProportionWaldCI(&test, true, options.confidence, type), "Wald's interval");
    if (options.agrestiCaffo)
        Expect(RunTwoProportionAgrestiCaffoCI(&test, false, options.confidence, type),
               "Agresti and Caffo's interval");
    return test;
}

std::string MethodOf(const TwoProportionOptions& options) {
    const bool pooled = options.pooled && options.hypothesised == 0;
    return std::string(options.agrestiCaffo ? "Agresti and Caffo's interval"
                       : options.continuity ? "Wald's interval corrected for continuity"
                                            : "Wald's interval") +
           ", z and p " + (options.continuity ? "not, " : "") + "by " + (pooled ? "the pooled" : "separate") +
           (pooled ? " variance" : " variances");
}

void PrintTwoProportions(std::ostream& out, const TwoProportionOptions& options) {
    constexpr std::size_t kLabelLength = 16;
    const Counted counted = ReadTwoProportions(options);
    const zul::v0::TwoProportion test = Run(counted, options);
    const auto label = [&](std::size_t i) {
        return OneLine(ShortenedToEnd(counted.labels[i], kLabelLength));
    };
    out << "Difference of the proportions of " << OneLine(counted.description) << '\n';
    out << "  " << MethodOf(options) << '\n';
    PrintCount(out, label(0), test.x1, test.n1);
    PrintCount(out, label(1), test.x2, test.n2);
    PrintOrigin(out, counted.origin);
    PrintEstimate(out, "first proportion", test.proportion1);
    PrintEstimate(out, "second proportion", test.proportion2);
    PrintEstimate(out, "difference", test.difference);
    PrintInterval(out, "difference", options, test.lowerBound, test.upperBound);
    if (options.agrestiCaffo && options.alternative != zul::AlternativeHypothesis::NotEqual)
        out << "    by the two-sided normal quantile, but for its factor, the one-sided one\n";
    PrintHypotheses(out, "difference", options);
    PrintTest(out, "z", test.zStatistic, "the variance is 0");
    PrintP(out, "p", test.pValue, "the variance is 0");
    if (options.hypothesised == 0) PrintP(out, "p, Fisher's exact", test.fisherPValue, "too many trials");
}

void AddEvent(const Command& command, std::string& event) {
    AddText(command, "--event", "TEXT", event, "What a cell says for an event (default: 1)");
}

void AddOne(const Command& app) {
    const auto one = std::make_shared<ProportionOptions>();
    const Command command = app.AddCommand("proportion", "Interval and test of the proportion of events");
    AddInput(command, one->input, false);
    AddColumn(command, one->columns.column);
    AddEvent(command, one->event);
    AddNumber(command, "--events", one->events, Number("a whole number", IsCount),
              "Number of events, without FILE");
    AddNumber(command, "--trials", one->trials, Number("a whole number", IsCount), "Number of trials");
    AddNumber(command, "--proportion", one->hypothesised, Number("between 0 and 1", IsProbability),
              "Hypothesised proportion (default: 0.5)");
    const Option exact = command.AddFlag("--exact", one->exact, "The binomial distribution itself");
    const Option midP =
        command.AddFlag("--mid-p", one->midP, "The same with half of the probability of the count");
    command.AddFlag("--continuity", one->continuity, "Correct the normal approximation for continuity")
        .Exclude({exact, midP});
    midP.Exclude({exact});
    AddInference(command, *one);
    command.OnCall([one, command] {
        one->isSummary = HasSummary(command, {"--events", "--trials"});
        PrintProportion(std::cout, *one);
    });
}

void AddTwo(const Command& app) {
    const auto two = std::make_shared<TwoProportionOptions>();
    const Command command =
        app.AddCommand("two-proportions", "Interval and tests of the difference of two proportions");
    AddInput(command, two->input, false);
    AddColumn(command, two->columns.column);
    AddSecondSample(command, two->columns);
    AddEvent(command, two->event);
    AddNumbers(command, "--events", two->events, "The two numbers of events, without FILE",
               Number("a whole number", IsCount), 2);
    AddNumbers(command, "--trials", two->trials, "The numbers of trials", Number("a whole number", IsCount),
               2);
    AddNumber(command, "--difference", two->hypothesised,
              Number("between -1 and 1", IsDifferenceOfProbabilities),
              "Hypothesised difference (default: 0)");
    command.AddFlag("--pooled", two->pooled, "Estimate the variance of the test from both samples together");
    const Option continuity =
        command.AddFlag("--continuity", two->continuity, "Correct the interval for continuity");
    command.AddFlag("--agresti-caffo", two->agrestiCaffo, "The interval of Agresti and Caffo")
        .Exclude({continuity});
    AddInference(command, *two);
    command.OnCall([two, command] {
        two->isSummary = HasSummary(command, {"--events", "--trials"});
        PrintTwoProportions(std::cout, *two);
    });
}

}  // namespace

void AddProportionTests(const Command& app) {
    AddOne(app);
    AddTwo(app);
}

}  // namespace analyze
