// Distances of ticks: a digit times a power of ten.
#pragma once

namespace zul::ticks {

// 10^exponent, exact from 0 to 22; exponents from -308 to 308.
double PowerOfTen(int exponent);

// digit * 10^exponent.
class DecimalStep {
public:
    DecimalStep(int digit, int exponent) : digit_(digit), exponent_(exponent) {}

    // The step whose digit is 1, 2, 5 or 10 that is nearest to a positive number: 10 counts as 1 of the next power.
    static DecimalStep NearestTo(double distance);
    // Of a result, which has them as a number and as decimal places.
    static DecimalStep Of(double step, unsigned decimals);

    int Exponent() const { return exponent_; }
    // integer * digit * 10^exponent with one rounding for exponents from -22 to 22.
    double Multiple(double integer) const;

private:
    int digit_;
    int exponent_;
};

}  // namespace zul::ticks
