// The exported distribution functions behind one signature, and what the suites need to know of each family.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace zul::test {

using Arguments = std::span<const double>;

// The type of an argument in the declaration. Here all of them are doubles: flags 0 or 1, integers and
// alternatives whole.
enum class Type { Real, Integer, Flag, Alternative };

struct Function {
    std::string name;
    std::vector<Type> types;
    std::function<double(Arguments)> call;
    // The array form, absent for p-values and the like; without the first argument.
    std::function<void(double* out, const double* in, std::size_t count, Arguments parameters)> each;
};

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

struct Parameters {
    std::vector<double> values;  // those of the cumulative function; density and inverse may have fewer
    double lowest;
    double highest;
};

enum class Kind { Continuous, Discrete };

// Where a parameter may lie. Above: above the parameter before it.
enum class Domain { Real, Positive, Fraction, Noncentrality, Exponent, Above, Count, UpToFirst };

class Family {
public:
    std::string name;
    Kind kind;
    Function pdf;
    Function cdf;
    Function invCdf;
    Function tailInvCdf;  // the overload with a flag
    std::vector<Domain> domains;
    std::vector<Parameters> parameters;
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

// The p-values, the critical values and digamma.
const std::vector<Statistic>& Statistics();

// Every exported function by its name; for an inverse with a flag the number of its arguments tells.
const Function& FunctionOf(const std::string& name, std::size_t arguments = 0);

// The names of the files in data/distributions: function, arguments, expected value, relative tolerance.
std::vector<std::string> ReferenceTables();

}  // namespace zul::test
