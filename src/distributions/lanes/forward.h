// The table of lanes by name, for the kernels that are in it.
#pragma once

namespace zul::kernels {

struct Lanes;  // lanes.h

}  // namespace zul::kernels
