#include "clustering/distances/term_sums.h"

namespace zul::dax::clustering {

const TermSums& TermSumsOf(processor::Level level) {
#if defined(__GNUC__)
    switch (level) {
        case processor::Level::One:
            return kTermSumsOfOne;
        case processor::Level::Two:
            return kTermSumsOfTwo;
        case processor::Level::Four:
            return kTermSumsOfFour;
        case processor::Level::Eight:
            return kTermSumsOfEight;
    }
#else
    static_cast<void>(level);
#endif
    return kTermSumsOfOne;
}

}  // namespace zul::dax::clustering
