#include "clustering/rows/make_row_lanes.h"

namespace zul::dax::clustering {

constinit const RowLanes kRowLanesOfFour = MakeRowLanes<double __attribute__((vector_size(32)))>();

}  // namespace zul::dax::clustering
