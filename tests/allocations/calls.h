// The exported functions that allocate, called while their allocations fail one after the other.
#pragma once

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

std::vector<AllocatingCall> AllocatingDescriptive();
std::vector<AllocatingCall> AllocatingDistributions();
std::vector<AllocatingCall> AllocatingHypothesis();
std::vector<AllocatingCall> AllocatingObjects();
std::vector<AllocatingCall> AllocatingSampler();
std::vector<AllocatingCall> AllocatingClustering();

}  // namespace zul::test
