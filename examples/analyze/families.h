/// @file
/// The distribution families of the library by name, with their parameters in a list.
#pragma once

#include <zul/sampler.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "csv_table.h"
#include "text.h"

namespace analyze {

using Numbers = std::vector<double>;
using DistributionFunction = std::function<double(double x, const Numbers& parameters, bool upper)>;

/// An operation of the sampler, which takes as many of the first parameters of its family as it has.
struct Operation {
    std::size_t parameters = 0;
    std::function<int(zul::ISampler& sampler, Numbers& deviates, const Numbers& parameters)> draw;
};

struct Family {
    std::string name;
    bool discrete;
    std::vector<std::string> parameters;  ///< those of the cumulative function
    std::vector<bool> whole;              ///< which of them are whole numbers
    DistributionFunction pdf;
    DistributionFunction cdf;
    DistributionFunction invCdf;
    Operation operation;  ///< none: the sampler does not draw from the family
};

const std::vector<Family>& Families();

std::string Joined(const std::vector<std::string>& words);

/// The entry of that name. Throws InputError, which lists the names.
template <typename Entry>
const Entry& FindByName(const std::vector<Entry>& entries, const std::string& name) {
    const auto found = std::ranges::find(entries, name, &Entry::name);
    if (found != entries.end()) return *found;
    std::vector<std::string> names;
    names.reserve(entries.size());
    for (const Entry& entry : entries)
        names.push_back(entry.name);
    throw InputError("no distribution " + Quoted(name) + "; the distributions are " + Joined(names));
}

/// Throws InputError unless the values are the first `count` parameters of the family, those that have to be
/// whole numbers being so.
void CheckParameters(const Family& family, std::size_t count, const Numbers& values);

/// "Gamma(shape 2, scale 1, threshold 0)".
std::string Described(const Family& family, const Numbers& values);

}  // namespace analyze
