// Arguments of the functions in the table of tests/distributions: any, or inside their domains.
#pragma once

#include "distributions/families.h"
#include "fuzz/support/target.h"

namespace zul::fuzz {

inline double Argument(test::Type type, Input& input) {
    switch (type) {
        case test::Type::Flag:
            return input.Flag() ? 1 : 0;
        case test::Type::Alternative:
            return static_cast<double>(input.Choice(5)) - 2;
        case test::Type::Integer:
            return input.Integer();
        default:
            return input.Real();
    }
}

// One more parameter after those before it, inside its domain: up to a thousand, or of any size.
inline double ValidParameter(test::Domain domain, const std::vector<double>& before, bool whole, Input& input,
                             unsigned kinds = 8) {
    using enum test::Domain;
    const unsigned kind = input.Byte() % kinds;
    const double count = std::floor(input.Power(0, kind < 6 ? 3 : 9));
    const double size = kind < 4 ? input.Power(-2, 3) : kind < 6 ? input.Power(-6, 7) : count / 2;
    switch (domain) {
        case Real:
            return input.Flag() ? size : -size;
        case Fraction:
            return input.Fraction();
        case Noncentrality:
            return input.Flag() ? 0 : size;
        case Exponent:
            return kind == 7 ? 0 : input.Uniform(-5, 10);
        case Above:
            return before.back() + (whole ? count : size);
        case Count:
            return count;
        case UpToFirst:
            return std::floor(before.front() * input.Uniform());
        default:
            return size;
    }
}

inline std::vector<double> ValidParameters(const std::vector<test::Domain>& domains, Input& input,
                                           unsigned kinds = 8) {
    std::vector<double> values;
    values.reserve(domains.size());
    for (const test::Domain domain : domains)
        values.push_back(
            ValidParameter(domain, values, domains.front() == test::Domain::Count, input, kinds));
    return values;
}

}  // namespace zul::fuzz
