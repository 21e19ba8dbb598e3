// Runs a fuzz target on the files of its corpus and on random inputs:
//
//     replay_<name> FILE_OR_DIRECTORY RANDOM_INPUTS [SEED]
//
// The input on which it fails, crashes or gets stuck is written to the file failed-input.
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <thread>
#include <vector>

#include "support/sanitized.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

#ifdef ZUL_TEST_SANITIZED
extern "C" void __sanitizer_set_death_callback(void (*callback)());
#endif

namespace {

namespace fs = std::filesystem;

constexpr const char* kFailedInput = "failed-input";

std::vector<std::uint8_t> current;
std::atomic<int> started = 0;

// The process is about to end: no more than plain calls.
void KeepInput() {
    if (std::FILE* file = std::fopen(kFailedInput, "wb")) {
        std::fwrite(current.data(), 1, current.size(), file);
        std::fclose(file);
    }
    std::fprintf(stderr, "input %d, kept in %s\n", static_cast<int>(started), kFailedInput);
}

void Die(int signal) {
    std::fprintf(stderr, "signal %d\n", signal);
    KeepInput();
    std::_Exit(1);
}

void KeepInputOfFailures() {
    std::signal(SIGABRT, Die);
#ifdef ZUL_TEST_SANITIZED
    __sanitizer_set_death_callback(KeepInput);
#else
    std::signal(SIGSEGV, Die);
#endif
}

// Aborts when no input ended for a minute.
void WatchProgress() {
    for (int before = -1; started != before;) {
        before = started;
        std::this_thread::sleep_for(std::chrono::minutes(1));
    }
    std::fprintf(stderr, "stuck\n");
    std::abort();
}

void Run(std::vector<std::uint8_t> input) {
    current = std::move(input);
    ++started;
    LLVMFuzzerTestOneInput(current.data(), current.size());
}

// The file, or those of the directory.
int RunFiles(const fs::path& path) {
    std::vector<fs::path> names = {path};
    if (fs::is_directory(path)) names.assign(fs::directory_iterator(path), fs::directory_iterator());
    for (const fs::path& name : names) {
        std::ifstream file(name, std::ios::binary);
        Run({std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()});
    }
    return started;
}

void RunRandomInputs(int count, std::uint64_t seed) {
    constexpr std::size_t kLongest = 256;
    std::mt19937_64 engine(seed);
    for (int i = 0; i < count; ++i) {
        std::vector<std::uint8_t> input(engine() % (kLongest + 1));
        for (std::uint8_t& byte : input)
            byte = static_cast<std::uint8_t>(engine() >> 56);
        Run(std::move(input));
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s FILE_OR_DIRECTORY RANDOM_INPUTS [SEED]\n", argv[0]);
        return 2;
    }
    LLVMFuzzerInitialize(&argc, &argv);
    KeepInputOfFailures();
    std::thread(WatchProgress).detach();
    const int count = static_cast<int>(std::strtol(argv[2], nullptr, 10));
    const int files = RunFiles(argv[1]);
    RunRandomInputs(count, argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 1);
    std::printf("%d files, %d random inputs\n", files, count);
    return 0;  // the watching thread ends with the process
}
