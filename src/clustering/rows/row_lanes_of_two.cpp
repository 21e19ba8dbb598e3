#include "clustering/rows/make_row_lanes.h"

namespace zul::dax::clustering {

constinit const RowLanes kRowLanesOfTwo = MakeRowLanes<double __attribute__((vector_size(16)))>();

}  // namespace zul::dax::clustering
