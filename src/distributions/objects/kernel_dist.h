// Distribution objects made of the kernels of a family.
#pragma once

#include <cstddef>
#include <tuple>
#include <vector>

#include "distributions/objects/cm_dist.h"
#include "frame/call_frame.h"

namespace zul::objects {

// A kernel from parameters that may be of narrower types than its own.
template <typename Kernel, typename... Types>
auto MakeKernel(frame::ParameterList<Types...> /*types*/, auto... parameters) {
    return Kernel{static_cast<Types>(parameters)...};
}

template <typename Kernel>
auto MakeKernel(auto... parameters) {
    if constexpr (requires { typename Kernel::Parameters; })
        return MakeKernel<Kernel>(typename Kernel::Parameters{}, parameters...);
    else
        return Kernel{parameters...};
}

template <typename PdfKernel, typename CdfKernel, typename InvCdfKernel,
          typename Parameters = typename InvCdfKernel::Parameters>
class KernelDist;

// Pdf, Cdf and InvCdf are the kernels; the parameters are those of the inverse. Drawing is left to the
// family.
template <typename PdfKernel, typename CdfKernel, typename InvCdfKernel, typename... Types>
class KernelDist<PdfKernel, CdfKernel, InvCdfKernel, frame::ParameterList<Types...>> : public CmDist {
public:
    explicit KernelDist(Types... parameters) : parameters_(parameters...) {}

    double Pdf(double x) override {
        return std::apply([x](auto... values) { return MakeKernel<PdfKernel>(values...)(x); }, parameters_);
    }
    double Cdf(double x, bool upper) override {
        return std::apply([x, upper](auto... values) { return MakeKernel<CdfKernel>(values..., upper)(x); },
                          parameters_);
    }
    double InvCdf(double p) override {
        return std::apply([p](auto... values) { return InvCdfKernel{values...}(p); }, parameters_);
    }
    void GetParameters(std::vector<double>& parameters) const override {
        std::apply([&](auto... values) { parameters.assign({static_cast<double>(values)...}); }, parameters_);
    }

protected:
    template <std::size_t kIndex>
    auto Parameter() const {
        return std::get<kIndex>(parameters_);
    }

private:
    std::tuple<Types...> parameters_;
};

template <typename PdfKernel, typename CdfKernel, typename InvCdfKernel,
          typename Parameters = typename InvCdfKernel::Parameters>
class InversionDist;

// A deviate is the quantile at one uniform; the kernel of the inverse keeps what depends on the parameters.
template <typename PdfKernel, typename CdfKernel, typename InvCdfKernel, typename... Types>
class InversionDist<PdfKernel, CdfKernel, InvCdfKernel, frame::ParameterList<Types...>>
    : public KernelDist<PdfKernel, CdfKernel, InvCdfKernel> {
public:
    explicit InversionDist(Types... parameters)
        : KernelDist<PdfKernel, CdfKernel, InvCdfKernel>(parameters...), inverse_{parameters...} {}

    double InvCdf(double p) override { return inverse_(p); }
    double Draw() override { return inverse_(this->NextUniform()); }

private:
    InvCdfKernel inverse_;
};

}  // namespace zul::objects
