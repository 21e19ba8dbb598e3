#include "descriptive/modes.h"

#include <algorithm>

#include "descriptive/sorting.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "zul/descriptive.h"

namespace zul {

void descriptive::SortedModes(const double* sorted, unsigned n, double* modes, unsigned maxModes,
                              unsigned* modeCount, unsigned* modeFrequency) {
    unsigned best = 0;  // the copies beyond the first of a mode
    unsigned found = 0;
    unsigned copies = 0;
    for (unsigned i = 0; i < n; i += copies + 1) {
        const double value = sorted[i];
        for (copies = 0; copies < n - 1 - i && sorted[i + copies + 1] == value;)
            ++copies;
        if (copies > best) {
            best = copies;
            found = 0;
        }
        if (best > 0 && copies == best && found < maxModes) modes[found++] = value;
    }
    std::fill(modes + found, modes + maxModes, frame::kQuietNaN);
    *modeCount = found;
    *modeFrequency = best > 0 ? best + 1 : 0;
}

int v1::GetMode(const double* x, unsigned n, double* modes, unsigned maxModes, unsigned* modeCount,
                unsigned* modeFrequency) {
    *modeCount = *modeFrequency = 0;
    if (maxModes == 0) return kSuccess;
    const descriptive::SortedValues sorted(x, n);
    const bool obtained = n == 0 || sorted.Obtained();
    descriptive::SortedModes(sorted.Items(), obtained ? n : 0, modes, maxModes, modeCount, modeFrequency);
    return obtained ? kSuccess : kOutOfMemory;
}

}  // namespace zul
