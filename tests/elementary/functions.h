// The elementary functions by their names.
#pragma once

#include "elementary/lanes/columns.h"

namespace zul::test {

struct ElementaryFunction {
    const char* name;
    double (*scalar)(double);
    elementary::Columns::Function elementary::Columns::*column;
    double lowest;  // of ordinary arguments
    double highest;
    double limit;  // of the error, in units of the last place
};

// All but Pow.
inline constexpr int kElementaryFunctions = 9;
extern const ElementaryFunction kFunctions[kElementaryFunctions];
inline constexpr double kPowLimit = 0.51;

// The distance of a result from high + low in units of the last place of high, which is normal.
double Places(double result, double high, double low);

}  // namespace zul::test
