#pragma once

namespace zul::descriptive {

// The most frequent of n sorted values, in ascending order, as many as there is room for; NaN in the rest of
// the room. A value that occurs once is no mode: without repeats both counts are 0.
void SortedModes(const double* sorted, unsigned n, double* modes, unsigned maxModes, unsigned* modeCount,
                 unsigned* modeFrequency);

}  // namespace zul::descriptive
