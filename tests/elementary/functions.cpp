#include "elementary/functions.h"

#include <cmath>

#include "elementary/error_function.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "elementary/trigonometric.h"

namespace zul::test {

using namespace elementary;

const ElementaryFunction kFunctions[kElementaryFunctions] = {
    {"Exp", Exp, &Columns::exp, -680, 680, 0.51},       {"Expm1", Expm1, &Columns::expm1, -3, 3, 0.51},
    {"Log", Log, &Columns::log, 0.01, 4, 0.505},        {"Log1p", Log1p, &Columns::log1p, -0.99, 3, 0.505},
    {"Sin", Sin, &Columns::sin, -823549, 823549, 0.56}, {"Cos", Cos, &Columns::cos, -823549, 823549, 0.56},
    {"Tan", Tan, &Columns::tan, -823549, 823549, 0.59}, {"Atan", Atan, &Columns::atan, -40, 40, 0.62},
    {"Erfc", Erfc, &Columns::erfc, -6, 24, 0.65}};

double Places(double result, double high, double low) {
    const double place = std::ldexp(1.0, std::ilogb(high) - 52);
    return std::abs((result - high) / place - low / place);
}

}  // namespace zul::test
