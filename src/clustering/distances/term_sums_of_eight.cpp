#include "clustering/distances/term_sums_fill.h"

namespace zul::dax::clustering {

constinit const TermSums kTermSumsOfEight = MakeTermSums<double __attribute__((vector_size(64)))>();

}  // namespace zul::dax::clustering
