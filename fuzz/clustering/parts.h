// What the parts of the clustering target share.
#pragma once

#include "fuzz/support/check.h"
#include "fuzz/support/input.h"

namespace zul::fuzz {

// The library's matrix and vector, against what was put into them.
void MatrixElements(Input& input);
void Vectors(Input& input);

}  // namespace zul::fuzz
