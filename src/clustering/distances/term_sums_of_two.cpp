#include "clustering/distances/term_sums_fill.h"

namespace zul::dax::clustering {

constinit const TermSums kTermSumsOfTwo = MakeTermSums<double __attribute__((vector_size(16)))>();

}  // namespace zul::dax::clustering
