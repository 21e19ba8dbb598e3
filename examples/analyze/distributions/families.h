/// @file
/// The distribution families of the library by name, with their parameters in a list.
#pragma once

#include <zul/sampler.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace analyze {

using Numbers = std::vector<double>;
using DistributionFunction = std::function<double(double x, const Numbers& parameters, bool upper)>;

/// An operation of the sampler, which takes as many of the first parameters of its family as it has.
struct Operation {
    std::size_t parameters = 0;
    std::function<int(zul::ISampler& sampler, Numbers& deviates, const Numbers& parameters)> draw;
};

/// What a parameter may be.
struct Domain {
    std::string text;  ///< completes "must be"
    double least;
    double most;
    bool isOpen = false;   ///< whether `least` itself is outside
    bool isWhole = false;  ///< whether it is for whole numbers
};

struct Parameter {
    std::string name;
    Domain domain;
};

/// A parameter that must not be above another one.
struct Order {
    std::size_t low;
    std::size_t high;
    bool isStrict;  ///< nor equal to it
};

/// The ends of a support, which may be infinite.
struct Ends {
    double lower;
    double upper;
};

struct Family {
    std::string name;
    bool discrete;
    std::vector<Parameter> parameters;  ///< those of the cumulative function
    std::vector<Order> orders;
    Ends (*support)(const Numbers& parameters);
    DistributionFunction pdf;
    DistributionFunction cdf;
    DistributionFunction invCdf;
    Operation operation;  ///< none: the sampler does not draw from the family
};

const std::vector<Family>& Families();

/// The families that the sampler draws from, with as many parameters as it takes.
std::vector<Family> SampledFamilies();

/// A line for each, with its parameters.
std::string FamilyList(const std::vector<Family>& families);

/// The family of that name, without regard to case and to marks between words. Throws InputError, which lists the
/// names.
const Family& FindFamily(const std::vector<Family>& families, const std::string& name);

/// Throws InputError unless the values are the parameters of the family, each in its domain.
void CheckParameters(const Family& family, const Numbers& values);

/// "Gamma(shape 2, scale 1, threshold 0)".
std::string Described(const Family& family, const Numbers& values);

}  // namespace analyze
