// The status codes that exported routines return, and those of the root finder.
#pragma once

namespace zul {

inline constexpr int kSuccess = 0;
inline constexpr int kPValueAtMost = 10003;   // a p-value is only an upper bound
inline constexpr int kPValueAtLeast = 10004;  // a p-value is only a lower bound
inline constexpr int kUnusableData = 30000;   // too few values, or one not finite or outside of the support
inline constexpr int kOutOfMemory = 30001;
inline constexpr int kBadIntervalType = 30002;  // or a bad alternative, in the exact tests of a proportion
inline constexpr int kNoVariation = 30007;      // values equal, ranks tied, a spread of 0, a singular matrix
inline constexpr int kTooManyValues = 30011;
inline constexpr int kNotBuilt = 30011;
inline constexpr int kUnsuitableShape = 30011;  // or counts for which a test is not defined
inline constexpr int kUnknownOption = 30017;
inline constexpr int kCapReached = 30019;
inline constexpr int kNoInteriorMaximum = 30020;
inline constexpr int kRootNotEvaluated = 30020;
inline constexpr int kRootNotBracketed = 30021;
inline constexpr int kNoRankSumTest = 30023;  // a sample is empty, or all values are equal

}  // namespace zul
