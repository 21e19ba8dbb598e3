#include "hypothesis/ranks/values.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "frame/status.h"

namespace zul::hypothesis {

bool AreFinite(const double* data, std::size_t count) {
    return std::all_of(data, data + count, [](double x) { return std::isfinite(x); });
}

int SplitIntoGroups(const double* data, const unsigned* sizes, unsigned count, Groups* groups) {
    std::uint64_t values = 0;
    for (unsigned i = 0; i < count; ++i) {
        values += sizes[i];
        if (sizes[i] > 0) ++groups->withValues;
    }
    if (groups->withValues < 2) return kUnusableData;
    if (values > std::numeric_limits<unsigned>::max()) return kTooManyValues;
    if (!AreFinite(data, values)) return kUnusableData;
    groups->values = static_cast<unsigned>(values);
    groups->all.reserve(count);
    for (unsigned i = 0; i < count; data += sizes[i++])
        groups->all.emplace_back(data, sizes[i]);
    return kSuccess;
}

}  // namespace zul::hypothesis
