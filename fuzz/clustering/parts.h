// What the parts of the clustering target share.
#pragma once

#include <string>

#include "fuzz/support/check.h"
#include "fuzz/support/input.h"

namespace zul::fuzz {

inline void Expect(bool condition, const char* what) {
    Require(condition, [what] { return std::string(what); });
}

template <typename Evaluate>
void Run(const char* name, Evaluate evaluate) {
    Checked(Mode::Bare, evaluate, [name] { return std::string(name); });
}

// The library's matrix and vector, against what was put into them.
void MatrixElements(Input& input);
void Vectors(Input& input);

}  // namespace zul::fuzz
