#include "zul/distributions.h"

#include <algorithm>
#include <array>
#include <new>

#include "allocations/calls.h"

namespace zul::test {
namespace {

constexpr double kValues[] = {-1, 0, 2};
constexpr double kMasses[] = {0.25, 0.5, 0.25};
constexpr double kSums[] = {0.25, 0.75, 1};
constexpr double kAt[] = {0, -1, 2};
constexpr int kCount = 3;

// call(out) writes one value or three; without memory, none. The sort can do without any of its own.
template <typename Call>
AllocatingCall OrBadAlloc(const char* name, double expected, Call call) {
    const auto run = [expected, call](int) {
        std::array out = {kBefore, kBefore, kBefore};
        try {
            call(out.data());
        } catch (const std::bad_alloc&) {
            return Judge(false, std::count(out.begin(), out.end(), kBefore) == kCount);
        }
        return Judge(out[0] == expected, false);
    };
    return {name, run, true};
}

}  // namespace

std::vector<AllocatingCall> AllocatingDistributions() {
    return {
        OrBadAlloc("DiscretePdf", 0.5,
                   [](double* out) { DiscretePdf(out, kAt, kCount, kValues, kMasses, kCount); }),
        OrBadAlloc("DiscreteCdf", 0.75,
                   [](double* out) { DiscreteCdf(out, kAt, kCount, kValues, kSums, kCount, true); }),
        OrBadAlloc("DiscreteInvCdf", 0,
                   [](double* out) { DiscreteInvCdf(out, kSums + 1, 2, kValues, kSums, kCount); }),
    };
}

}  // namespace zul::test
