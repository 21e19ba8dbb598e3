// The distribution objects, which the sampler is built from.
#include <new>
#include <utility>

#include "allocations/calls.h"
#include "distributions/objects/beta_dists.h"
#include "distributions/objects/discrete_dists.h"
#include "distributions/objects/gamma_dists.h"
#include "distributions/objects/inversion_dists.h"
#include "distributions/objects/normal_dists.h"

namespace zul::test {
namespace {

using namespace objects;

constexpr double kNumbers[] = {2, 0.5, 0.5, 3};

// A vector that cannot grow is std::bad_alloc.
template <typename Object, typename... Parameters>
AllocatingCall Describing(Parameters... parameters) {
    return {"", [=](int) {
                Object object(parameters...);
                std::vector<double> values;
                try {
                    object.Modes(values);
                    object.GetCentralParameters(values);
                    object.GetParameters(values);
                    object.MassTable(0, 100, values);
                } catch (const std::bad_alloc&) {
                    return Outcome::Failure;
                }
                return Judge(!values.empty(), false);
            }};
}

Outcome Factor(int) {
    const CmDistMVNormal object(2, kNumbers, kNumbers);
    return Judge(object.Obtained(), !object.Obtained());
}

}  // namespace

std::vector<AllocatingCall> AllocatingObjects() {
    return {
        Describing<CmDistBeta>(2.0, 3.0),
        Describing<CmDistF>(5.0, 7.0, 1.0),
        Describing<CmDistT>(5.0, 1.0),
        Describing<CmDistGamma>(2.5, 2.0, 1.0),
        Describing<CmDistLambda>(1.5, 1.0, 2.0),
        Describing<CmDistLogLogistic>(0.5, 0.5, 1.0),
        Describing<CmDistTriangular>(0.0, 0.5, 2.0),
        Describing<CmDistNormal>(0.0, 1.0),
        Describing<CmDistBinomial>(10, 0.3),
        Describing<CmDistBernoulli>(0.3),
        Describing<CmDistHypergeometric>(20u, 7, 12),
        Describing<CmDistPoisson>(4.5),
        Describing<CmDistNegBinomial>(NegBinomialCount::Failures, 0.3, 4.0),
        {"", Factor},
    };
}

}  // namespace zul::test
