// The table of the families: the exported distribution functions and the sampler's operations behind one signature
// each, and what the suites need to know of them.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "support/typed_call.h"
#include "zul/sampler.h"

namespace zul::test {

using Each = std::function<void(double* out, const double* in, std::size_t count, Arguments parameters)>;

struct Function {
    std::string name;
    std::vector<Type> types;
    std::function<double(Arguments)> call;
    // The array form, and a loop over the scalar one; absent for p-values and the like. Without the first argument.
    Each each;
    Each loop;
};

// An operation of the sampler.
struct Operation {
    std::string name;
    std::vector<Type> types;
    std::function<int(ISampler&, double* out, unsigned count, Arguments)> draw;
};

template <typename... Types>
Operation Drawn(std::string name, int (ISampler::*operation)(double*, unsigned, Types...)) {
    return {std::move(name),
            {kTypeOf<Types>...},
            [operation](ISampler& sampler, double* out, unsigned count, Arguments parameters) {
                return std::apply(
                    [&](Types... values) { return (sampler.*operation)(out, count, values...); },
                    Typed<Types...>(parameters));
            }};
}

// A function of a family with its parameters.
struct Applied {
    const Function* function;
    std::vector<double> parameters;
    double operator()(double x) const;
    void operator()(double* out, const double* in, std::size_t count) const;
    std::string Name() const;
};

// A member of a family, with ordinary parameters and the ends of its support. upperQuantile is the inverse
// with its flag set; the user-defined family has none.
struct Distribution {
    Applied pdf;
    Applied lower;
    Applied upper;
    Applied quantile;
    Applied upperQuantile;
    double lowest;
    double highest;
    // Each of the four or five.
    std::vector<Applied> Functions() const;
};

// Those of the cumulative function; density, inverse and operation may have fewer.
using Parameters = std::vector<double>;

struct Support {
    double lowest;
    double highest;
};

enum class Kind { Continuous, Discrete };

// Where a parameter may lie. Above: above the parameter before it.
enum class Domain : char {
    Real = 'r',
    Positive = 'p',
    Fraction = 'f',
    Noncentrality = 'n',
    Exponent = 'e',
    Above = 'a',
    Count = 'c',
    UpToFirst = 'u'
};

class Family {
public:
    std::string name;
    Kind kind;
    Function pdf;
    Function cdf;
    Function invCdf;
    Function tailInvCdf;  // the overload with a flag
    std::vector<Domain> domains;
    Support (*support)(Arguments);
    // Ordinary members.
    std::vector<Parameters> parameters;
    // Without a name, where the sampler has none.
    Operation operation = {};
    // Without the floating-point frame.
    bool bare = false;

    std::vector<const Function*> Functions() const;
    Distribution With(const Parameters& chosen) const;
};

const std::vector<Family>& Families();

// Functions that belong to no family, with ordinary arguments.
struct Statistic {
    Function function;
    std::vector<double> arguments;
};

// The p-values, the critical values, digamma, the studentized range and modulus.
const std::vector<Statistic>& Statistics();

// Every exported function by its name; for an inverse with a flag the number of its arguments tells.
const Function& FunctionOf(const std::string& name, std::size_t arguments = 0);

// The names of the files in data/distributions: function, arguments, expected value, relative tolerance.
std::vector<std::string> ReferenceTables();

}  // namespace zul::test
