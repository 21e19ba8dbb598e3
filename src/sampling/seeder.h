#pragma once

#include "frame/clock.h"

namespace zul::sampling {

// The seed of a time of day. The hundredths of a second since midnight, seven decimal digits, are read
// backwards, so that the digits that change fastest come first, and spread over the seeds of the generator.
double SeedOfTime(const frame::TimeOfDay& time);

}  // namespace zul::sampling
