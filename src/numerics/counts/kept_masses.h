// The masses and lower tails at the first numbers of a distribution on 0, 1, ..., each from the one before.
#pragma once

namespace zul::numerics {

// Computed on first need and kept, so an object serves one thread at a time: the distribution functions at
// many small counts take one pass over them.
class KeptMasses {
public:
    // Beyond them a saddle-point mass takes less time.
    static constexpr int kNumbers = 32;
    // The largest mean: the mass at 0 is the exponential of about minus the mean, whose error is 1e-14 here.
    static constexpr double kMeanLimit = 100;
    // The largest lower tail whose complement is used: it has lost a digit.
    static constexpr double kLowerLimit = 0.95;

    struct Entry {
        double mass;
        double lower;
    };

    // cppcheck-suppress uninitMemberVar ; the entries are filled as they are needed
    KeptMasses() {}  // NOLINT: not = default, which would fill them

    // Those at the whole number k, 0 <= k < kNumbers, from the mass at 0 and the ratio of the mass at j to
    // that at j - 1. Relative error: that of the mass at 0 and two roundings of each step.
    template <typename First, typename Ratio>
    const Entry& At(double k, First first, Ratio ratio) {
        const int index = static_cast<int>(k);
        if (index >= known_) Extend(index, first, ratio);
        return entries_[index];
    }

private:
    template <typename First, typename Ratio>
    void Extend(int last, First first, Ratio ratio) {
        Entry entry{};
        if (known_ == 0) {
            entry.mass = first();
            entry.lower = entry.mass;
            entries_[known_++] = entry;
        }
        entry = entries_[known_ - 1];
        for (int j = known_; j <= last; ++j) {
            entry.mass *= ratio(static_cast<double>(j));
            entry.lower += entry.mass;
            entries_[j] = entry;
        }
        known_ = last + 1;
    }

    int known_ = 0;
    Entry entries_[kNumbers];
};

}  // namespace zul::numerics
