// The fits and probability plots by name.
#pragma once

#include <string>
#include <vector>

#include "zul/fitting.h"

namespace zul::test {

using FitFunction = int (*)(v2::DistributionFit*, const double*);
using PlotFunction = decltype(&v2::RunKelNormalPPlot);

struct FittedFamily {
    std::string name;  // FitNormal without the first three letters
    v2::DistributionFamily family;
    std::vector<std::string> parameters;
    bool isOfPositive;
    FitFunction fit;
    PlotFunction plot = nullptr;
};

const std::vector<FittedFamily>& FittedFamilies();

}  // namespace zul::test
