#include "elementary/lanes/columns.h"

namespace zul::elementary {

const Columns& CurrentColumns() {
    return ColumnsOf(processor::CurrentLevel());
}

const Columns& ColumnsOf(processor::Level level) {
#if defined(__GNUC__)
    switch (level) {
        case processor::Level::One:
            return kColumnsOfOne;
        case processor::Level::Two:
            return kColumnsOfTwo;
        case processor::Level::Four:
            return kColumnsOfFour;
        case processor::Level::Eight:
            return kColumnsOfEight;
    }
#else
    static_cast<void>(level);
#endif
    return kColumnsOfOne;
}

}  // namespace zul::elementary
