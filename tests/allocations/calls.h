// The exported functions that allocate, called while their allocations fail one after the other.
#pragma once

#include <array>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

namespace zul::test {

inline constexpr int kOutOfMemory = 30001;
// What results hold before the call.
inline constexpr double kBefore = -7;

// What a call came to: it succeeded, or it reported the failure and left its results as documented.
enum class Outcome { Success, Failure, Wrong };

inline Outcome Judge(bool success, bool failure) {
    return success ? Outcome::Success : failure ? Outcome::Failure : Outcome::Wrong;
}

struct AllocatingCall {
    std::string name;
    // Given the number of the allocation that fails. It releases what the library gave it and allocates
    // nothing of its own.
    std::function<Outcome(int failing)> run;
    // It may succeed without memory that only makes it faster.
    bool isFrugal = false;
};

// call(out) writes numbers and returns a status. Without memory it leaves a pattern: n NaN, b as before, + a number.
template <typename Call>
AllocatingCall Filling(std::string name, const char* pattern, Call call) {
    return {std::move(name), [pattern, call](int) {
                std::array<double, 16> out{};
                out.fill(kBefore);
                const int status = call(out.data());
                bool isAsDocumented = status == kOutOfMemory;
                for (std::size_t i = 0; pattern[i] != 0; ++i)
                    isAsDocumented = isAsDocumented && (pattern[i] == 'n'   ? out[i] != out[i]
                                                        : pattern[i] == 'b' ? out[i] == kBefore
                                                                            : out[i] > 0);
                return Judge(status == 0, isAsDocumented);
            }};
}

// The doubles that a record begins with.
template <std::size_t count, typename Record, typename Call>
int WithRecord(Record record, double* out, Call call) {
    std::memcpy(static_cast<void*>(&record), out, count * sizeof(double));
    const int status = call(&record);
    std::memcpy(out, static_cast<const void*>(&record), count * sizeof(double));
    return status;
}

std::vector<AllocatingCall> AllocatingDescriptive();
std::vector<AllocatingCall> AllocatingDistributions();
std::vector<AllocatingCall> AllocatingFits();
std::vector<AllocatingCall> AllocatingHypothesis();
std::vector<AllocatingCall> AllocatingSampler();
std::vector<AllocatingCall> AllocatingClustering();
std::vector<AllocatingCall> AllocatingContingency();

}  // namespace zul::test
