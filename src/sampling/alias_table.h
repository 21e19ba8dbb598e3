// Drawing an index with given probabilities in constant time.
#pragma once

#include <memory>

#include "distributions/objects/uniform_source.h"

namespace zul::sampling {

// The alias method: each index i has a cell of the same probability, which belongs to i itself up to the
// share keep[i] and to alias[i] beyond it. Source: A. J. Walker, An efficient method for generating discrete
// random variables with general distributions, 1977; M. D. Vose, A linear algorithm for generating random
// numbers with a given distribution, 1991.
class AliasTable {
public:
    // For so many indices, at least one.
    explicit AliasTable(unsigned size);
    // False: memory could not be obtained.
    bool Obtained() const { return keep_ != nullptr && alias_ != nullptr; }
    // The probabilities, size of them, need not sum to 1.
    void Prepare(const double* probabilities);
    // Takes one uniform.
    unsigned Draw(objects::UniformSource* source) const;

private:
    void Pair(unsigned* work, unsigned firstLarge);
    unsigned size_;
    std::unique_ptr<double[]> keep_;
    std::unique_ptr<unsigned[]> alias_;  // and, behind them, the work list of the preparation
};

}  // namespace zul::sampling
