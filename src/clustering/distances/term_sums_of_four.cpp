#include "clustering/distances/term_sums_fill.h"

namespace zul::dax::clustering {

constinit const TermSums kTermSumsOfFour = MakeTermSums<double __attribute__((vector_size(32)))>();

}  // namespace zul::dax::clustering
