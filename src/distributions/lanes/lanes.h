// The kernels that compute several elements at a time, and the functions that do so, for each level of processors.
#pragma once

#include "distributions/beta/beta.h"
#include "distributions/beta/f.h"
#include "distributions/beta/student_t.h"
#include "distributions/bounded/triangular.h"
#include "distributions/closed_forms/cauchy.h"
#include "distributions/closed_forms/exponential.h"
#include "distributions/closed_forms/laplace.h"
#include "distributions/closed_forms/largest_extreme_value.h"
#include "distributions/closed_forms/log_logistic.h"
#include "distributions/closed_forms/logistic.h"
#include "distributions/closed_forms/smallest_extreme_value.h"
#include "distributions/closed_forms/weibull.h"
#include "distributions/either_tail.h"
#include "distributions/gamma/chi_square.h"
#include "distributions/gamma/gamma.h"
#include "distributions/lanes/forward.h"
#include "distributions/normal/half_normal.h"
#include "distributions/normal/log_normal.h"
#include "distributions/normal/normal.h"
#include "frame/calls/in_blocks.h"

namespace zul::kernels {

template <class Kernel>
struct LaneFunction {
    frame::FillInLanes<Kernel> fill;
};

template <class... Kernels>
struct LaneFunctions : LaneFunction<Kernels>... {};

// A family to a line.
// clang-format off
struct Lanes : LaneFunctions<
    BetaPdfKernel, BetaCdfKernel, BetaInvCdfKernel, EitherTail<BetaInvCdfKernel>,
    CauchyPdfKernel, CauchyCdfKernel, CauchyInvCdfKernel, EitherTail<CauchyInvCdfKernel>,
    ChiSqPdfKernel, ChiSqCdfKernel, ChiSqInvCdfKernel, EitherTail<ChiSqInvCdfKernel>,
    ExponentialPdfKernel, ExponentialCdfKernel, ExponentialInvCdfKernel, EitherTail<ExponentialInvCdfKernel>,
    FPdfKernel, FCdfKernel, FInvCdfKernel, EitherTail<FInvCdfKernel>,
    GammaPdfKernel, GammaCdfKernel, GammaInvCdfKernel, EitherTail<GammaInvCdfKernel>,
    HalfNormalPdfKernel, HalfNormalCdfKernel, HalfNormalInvCdfKernel, EitherTail<HalfNormalInvCdfKernel>,
    LaplacePdfKernel, LaplaceCdfKernel, LaplaceInvCdfKernel, EitherTail<LaplaceInvCdfKernel>,
    LargestExtremeValuePdfKernel, LargestExtremeValueCdfKernel, LargestExtremeValueInvCdfKernel, EitherTail<LargestExtremeValueInvCdfKernel>,
    LogisticPdfKernel, LogisticCdfKernel, LogisticInvCdfKernel, EitherTail<LogisticInvCdfKernel>,
    LogLogisticPdfKernel, LogLogisticCdfKernel, LogLogisticInvCdfKernel, EitherTail<LogLogisticInvCdfKernel>,
    LogNormalPdfKernel, LogNormalCdfKernel, LogNormalInvCdfKernel, EitherTail<LogNormalInvCdfKernel>,
    NormalPdfKernel, NormalCdfKernel, NormalInvCdfKernel, EitherTail<NormalInvCdfKernel>,
    SmallestExtremeValuePdfKernel, SmallestExtremeValueCdfKernel, SmallestExtremeValueInvCdfKernel, EitherTail<SmallestExtremeValueInvCdfKernel>,
    TPdfKernel, TCdfKernel, TInvCdfKernel, EitherTail<TInvCdfKernel>,
    TriangularPdfKernel, TriangularCdfKernel, TriangularInvCdfKernel, EitherTail<TriangularInvCdfKernel>,
    WeibullPdfKernel, WeibullCdfKernel, WeibullInvCdfKernel, EitherTail<WeibullInvCdfKernel>> {
    // clang-format on
    // At the current level.
    template <class Kernel>
    static frame::FillInLanes<Kernel> FillOf();
};

// Null where the level has no vectors.
const Lanes* CurrentLanes();

extern const Lanes kLanesOfTwo;
extern const Lanes kLanesOfFour;
extern const Lanes kLanesOfEight;

template <class Kernel>
frame::FillInLanes<Kernel> Lanes::FillOf() {
    const Lanes* lanes = CurrentLanes();
    return lanes == nullptr ? nullptr : static_cast<const LaneFunction<Kernel>*>(lanes)->fill;
}

}  // namespace zul::kernels
