#include "clustering/rows/make_row_lanes.h"

namespace zul::dax::clustering {

constinit const RowLanes kRowLanesOfEight = MakeRowLanes<double __attribute__((vector_size(64)))>();

}  // namespace zul::dax::clustering
