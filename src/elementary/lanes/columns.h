// The elementary functions of columns of numbers, several at a time.
#pragma once

#include <cstddef>

#include "processor/level.h"

namespace zul::elementary {

// Each: out: n values, may equal an input, but not overlap it otherwise; in: n values. Each value has the bits of the
// scalar function and raises its flags; in trapping mode a trap leaves the values before it stored.
struct Columns {
    using Function = void (*)(double* out, const double* in, std::size_t n);
    Function exp;
    Function expm1;
    Function log;
    Function log1p;
    void (*pow)(double* out, const double* x, const double* y, std::size_t n);
    Function sin;
    Function cos;
    Function tan;
    Function atan;
    Function erfc;
};

// Of the current level, and of any that the processor has.
const Columns& CurrentColumns();
const Columns& ColumnsOf(processor::Level level);

extern const Columns kColumnsOfOne;
extern const Columns kColumnsOfTwo;
extern const Columns kColumnsOfFour;
extern const Columns kColumnsOfEight;

}  // namespace zul::elementary
