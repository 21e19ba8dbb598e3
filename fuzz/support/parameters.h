// Arguments of the functions in the table of tests/distributions: any, or inside their domains.
#pragma once

#include "distributions/families.h"
#include "fuzz/support/target.h"

namespace zul::fuzz {

// The missing value.
inline constexpr double kNA = 1.23456e30;

inline double Argument(test::Type type, Input& input) {
    if (type == test::Type::Flag) return input.Flag() ? 1 : 0;
    if (type == test::Type::Alternative) return input.Choice<double>(5) - 2;
    return type == test::Type::Integer ? input.Integer() : input.Real();
}

// One more parameter after those before it, inside its domain: up to a thousand, or of any size.
inline double ValidParameter(test::Domain domain, const Data& before, bool whole, unsigned kinds,
                             Input& input) {
    using enum test::Domain;
    const unsigned kind = input.Byte() % kinds;
    const double count = std::floor(input.Power(0, kind < 6 ? 3 : 9));
    const double size = kind < 4 ? input.Power(-2, 3) : kind < 6 ? input.Power(-6, 7) : count / 2;
    if (domain == Real) return input.Flag() ? size : -size;
    if (domain == Fraction) return input.Fraction();
    if (domain == Noncentrality) return input.Flag() ? 0 : size;
    if (domain == Exponent) return kind == 7 ? 0 : input.Uniform(-5, 10);
    if (domain == Above) return before.back() + (whole ? count : size);
    if (domain == UpToFirst) return std::floor(before.front() * input.Uniform());
    return domain == Count ? count : size;
}

inline Data ValidParameters(const std::vector<test::Domain>& domains, Input& input, unsigned kinds = 8) {
    const bool whole = !domains.empty() && domains.front() == test::Domain::Count;
    Data values;
    for (const test::Domain domain : domains)
        values.push_back(ValidParameter(domain, values, whole, kinds, input));
    return values;
}

}  // namespace zul::fuzz
