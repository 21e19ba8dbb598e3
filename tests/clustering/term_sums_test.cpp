#include "clustering/distances/term_sums.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "processor/processor.h"

namespace zul::dax::clustering {
namespace {

// Distances must not depend on the processor. What they are is tested through the exported functions.
TEST(TermSums, AreTheSameWithWideVectors) {
    if (!processor::HasWideVectors()) GTEST_SKIP();
    std::mt19937_64 random(4);
    std::normal_distribution<double> normal(3, 1);
    constexpr std::size_t kColumns = 30;
    std::vector<double> divisors(kColumns);
    std::vector<double> panel(kColumns * kLanes);
    for (double& value : divisors)
        value = std::abs(normal(random));
    for (double& value : panel)
        value = normal(random);
    for (const Term term : {Term::Square, Term::Absolute, Term::DividedSquare}) {
        for (const bool isRoot : {false, true}) {
            double narrow[kLanes];
            double wide[kLanes];
            const TermSum sum{kColumns, divisors.data(), isRoot};
            FindSumTerms(term, false)(sum, panel.data(), panel.data(), narrow);
            FindSumTerms(term, true)(sum, panel.data(), panel.data(), wide);
            for (std::size_t lane = 0; lane < kLanes; ++lane)
                EXPECT_EQ(narrow[lane], wide[lane]);
        }
    }
}

}  // namespace
}  // namespace zul::dax::clustering
