#include "clustering/distances/term_sums_fill.h"

namespace zul::dax::clustering {

constinit const TermSums kTermSumsOfOne = MakeTermSums<double>();

}  // namespace zul::dax::clustering
