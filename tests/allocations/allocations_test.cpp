#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <exception>
#include <fstream>
#include <iterator>
#include <limits>
#include <regex>
#include <set>
#include <sstream>

#include "allocations/calls.h"
#include "distributions/families.h"
#include "support/allocations.h"
#include "support/float_mode.h"
#include "zul/frame.h"

namespace zul {
namespace {

using test::AllocatingCall;
using test::Outcome;
using test::PlainCall;

std::vector<AllocatingCall> AllocatingCalls() {
    std::vector<AllocatingCall> all;
    for (const auto& calls :
         {test::AllocatingDescriptive(), test::AllocatingDistributions(), test::AllocatingHypothesis(),
          test::AllocatingObjects(), test::AllocatingSampler(), test::AllocatingClustering()})
        all.insert(all.end(), calls.begin(), calls.end());
    return all;
}

std::vector<PlainCall> FrameCalls() {
    return {
        {"RegisterKelSigfpeHandler SetKelFpuStates ResetFpuStates",
         [] {
             SetKelFpuStates();
             RegisterKelSigfpeHandler();
             ResetFpuStates();
         }},
        {"IsInfinity IsPlusInfinity IsMinusInfinity IsNaN IsResultNA",
         [] { IsInfinity(1) || IsPlusInfinity(1) || IsMinusInfinity(1) || IsNaN(1) || IsResultNA(1); }},
    };
}

// The call as it stands, and with each argument in turn replaced by what breaks it.
void AddWithBadArguments(const test::Function& function, const std::vector<double>& arguments,
                         std::vector<PlainCall>* calls) {
    using Limits = std::numeric_limits<double>;
    const auto add = [&](const std::vector<double>& values) {
        calls->push_back({function.name, [&function, values] { function.call(values); }});
    };
    add(arguments);
    for (std::size_t i = 0; i < arguments.size(); ++i)
        for (const double bad : {0.0, -1.0, 1e200, Limits::infinity(), Limits::quiet_NaN()}) {
            if (function.types[i] != test::Type::Real && !(bad <= 0)) continue;
            std::vector<double> values = arguments;
            values[i] = bad;
            add(values);
        }
}

void AddArrayForm(const test::Applied& applied, std::vector<PlainCall>* calls) {
    calls->push_back({applied.function->name, [applied] {
                          constexpr std::array kIn = {0.2, 0.9};
                          std::array<double, 2> out{};
                          applied(out.data(), kIn.data(), out.size());
                      }});
}

std::vector<PlainCall> DistributionCalls() {
    std::vector<PlainCall> calls;
    for (const test::Statistic& statistic : test::Statistics())
        AddWithBadArguments(statistic.function, statistic.arguments, &calls);
    for (const test::Family& family : test::Families()) {
        if (family.name == "Discrete") continue;
        for (const test::Parameters& parameters : family.parameters)
            for (const test::Applied& applied : family.With(parameters).Functions()) {
                std::vector<double> arguments = {0.3};
                arguments.insert(arguments.end(), applied.parameters.begin(), applied.parameters.end());
                AddWithBadArguments(*applied.function, arguments, &calls);
                AddArrayForm(applied, &calls);
            }
    }
    return calls;
}

std::vector<PlainCall> PlainCalls() {
    std::vector<PlainCall> all = FrameCalls();
    for (const auto& calls : {DistributionCalls(), test::PlainDescriptive(), test::PlainHypothesis(),
                              test::PlainSampler(), test::PlainClustering()})
        all.insert(all.end(), calls.begin(), calls.end());
    return all;
}

struct Result {
    Outcome outcome;
    int tried;
    int live;
};

Result RunWithFailure(const AllocatingCall& call, int failing) {
    const test::AllocationWatch watch(failing);
    const Outcome outcome = call.run(failing);
    return {outcome, watch.Count(), watch.Live()};
}

// The 1st, 2nd, ... allocation fails until the call needs none that does.
TEST(Allocations, ReportEachFailure) {
    int row = 0;
    for (const AllocatingCall& call : AllocatingCalls()) {
        ++row;
        for (int failing = 1;; ++failing) {
            SCOPED_TRACE("row " + std::to_string(row) + " " + call.exports + " without allocation " +
                         std::to_string(failing));
            const Result run = RunWithFailure(call, failing);
            const bool hasFailed = run.tried >= failing;
            EXPECT_EQ(run.live, 0);
            EXPECT_EQ(test::ModeWithoutFlags(), test::kDefaultMode);
            EXPECT_TRUE(run.outcome == (hasFailed ? Outcome::Failure : Outcome::Success) ||
                        (call.isFrugal && run.outcome == Outcome::Success));
            EXPECT_TRUE(hasFailed || failing > 1) << "allocates nothing";
            if (!hasFailed) break;
        }
    }
}

// Nor does a call that ends in an exception: its message needs no memory.
TEST(Allocations, AreNotMadeByOtherFunctions) {
    for (const PlainCall& call : PlainCalls()) {
        int tried = 0;
        {
            const test::AllocationWatch watch(1);
            try {
                call.run();
            } catch (const std::exception&) {  // NOLINT(bugprone-empty-catch): which one is not the question
            }
            tried = watch.Count();
        }
        ResetFpuStates();
        EXPECT_EQ(tried, 0) << call.exports;
    }
}

std::set<std::string> Words(const std::string& text) {
    std::istringstream words(text);
    return {std::istream_iterator<std::string>(words), {}};
}

// The exported functions of the list, without namespaces, constructors and destructors.
std::set<std::string> ExportedFunctions() {
    std::ifstream list(ZUL_TEST_DATA_DIR "/../exports/symbols.txt");
    const std::regex function(
        R"(^zul::(?:v\d::|dax::types::|dax::clustering::)?((\w+)(?:::operator\(\)|::\w+)?)\(.*)");
    const std::regex constructor(R"((\w+)::\1)");
    std::set<std::string> names;
    std::smatch match;
    for (std::string line; std::getline(list, line);)
        if (std::regex_match(line, match, function) && !std::regex_match(match.str(1), constructor))
            names.insert(match[1]);
    return names;
}

TEST(Allocations, AreWatchedInEveryExportedFunction) {
    std::set<std::string> watched;
    for (const AllocatingCall& call : AllocatingCalls())
        watched.merge(Words(call.exports));
    for (const PlainCall& call : PlainCalls())
        watched.merge(Words(call.exports));
    std::vector<std::string> different;
    std::ranges::set_symmetric_difference(watched, ExportedFunctions(), std::back_inserter(different));
    EXPECT_EQ(different, std::vector<std::string>());
}

}  // namespace
}  // namespace zul
