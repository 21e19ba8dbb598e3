// The special functions, the root finder and the guarded functions under the distributions. Each is called in
// the default mode or, on finite arguments, in trapping mode, in which it works.
#include <array>
#include <cstdint>

#include "fuzz/numerics/evaluation.h"

namespace zul::fuzz {
namespace {

constexpr std::array kParts = {Normal,      NormalQuantile, Gamma,     GammaQuantile,  NoncentralGamma,
                               Beta,        BetaQuantile,   FQuantile, NoncentralBeta, StudentT,
                               NoncentralT, Newton,         ChiSquare, Binomial,       Hypergeometric,
                               Poisson,     RootFinder,     Guarded,   Elementary};

}  // namespace
}  // namespace zul::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zul::fuzz::Input input(data, size);
    input.OneOf(zul::fuzz::kParts)(input);
    return 0;
}
