#include "clustering/rows/row_lanes.h"

namespace zul::dax::clustering {

const RowLanes& CurrentRowLanes() {
    return RowLanesOf(processor::CurrentLevel());
}

const RowLanes& RowLanesOf(processor::Level level) {
#if defined(__GNUC__)
    switch (level) {
        case processor::Level::One:
            return kRowLanesOfOne;
        case processor::Level::Two:
            return kRowLanesOfTwo;
        case processor::Level::Four:
            return kRowLanesOfFour;
        case processor::Level::Eight:
            return kRowLanesOfEight;
    }
#else
    static_cast<void>(level);
#endif
    return kRowLanesOfOne;
}

}  // namespace zul::dax::clustering
