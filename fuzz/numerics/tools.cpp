// The root finder, the guarded functions and the elementary ones.
#include <cfloat>

#include "frame/call_frame.h"
#include "frame/guarded.h"
#include "frame/missing_value.h"
#include "frame/status.h"
#include "fuzz/numerics/evaluation.h"
#include "numerics/counts/deviance.h"
#include "numerics/elementary.h"
#include "numerics/gamma/fast_logarithms.h"
#include "numerics/gamma/gamma.h"
#include "numerics/roots/counted_function.h"
#include "zul/distributions.h"

namespace zul::fuzz {

using namespace numerics;

namespace {

// Rising functions with all the shapes that make false position slow.
double Rising(int kind, double target, double x) {
    const double y = std::clamp(x, -1e100, 1e100);
    return kind == 0   ? y - target
           : kind == 1 ? std::atan(y) - std::clamp(target, -1.5, 1.5)
           : kind == 2 ? y * y * y - target
           : kind == 3 ? std::floor(y) - target
                       : std::exp(std::clamp(y, -700.0, 700.0)) - target;
}

}  // namespace

void RootFinder(Input& input) {
    const int kind = input.Choice<int>(5);
    const bool whole = input.Flag();
    const auto end = [&] {
        const double size = std::min(input.Size(), 1e30);
        return input.Flag() ? size : -size;
    };
    const double target = end();
    const double a = end();
    const double b = end();
    double lo = std::min(a, b);
    double hi = std::max(a, b);
    if (whole && hi - lo > 1e4) return;               // it may go through all of them
    const double hole = input.Flag() ? kNaN : end();  // there it has no value
    test::CountedFunction f([=](double x) { return x == hole ? frame::kNA : Rising(kind, target, x); });
    f.target = target;
    f.discrete = whole;
    f.absTolX = 1e-12;
    f.absTolF = 1e-14;
    const Evaluation search{"root", {static_cast<double>(kind), target, a, b, whole ? 1.0 : 0.0}};
    bool found = true;
    if (input.Flag()) search.Run(input, [&] { found = ExpandBracket(&lo, &hi, f, -1e30, 1e30); });
    if (!found || (whole && hi - lo > 1e4)) return;
    search.Require(std::isfinite(lo) && std::isfinite(hi) && lo <= hi, " bracket", lo, hi);
    int status = -1;
    double root = 0;
    search.Run(input, [&] { root = SolveFalsePosition(lo, hi, f, &status); });
    const bool failed = status == kRootNotEvaluated || status == kRootNotBracketed;
    // The rounding of a step is one of the bracket's width.
    const double slack = whole ? 1 : 1e-15 * (hi - lo);
    search.Require(
        failed ? root == frame::kNA : status == kSuccess && root >= lo - slack && root <= hi + slack,
        " result", status, root, lo, hi);
    search.Require(f.evaluations <= 101'000, " evaluations", f.evaluations);
}

// Those that throw: the documented exceptions alone.
void Guarded(Input& input) {
    const double x = input.Real();
    const double y = input.Real();
    const std::size_t which = input.Choice(6);
    const auto name = [&] { return Call("guarded", which, x, y); };
    Checked(Mode::Framed, name, [&] {
        constexpr std::array<double (*)(double), 5> kFunctions = {
            frame::SafeSqrt, frame::SafeExp, frame::SafeLog, frame::SafeTan, frame::LogGamma};
        return which == 5 ? frame::FramedCall(&frame::SafePow, x, y)
                          : frame::FramedCall(kFunctions[which], x);
    });
}

void Elementary(Input& input) {
    const double x = input.Real();
    const double mean = Shape(input);
    const Evaluation elementary{"elementary", {x, mean}};
    double prompt = 0;
    double deviance = 0;
    elementary.Run(input, [&] {
        for (const auto function : {Log1p, Expm1, LogGammaFn, GammaFn, StirlingTerm})
            function(x);
        if (mean > 0 && mean <= kFastLimit) prompt = FastLogGamma(mean) - LogGammaFn(mean);
        if (x >= 0 && x < 1e100 && mean > 1e-100 && mean < 1e100) deviance = Deviance(x, mean);
    });
    elementary.Require(
        deviance >= 0 && (prompt == 0 || std::abs(prompt) <= 1e-13 * (1 + std::abs(std::log(mean)))), "",
        deviance, prompt);
    elementary.Require(std::isnan(v2::Psi(x)) == !(x > 0 && x <= DBL_MAX), " Psi");
}

}  // namespace zul::fuzz
