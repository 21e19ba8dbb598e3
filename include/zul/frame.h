/// @file
/// The floating-point frame around the library's calls, and tests for special values.
#pragma once

#include <zul/export.h>

/// @defgroup frame Floating-point frame
/// The floating-point frame around the library's calls, and tests for special values.
///
/// The distribution functions, p-values and critical values compute with the processor's traps for invalid
/// operation, division by zero and overflow switched on, so that a broken computation stops at once instead
/// of spreading NaN or infinity through a statistic. A thread on which RegisterKelSigfpeHandler() has been
/// called gets such a trap as a standard exception; on any other thread it is a raw SIGFPE, or on Windows the
/// structured exception.
///
/// | hardware trap | exception | what() |
/// |---|---|---|
/// | invalid operation | std::invalid_argument | "Float exception: invalid_argument." |
/// | division by zero | std::runtime_error | "Float exception: divide by zero." |
/// | overflow | std::overflow_error | "Float exception: overflow." |
/// | several at once | std::runtime_error | "Runtime exception: multiple floating point faults/traps." |
/// | integer division by zero | std::runtime_error | "Runtime exception: integer division by zero." |
///
/// The functions that look at an argument before they compute with it throw std::runtime_error, "float
/// overflow", for a result too large for a double and for log(0), and std::invalid_argument with the messages
/// "sqrt of a negative argument", "log of a negative argument", "negative number raised to a noninteger power",
/// "zero raised to a negative power", "argument out of range for trig functions", "gamma of a nonpositive
/// argument" and "gamma of a value too close to 0".
///
/// These exceptions need no memory. After one the thread is in trapping mode: call ResetFpuStates() before
/// going on. After a normal return it is in the default mode, whatever mode the caller was in: the frame does
/// not save it. The destructors that run while such an exception unwinds the host's functions run in trapping mode,
/// too: one that computes with NaN, infinities or zero divisors calls ResetFpuStates() first, or its trap would end
/// the process.
///
/// A NaN argument of a framed function ends as std::invalid_argument where it meets an ordered comparison,
/// which is an invalid operation then; a NaN that only takes part in sums and products comes out as NaN.

/// The library. The namespaces v0, v1 and v2 in it keep versions of signatures side by side.
namespace zul {

/// @addtogroup frame
/// @{

/// Makes hardware floating-point traps on the calling thread arrive as standard exceptions.
///
/// Call it once on each thread that calls the library; calling it again does no harm. The thread is left in the
/// default mode.
///
/// On POSIX systems the first call of the process installs a handler for SIGFPE: signals of threads that did not
/// register, and those that are not floating-point traps, go on to the handler that was there before. Where the
/// host has set SIGFPE to its default or to be ignored since, the next call installs it anew; a handler that the
/// host sets after the first call is left alone and gets all traps, so a host that has one sets it before. Each
/// call unblocks SIGFPE for its thread. What the host does with the signal mask later is its own affair: a trap
/// while SIGFPE is blocked ends the process.
///
/// On Windows the first call installs a vectored exception handler until the library is unloaded: it comes before
/// handlers of __try blocks, which do not see the traps of registered threads, and leaves all else to them.
/// @return 0, always.
ZUL_API int RegisterKelSigfpeHandler(void);

/// Puts the calling thread into trapping mode: invalid operation, division by zero and overflow trap,
/// underflow and inexact results do not, rounding is to nearest, the exception flags are clear.
ZUL_API void SetKelFpuStates(void);

/// Puts the calling thread into the default mode: nothing traps, rounding is to nearest, the flags of the SSE unit
/// are clear. Call it after catching an exception from the library.
ZUL_API void ResetFpuStates(void);

/// Whether x is plus or minus infinity.
ZUL_API bool IsInfinity(double x);

/// Whether x is plus infinity.
ZUL_API bool IsPlusInfinity(double x);

/// Whether x is minus infinity.
ZUL_API bool IsMinusInfinity(double x);

/// Whether x is a NaN, quiet or signalling.
ZUL_API bool IsNaN(double x);

/// Whether x stands for "no result": the same test as IsNaN().
ZUL_API bool IsResultNA(double x);

/// @}

}  // namespace zul
