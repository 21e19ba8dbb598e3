#include "sampling/seeder.h"

#include "zul/sampler.h"

namespace zul {
namespace sampling {

double SeedOfTime(const frame::TimeOfDay& time) {
    constexpr int kDigits = 7;
    constexpr double kSpread = 3250000.0;
    const int seconds = (time.hour * 60 + time.minute) * 60 + time.second;
    int hundredths = seconds * 100 + time.millisecond / 10;
    int reversed = 0;
    for (int digit = 0; digit < kDigits; ++digit) {
        reversed = reversed * 10 + hundredths % 10;
        hundredths /= 10;
    }
    return reversed * kSpread;
}

}  // namespace sampling

double Seeder() {
    return sampling::SeedOfTime(frame::LocalTimeOfDay());
}

}  // namespace zul
