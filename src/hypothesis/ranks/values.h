// The values that the rank tests take, finite ones in groups, and the arrays that they fill.
#pragma once

#include <cstddef>
#include <new>
#include <span>
#include <vector>

#include "frame/status.h"

namespace zul::hypothesis {

bool AreFinite(const double* data, std::size_t count);

// Room for a selection of pairs where the sort has left none over.
inline constexpr std::size_t kOwnRoom = 256;

// An output array, which may be null.
template <typename Number>
void FillOutput(Number* out, unsigned count, Number value) {
    for (unsigned i = 0; out != nullptr && i < count; ++i)
        out[i] = value;
}

template <typename Number>
void SetOutput(Number* out, std::size_t i, Number value) {
    if (out != nullptr) out[i] = value;
}

// The groups of an array, one after the other.
struct Groups {
    std::vector<std::span<const double>> all;
    unsigned withValues = 0;  // how many of them are not empty
    unsigned values = 0;      // in all of them
};

// kUnusableData: fewer than two groups have values, or a value is not finite. kTooManyValues: for a count. May throw
// std::bad_alloc.
int SplitIntoGroups(const double* data, const unsigned* sizes, unsigned count, Groups* groups);

// test(record, data, groups, out) of usable groups, a status. `out` clears the record and the arrays, before the test
// and where memory cannot be obtained.
template <typename Record, typename Outputs, typename Test>
int TestGroups(Record* record, const double* data, const unsigned* sizes, const Outputs& out, Test* test) {
    out.Clear(record);
    int status = kOutOfMemory;
    try {
        Groups groups;
        status = SplitIntoGroups(data, sizes, record->groups, &groups);
        if (status == kSuccess) status = test(record, data, groups, out);
    } catch (const std::bad_alloc&) {
        status = kOutOfMemory;
    }
    if (status == kOutOfMemory) out.Clear(record);
    return status;
}

}  // namespace zul::hypothesis
