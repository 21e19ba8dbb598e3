#pragma once

#include <cstdio>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace zul::bench {

// The processor time in seconds that peers.py prints for these arguments.
inline double SecondsInPython([[maybe_unused]] const std::string& arguments) {
    double seconds = 0;
#ifdef ZUL_BENCH_PYTHON
    const std::string command = ZUL_BENCH_PYTHON " " ZUL_BENCH_PEERS_PY " " + arguments;
    std::FILE* const output =
        popen(command.c_str(), "r");  // NOLINT(cert-env33-c): words of this program alone
    char text[64] = {};
    const bool isRead = output != nullptr && std::fgets(text, sizeof text, output) != nullptr;
    if (output == nullptr || pclose(output) != 0 || !isRead)
        throw std::runtime_error("no time of peers.py " + arguments);
    seconds = std::strtod(text, nullptr);
#endif
    return seconds;
}

}  // namespace zul::bench
