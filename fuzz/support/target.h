// What every target includes.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "fuzz/support/check.h"
#include "fuzz/support/input.h"
#include "fuzz/support/values.h"

namespace zul::fuzz {

using Data = std::vector<double>;

// One input: what is called, with which arguments. Each target defines it.
void RunInput(Input& input);

inline bool AreNaN(std::initializer_list<double> values) {
    return std::all_of(values.begin(), values.end(), [](double x) { return x != x; });
}

inline bool AreNaN(const Data& values) {
    return std::all_of(values.begin(), values.end(), [](double x) { return x != x; });
}

inline bool AreFinite(const Data& values) {
    return std::all_of(values.begin(), values.end(), [](double x) { return std::isfinite(x); });
}

inline bool IsProbability(double p) {
    return !(p < 0 || p > 1);  // NaN as well
}

// A level of confidence, mostly.
inline double Confidence(Input& input) {
    return input.Byte() < 230 ? input.Fraction() : AnyReal(input);
}

// The status that call() returns: one of those, or -1 after an exception that may be.
template <typename Where, typename Call>
int StatusOf(Mode mode, const Where& where, std::initializer_list<int> documented, Call call) {
    int status = -1;
    const auto describe = [&] { return Text(where); };
    const auto run = [&] { status = call(); };
    if (!Checked(mode, run, describe)) return -1;
    Expect(IsAmong(status, documented), where, "undocumented status");
    return status;
}

}  // namespace zul::fuzz
