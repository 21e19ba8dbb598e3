// Kernels kept from call to call: what they compute again, and that no call of the library shows it.
#include "frame/calls/kept_kernel.h"

#include <gtest/gtest.h>

#include <bit>
#include <cerrno>
#include <cstdint>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <thread>
#include <typeinfo>
#include <vector>

#include "distributions/beta/beta.h"
#include "distributions/beta/f.h"
#include "distributions/beta/student_t.h"
#include "distributions/counts/binomial.h"
#include "distributions/counts/poisson.h"
#include "distributions/either_tail.h"
#include "distributions/gamma/chi_square.h"
#include "distributions/gamma/gamma.h"
#include "frame/call_frame.h"
#include "frame/error_state.h"
#include "frame/traps.h"
#include "support/float_mode.h"
#include "zul/frame.h"

namespace zul {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kSignallingNaN = std::bit_cast<double>(std::uint64_t{0x7FF0000000000001});

thread_local int timesBuilt = 0;
thread_local int timesComputed = 0;

// 1 / divisor + x, the first part kept; a divisor of 0 traps there, and x = infinity after it.
class Probe {
public:
    using Parameters = frame::ParameterList<double, int, bool>;
    static constexpr bool kKeptBetweenCalls = true;
    Probe(double divisor, int /*n*/, bool /*flag*/) : divisor_(divisor) { ++timesBuilt; }
    double operator()(double x) {
        const double reciprocal = reciprocal_.Get([this] {
            ++timesComputed;
            return test::Divide(1, divisor_);
        });
        return reciprocal + test::Multiply(x, 0.0);
    }

private:
    double divisor_;
    numerics::Lazy reciprocal_;
};

// How often a call builds a kernel and computes what is kept.
std::pair<int, int> Work(double x, double divisor, int n = 1, bool flag = false) {
    timesBuilt = timesComputed = 0;
    try {
        frame::Framed<Probe>(x, divisor, n, flag);
    } catch (const std::exception&) {
        ResetFpuStates();
    }
    return {timesBuilt, timesComputed};
}

constexpr std::pair kAll{1, 1};
constexpr std::pair kNothing{0, 0};

TEST(KeptKernel, IsBuiltForTwoCallsWithTheSameParameters) {
    const double first[] = {2, -0.0, 0.0, kNaN};
    for (const double divisor : first) {
        EXPECT_EQ(Work(1, divisor), kAll) << divisor;
        EXPECT_EQ(Work(1, divisor), kAll) << divisor;
        EXPECT_EQ(Work(2, divisor), divisor == 0 ? kAll : kNothing) << divisor;  // a trap leaves nothing
    }
    for (int repeat = 0; repeat < 2; ++repeat)
        EXPECT_EQ(Work(1, 3), kAll);
    EXPECT_EQ(Work(1, 3), kNothing);
    EXPECT_EQ(Work(1, 3, 2), kAll);
    EXPECT_EQ(Work(1, 3, 2, true), kAll);
    EXPECT_EQ(Work(1, 3), kAll);
    EXPECT_EQ(Work(1, 3), kAll);
    EXPECT_EQ(Work(kInfinity, 3), kNothing);  // traps
    EXPECT_EQ(Work(1, 3), kAll);
    std::thread([] { EXPECT_EQ(Work(1, 3), kAll); }).join();
    EXPECT_EQ(Work(1, 3), kNothing);
}

struct Unnumbered : Probe {
    using Probe::Probe;
};

}  // namespace

template <>
inline const std::size_t frame::kBlockNumber<Unnumbered> = 0;

namespace {

TEST(KeptKernel, IsNotKeptWithoutABlock) {
    for (int repeat = 0; repeat < 3; ++repeat) {
        timesBuilt = 0;
        EXPECT_EQ(frame::Framed<Unnumbered>(1.0, 4.0, 1, true), 0.25);
        EXPECT_EQ(timesBuilt, 1);
    }
}

// All that a call leaves behind.
std::string Outcome(double (*call)(double, const double*), double x, const double* parameters) {
    frame::ErrorState() = {.level = -7, .routine = "none", .method = -7, .count = -7};
    errno = 0;
    std::string outcome;
    try {
        outcome = std::to_string(std::bit_cast<std::uint64_t>(call(x, parameters)));
    } catch (const std::exception& e) {
        outcome = std::string(typeid(e).name()) + e.what();
    }
    outcome += " mode " + std::to_string(test::ModeWithoutFlags()) + " errno " + std::to_string(errno);
    ResetFpuStates();
    const frame::NumericErrorState& state = frame::ErrorState();
    return outcome + " " + std::to_string(state.level) + " " + state.routine.text.data() + " " +
           std::to_string(state.method) + " " + std::to_string(state.count);
}

template <typename Type>
Type Parameter(double value) {
    if constexpr (std::is_same_v<Type, int>)
        return std::abs(value) < 1e9 ? static_cast<int>(value) : std::numeric_limits<int>::max();
    else
        return static_cast<Type>(value);
}

template <typename Kernel, typename Parameters = typename Kernel::Parameters>
struct Calls;
template <typename Kernel, typename... Types>
struct Calls<Kernel, frame::ParameterList<Types...>> {
    static_assert(frame::KeptBetweenCalls<Kernel>);
    template <std::size_t... kIndex>
    static double Kept(double x, const double* p, std::index_sequence<kIndex...> /*indices*/) {
        return frame::Framed<Kernel, Types...>(x, Parameter<Types>(p[kIndex])...);
    }
    template <std::size_t... kIndex>
    static double Fresh(double x, const double* p, std::index_sequence<kIndex...> /*indices*/) {
        return frame::FramedCall(&frame::BuildAndApply<Kernel, Types...>, x, Parameter<Types>(p[kIndex])...);
    }
    static double Kept(double x, const double* p) { return Kept(x, p, std::index_sequence_for<Types...>{}); }
    static double Fresh(double x, const double* p) {
        return Fresh(x, p, std::index_sequence_for<Types...>{});
    }
};

// Two lists of parameters take turns at random, and one of their values changes now and then.
template <typename Kernel>
void CompareCalls(unsigned seed) {
    constexpr double kX[] = {0.25, 0.75, 0.5,  1,    3,         7.5,   1e-3,       1e-200, 0,
                             -0.5, 30,   1e10, 1e30, kInfinity, 1e308, frame::kNA, kNaN,   kSignallingNaN};
    constexpr double kOrdinary[] = {0.3, 0.5, 1, 2, 2.5, 7, 30, 120.5, 2000};
    constexpr double kOdd[] = {
        0,    -0.0,      -1,         5e-324, 1e-300, 1e-13,          1e8,       5e9, 1e15,
        1e60, kInfinity, -kInfinity, 1e308,  kNaN,   kSignallingNaN, frame::kNA};
    std::mt19937 random(seed);
    const auto from = [&random](const auto& values) { return values[random() % std::size(values)]; };
    double parameters[2][4] = {{2.5, 1, 0, 0}, {1, 0.5, 0, 1}};
    for (int call = 0; call < 1000; ++call) {
        double* const p = parameters[random() % 4 == 0];
        if (random() % 4 == 0) p[random() % 4] = random() % 4 == 0 ? from(kOdd) : from(kOrdinary);
        if (random() % 8 == 0) p[2] = p[3] = 0;  // no threshold, no noncentrality
        const double x = random() % 2 == 0 ? from(kX) : kX[random() % 6];
        ASSERT_EQ(Outcome(&Calls<Kernel>::Kept, x, p), Outcome(&Calls<Kernel>::Fresh, x, p))
            << typeid(Kernel).name() << " at " << x << ": " << p[0] << ' ' << p[1] << ' ' << p[2] << ' '
            << p[3];
    }
}

template <typename... Kernels>
void CompareAll(unsigned seed) {
    (CompareCalls<Kernels>(seed), ...);
}

void CompareEveryKernel(unsigned seed) {
    using namespace kernels;
    CompareAll<GammaPdfKernel, GammaCdfKernel, GammaInvCdfKernel, ChiSqPdfKernel, ChiSqCdfKernel,
               ChiSqInvCdfKernel, BetaPdfKernel, BetaCdfKernel, BetaInvCdfKernel, FPdfKernel, FCdfKernel,
               FInvCdfKernel, TPdfKernel, TCdfKernel, TInvCdfKernel, BinomialPdfKernel, BinomialCdfKernel,
               BinomialInvCdfKernel, PoissonPdfKernel, PoissonCdfKernel, PoissonInvCdfKernel>(seed);
    CompareAll<EitherTail<GammaInvCdfKernel>, EitherTail<ChiSqInvCdfKernel>, EitherTail<BetaInvCdfKernel>,
               EitherTail<FInvCdfKernel>, EitherTail<TInvCdfKernel>, EitherTail<BinomialInvCdfKernel>,
               EitherTail<PoissonInvCdfKernel>>(seed);
}

// Of each thread the destructor of what the host keeps for it calls the library once more.
TEST(KeptKernel, LeavesWhatAFreshOneLeaves) {
    CompareEveryKernel(1);
    std::vector<std::jthread> threads;
    for (unsigned seed = 2; seed < 5; ++seed)
        threads.emplace_back([seed] {
            RegisterKelSigfpeHandler();
            struct Last {
                ~Last() { EXPECT_EQ(Work(1, 7), kAll); }
            };
            static thread_local const Last last;
            (void)&last;
            CompareEveryKernel(seed);
        });
}

}  // namespace
}  // namespace zul
