#include "elementary/lanes/columns.h"

namespace zul::elementary {

const Columns& CurrentColumns() {
    return ColumnsOf(processor::CurrentLevel());
}

const Columns& ColumnsOf(processor::Level level) {
#if defined(__GNUC__)
    switch (level) {
        case processor::Level::kOne:
            return kColumnsOfOne;
        case processor::Level::kTwo:
            return kColumnsOfTwo;
        case processor::Level::kFour:
            return kColumnsOfFour;
        case processor::Level::kEight:
            return kColumnsOfEight;
    }
#else
    static_cast<void>(level);
#endif
    return kColumnsOfOne;
}

}  // namespace zul::elementary
