// The numeric error state: one record for each thread, so that no call sees the failure of another thread's.
#pragma once

#include "frame/error_record.h"
#include "frame/platform_thread.h"

namespace zul::frame {

inline NumericErrorState& ErrorState() {
    return ThisThread().errorState;
}

}  // namespace zul::frame
