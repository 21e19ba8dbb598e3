#pragma once

namespace zul::frame {

// The local time of day.
struct TimeOfDay {
    int hour;
    int minute;
    int second;
    int millisecond;
};
TimeOfDay LocalTimeOfDay();

}  // namespace zul::frame
