#pragma once

#ifdef __FAST_MATH__
#error "Compensated summation needs IEEE arithmetic: build without -ffast-math"
#endif

namespace zul::descriptive {

// A running sum with the low-order bits that the last addition lost. Every accumulation of the descriptive
// functions is one of these, the updated means and centred sums too.
// Source: W. Kahan, Further remarks on reducing truncation errors, 1965.
class CompensatedSum {
public:
    CompensatedSum() = default;
    explicit CompensatedSum(double start) : sum_(start) {}

    void Add(double v) {
        const double y = v + correction_;
        const double t = sum_ + y;
        correction_ = y - (t - sum_);
        sum_ = t;
    }
    // The last correction is not folded in.
    double Value() const { return sum_; }

private:
    double sum_ = 0;
    double correction_ = 0;
};

}  // namespace zul::descriptive
