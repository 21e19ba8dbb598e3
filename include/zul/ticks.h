/// @file
/// Axis ticks: round numbers at equal distances that cover a range.
#pragma once

#include <zul/export.h>

/// @defgroup ticks Axis ticks
/// Axis ticks: round numbers at equal distances that cover a range.
///
/// The functions compute in the floating-point mode of the caller, keep nothing between calls and throw nothing
/// in the default mode.

namespace zul {

/// Kept for hosts that call them; what makes labels easy to read, such as the room that they take, is not weighed.
namespace deprecated {

/// @addtogroup ticks
/// @{

/// The ticks of a range. All fields are outputs.
struct ZUL_API TickCalculationResult {
    double low;            ///< the first tick, at or below the range
    double high;           ///< the last tick, at or above the range
    double step;           ///< the distance of two ticks: 1, 2 or 5 times a power of ten
    double firstInside;    ///< the first tick within the range; NaN if none is
    double lastInside;     ///< the last tick within the range; NaN if none is
    unsigned count;        ///< ticks from low to high
    unsigned countInside;  ///< ticks within the range
    unsigned decimals;     ///< decimal places that print every tick exactly
    /// All doubles NaN, all counts 0.
    TickCalculationResult();
};

/// The ticks low, low + step, ..., high that enclose a range. The step is (high - low) / (wanted - 1), as m
/// times a power of ten, with m rounded to 1, 2, 5 or 10 at 1.5, 3 and 7, each of which is reached at 1 - 1e-10
/// of itself already; the ticks are the multiples of the step, and an end of the range within 1e-10 of a step
/// (and 4 last places) of one lies on it. Ends in reverse order are exchanged. Ends within 1e-12 of the larger
/// magnitude count as equal: their midpoint is widened to both sides by a tenth of its magnitude, 0 by 1. Steps
/// are 1e-307 or more.
/// Source: P. S. Heckbert, Nice numbers for graph labels, 1990.
/// @param out out: all fields, as constructed if the status is not 0
/// @param low an end of the range
/// @param high the other end
/// @param wanted about how many ticks there should be, 2 to 100
/// @return 0; 30017 for another number; 30000 if an end is NaN or infinite, or a tick would be
ZUL_API int ComputeTicks(TickCalculationResult* out, double low, double high, unsigned wanted);

/// A tick by its number: the double nearest to the decimal number (with steps below 1e-22 and above 1e22 within a
/// relative 1e-15 of it), where low + index * step would gather rounding errors. Zero is +0.
/// @param ticks a result of ComputeTicks()
/// @param index from 0
/// @return NaN for an index from ticks->count on
ZUL_API double TickValue(const TickCalculationResult* ticks, unsigned index);

/// @}

}  // namespace deprecated
}  // namespace zul
