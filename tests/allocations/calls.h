// Every exported function, called while its allocations fail one after the other, or while none is expected.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace zul::test {

// What a call came to: it succeeded, or it reported the failure and left its results as documented.
enum class Outcome { Success, Failure, Wrong };

inline Outcome Judge(bool success, bool failure) {
    return success ? Outcome::Success : failure ? Outcome::Failure : Outcome::Wrong;
}

struct AllocatingCall {
    std::string exports;  // the names of those that it covers, separated by blanks
    // Given the number of the allocation that fails. It releases what the library gave it and allocates
    // nothing of its own.
    std::function<Outcome(int failing)> run;
    // It may succeed without memory that only makes it faster.
    bool isFrugal = false;
};

struct PlainCall {
    std::string exports;
    std::function<void()> run;
};

std::vector<AllocatingCall> AllocatingDescriptive();
std::vector<AllocatingCall> AllocatingDistributions();
std::vector<AllocatingCall> AllocatingHypothesis();
std::vector<AllocatingCall> AllocatingSampler();
std::vector<AllocatingCall> AllocatingClustering();

std::vector<PlainCall> PlainDescriptive();
std::vector<PlainCall> PlainHypothesis();
std::vector<PlainCall> PlainSampler();
std::vector<PlainCall> PlainClustering();

}  // namespace zul::test
