#include "elementary/lanes/fill.h"

namespace zul::elementary {

constinit const Columns kColumnsOfOne = MakeColumns<double>();

}  // namespace zul::elementary
