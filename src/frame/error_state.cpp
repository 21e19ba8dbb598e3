#include "frame/error_state.h"

namespace zul::frame {

constinit NumericErrorState errorState;

}  // namespace zul::frame
