#include "clustering/rows/make_row_lanes.h"

namespace zul::dax::clustering {

constinit const RowLanes kRowLanesOfOne = MakeRowLanes<double>();

}  // namespace zul::dax::clustering
