#include "fitting/fits.h"

namespace zul::test {

const std::vector<FittedFamily>& FittedFamilies() {
    using namespace v2;
    using enum DistributionFamily;
    using Names = std::vector<std::string>;
    const Names normal = {"mean", "standardDeviation"};
    const Names location = {"location", "scale"};
    const Names location3 = {"location", "scale", "threshold"};
    const Names shape = {"shape", "scale"};
    const Names shape3 = {"shape", "scale", "threshold"};
    const Names scale2 = {"scale", "threshold"};
    static const std::vector<FittedFamily> families = {
        {"Normal", Normal, normal, false, FitNormal, RunKelNormalPPlot},
        {"KelNormal", Normal, normal, false, FitKelNormal},
        {"LogNormal", LogNormal, location, true, FitLogNormal, RunKelLogNormalPPlot},
        {"LogNormal3", LogNormal3, location3, false, FitLogNormal3},
        {"Exponential", Exponential, {"scale"}, true, FitExponential, RunKelExponentialPPlot},
        {"Exponential2", Exponential2, scale2, false, FitExponential2},
        {"KelExponential2", Exponential2, scale2, false, FitKelExponential2},
        {"Weibull", Weibull, shape, true, FitWeibull, RunKelWeibullPPlot},
        {"Weibull3", Weibull3, shape3, false, FitWeibull3},
        {"Gamma", Gamma, shape, true, FitGamma, RunKelGammaPPlot},
        {"Gamma3", Gamma3, shape3, false, FitGamma3},
        {"SmallestExtremeValue", SmallestExtremeValue, location, false, FitSmallestExtremeValue,
         RunKelSmallestExtremeValuePPlot},
        {"LargestExtremeValue", LargestExtremeValue, location, false, FitLargestExtremeValue,
         RunKelLargestExtremeValuePPlot},
        {"Logistic", Logistic, location, false, FitLogistic, RunKelLogisticPPlot},
        {"LogLogistic", LogLogistic, location, true, FitLogLogistic, RunKelLogLogisticPPlot},
        {"LogLogistic3", LogLogistic3, location3, false, FitLogLogistic3}};
    return families;
}

}  // namespace zul::test
