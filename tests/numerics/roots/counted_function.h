#pragma once

#include <functional>
#include <utility>

#include "numerics/roots/root_finder.h"

namespace zul::test {

// A function for the root finder that counts its evaluations.
class CountedFunction : public numerics::CmRealFunction {
public:
    explicit CountedFunction(std::function<double(double)> f) : f_(std::move(f)) {
        absTolX = 1e-30;
        relTolX = 1e-12;
    }
    double Evaluate(double x) override {
        ++evaluations;
        return f_(x);
    }
    int evaluations = 0;

private:
    std::function<double(double)> f_;
};

}  // namespace zul::test
