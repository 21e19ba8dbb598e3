#include <algorithm>
#include <array>
#include <iostream>
#include <string_view>

#include "bench.h"
#include "processor/level.h"

namespace zul::bench {

int RunAtLevel(int argc, char** argv, Subsystems subsystems) {
    using processor::Level;
    constexpr std::array<std::string_view, 4> kNames = {"1", "2", "4", "8"};
    constexpr std::array<Level, 4> kLevels = {Level::One, Level::Two, Level::Four, Level::Eight};

    if (argc < 2 || std::string_view(argv[1]) != "--level") return Run(argc, argv, subsystems);
    const auto* const name = std::find(kNames.begin(), kNames.end(), argc > 2 ? argv[2] : "");
    if (name == kNames.end()) {
        std::cerr << "--level: 1, 2, 4 or 8\n";
        return 2;
    }
    LimitLevel(kLevels[static_cast<std::size_t>(name - kNames.begin())]);
    argv[2] = argv[0];
    return Run(argc - 2, argv + 2, subsystems);
}

}  // namespace zul::bench
