#include "frame/missing_value.h"
#include "zul/hypothesis.h"

namespace zul::v0 {

using frame::kQuietNaN;

OneSampleZ::OneSampleZ()
    : mean(kQuietNaN),
      standardDeviation(kQuietNaN),
      standardError(kQuietNaN),
      lowerBound(kQuietNaN),
      upperBound(kQuietNaN),
      zStatistic(kQuietNaN),
      pValue(kQuietNaN),
      n(0) {}

}  // namespace zul::v0
