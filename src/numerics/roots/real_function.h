// A real function of one variable as the root finder takes it.
#pragma once

namespace zul::numerics {

// Derived classes give Evaluate, hold their own parameters and set the fields.
class CmRealFunction {
public:
    CmRealFunction() = default;
    CmRealFunction(const CmRealFunction&) = default;
    virtual CmRealFunction& operator=(const CmRealFunction& other);
    virtual ~CmRealFunction() = default;

    // f(x), or NA where f cannot be evaluated.
    virtual double Evaluate(double x) = 0;

    virtual double GetAbsTolX() const;
    virtual double GetRelTolX() const;
    virtual double GetAbsTolF() const;
    virtual double GetRelTolF() const;

    // Whether the bracket [a, b] is narrow enough: its width below the absolute tolerance (for a discrete
    // function, below 2), or below the relative tolerance times the larger end.
    virtual bool IsConverged(double a, double b) const;
    // Whether the function value v counts as zero.
    virtual bool IsZero(double v) const;

    bool discrete = false;  // the variable takes whole values only
    double target = 0;      // what f is measured against; the scale of relTolF
    double absTolX = 0;
    double relTolX = 0;
    double absTolF = 0;
    double relTolF = 0;
};

}  // namespace zul::numerics
