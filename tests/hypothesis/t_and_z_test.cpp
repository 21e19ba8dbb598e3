#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "hypothesis/record_fields.h"
#include "zul/hypothesis.h"

namespace zul::v0 {
namespace {

TEST(TestRecords, StartEmpty) {
    const TwoSampleT t;
    const TwoProportion p;
    const v1::RunsTest runs;
    for (const auto& fields : {test::Doubles(OneSampleT(), 7),
                               test::Doubles(OneSampleZ(), 7),
                               test::Doubles(PairedT(), 13),
                               test::Doubles(t, 13),
                               test::Doubles(OneProportion(), 5),
                               test::Doubles(p, 8),
                               test::Doubles(OneVariance(), 9),
                               {runs.expectedRuns, runs.pValue}})
        for (const double field : fields)
            EXPECT_TRUE(std::isnan(field)) << fields.size();
    EXPECT_EQ(OneSampleT().n | OneSampleZ().n | PairedT().n | t.n1 | t.n2 | OneProportion().x, 0u);
    EXPECT_EQ(OneProportion().n | p.x1 | p.x2 | p.n1 | p.n2 | OneVariance().n, 0u);
    EXPECT_EQ(runs.below | runs.above | runs.runs, 0u);
}

}  // namespace
}  // namespace zul::v0
