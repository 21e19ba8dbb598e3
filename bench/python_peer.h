#pragma once

#include <cstdio>
#include <stdexcept>
#include <string>

namespace zul::bench {

// The processor time in seconds that peers.py prints for these arguments.
inline double SecondsInPython([[maybe_unused]] const std::string& arguments) {
    double seconds = 0;
#ifdef ZUL_BENCH_PYTHON
    std::FILE* const output = popen((ZUL_BENCH_PYTHON " " ZUL_BENCH_PEERS_PY " " + arguments).c_str(), "r");
    const bool isRead = output != nullptr && std::fscanf(output, "%lf", &seconds) == 1;
    if (output == nullptr || pclose(output) != 0 || !isRead)
        throw std::runtime_error("no time of peers.py " + arguments);
#endif
    return seconds;
}

}  // namespace zul::bench
