#include "distributions/lanes/lanes.h"

#include "processor/level.h"

namespace zul::kernels {

const Lanes* CurrentLanes() {
#if defined(__GNUC__)
    switch (processor::CurrentLevel()) {
        case processor::Level::One:
            return nullptr;
        case processor::Level::Two:
            return &kLanesOfTwo;
        case processor::Level::Four:
            return &kLanesOfFour;
        case processor::Level::Eight:
            return &kLanesOfEight;
    }
#endif
    return nullptr;
}

}  // namespace zul::kernels
