// The two shapes of the incomplete beta functions with all that depends on them alone.
#pragma once

#include "elementary/logarithm.h"
#include "numerics/gamma/gamma.h"
#include "numerics/gamma/gamma_shape.h"

namespace zul::numerics {

// The argument up to which the incomplete beta pair is computed from the lower side; near the median of the
// beta(p, q) distribution, and at most 0.5 unless q >= 1 and p >= 0.6.
double BetaMedianSplit(double p, double q);

class BetaShapes;

// The shapes as the distribution on one side of 0.5 sees them: p belongs to the near end, q to the far one.
// It refers to its BetaShapes, which keep the values.
class BetaOrientation {
public:
    // The ratios that are kept: more terms than most series have.
    static constexpr int kKeptRatios = 64;

    BetaOrientation(const BetaShapes& shapes, int index);
    double P() const { return p_; }
    double Q() const { return q_; }
    BetaOrientation Mirrored() const { return {shapes_, 1 - index_}; }
    const BetaShapes& Shapes() const { return shapes_; }
    bool IsMirrored() const { return index_ != 0; }
    double LogP() const;
    double LogQ() const;
    double MedianSplit() const;
    double GammaP() const;
    double LogGammaP() const;
    // (q - n) / (n + p), kept for n <= kKeptRatios: between the terms of the lower side's series. The
    // mirrored orientation's are those of the upper side's.
    double Ratio(double n) const { return (q_ - n) / (n + p_); }
    // Those for 1 to n <= kKeptRatios, from element 1 on.
    const double* Ratios(int n) const;
    // w(p, q) = p log(q) - log(gamma(q + p) / gamma(q)), without cancellation, for p < 1; it vanishes as q
    // grows.
    double GammaRatioDefect() const;
    // exp(w).
    double GammaRatioFactor() const;
    // exp(w) gamma(1 + p) - 1.
    double SmallShapeConstant() const;
    // log(p B(p, q)); for small p relative to p.
    double LogFirstDivisor() const;

private:
    const BetaShapes& shapes_;
    int index_;
    double p_;
    double q_;
};

// Built from the shapes a and b. What the incomplete beta functions need of the shapes alone is computed on
// first need and kept, so an object serves one thread at a time.
class BetaShapes {
public:
    // cppcheck-suppress uninitMemberVar ; the ratios are filled as they are needed
    BetaShapes(double a, double b) : shapes_{a, b} {}
    double A() const { return shapes_[0]; }
    double B() const { return shapes_[1]; }
    BetaOrientation Direct() const { return {*this, 0}; }
    // For 1 - x, with the shapes exchanged.
    BetaOrientation Mirrored() const { return {*this, 1}; }
    // Whether both lie in [0, kShapeLimit], and not both are 0; and whether the pair depends on x at all.
    enum class Kind : unsigned char { Unknown, Outside, Limit, Ordinary };
    Kind Classify() const {
        if (kind_ == Kind::Unknown) kind_ = ClassOf(A(), B());
        return kind_;
    }
    // S(n) - S(a) - S(b) + log(a b / n), where n = a + b and S is StirlingTerm: what the two deviances leave
    // of the logarithm of the density. The same bits for exchanged shapes.
    double DensityConstant() const;
    // -log(B(a, b)), with an absolute error of some roundings of (a + b). The same bits for exchanged shapes.
    double MinusLogBeta() const;

private:
    friend class BetaOrientation;

    // What belongs to one shape, and to the orientation in which it is p.
    struct Kept {
        Lazy log;
        Lazy gamma;
        Lazy logGamma;
        Lazy medianSplit;
        Lazy gammaRatioDefect;
        Lazy gammaRatioFactor;
        Lazy smallShapeConstant;
        Lazy logFirstDivisor;
        int ratiosKnown = 0;
        double ratios[BetaOrientation::kKeptRatios + 1];
    };

    double Log(int index) const {
        return sides_[index].log.Get([this, index] { return elementary::Log(shapes_[index]); });
    }

    static Kind ClassOf(double a, double b);

    double shapes_[2];
    mutable Kind kind_ = Kind::Unknown;
    mutable Kept sides_[2];
    mutable Lazy densityConstant_;
    mutable Lazy minusLogBeta_;
};

inline BetaOrientation::BetaOrientation(const BetaShapes& shapes, int index)
    : shapes_(shapes), index_(index), p_(shapes.shapes_[index]), q_(shapes.shapes_[1 - index]) {}

inline double BetaOrientation::LogP() const {
    return shapes_.Log(index_);
}

inline double BetaOrientation::LogQ() const {
    return shapes_.Log(1 - index_);
}

inline double BetaOrientation::MedianSplit() const {
    return shapes_.sides_[index_].medianSplit.Get([this] { return BetaMedianSplit(p_, q_); });
}

inline double BetaOrientation::GammaP() const {
    return shapes_.sides_[index_].gamma.Get([this] { return GammaFn(p_); });
}

inline double BetaOrientation::LogGammaP() const {
    return shapes_.sides_[index_].logGamma.Get([this] { return LogGammaFn(p_); });
}

inline const double* BetaOrientation::Ratios(int n) const {
    BetaShapes::Kept& side = shapes_.sides_[index_];
    for (; side.ratiosKnown < n; ++side.ratiosKnown) {
        side.ratios[side.ratiosKnown + 1] = Ratio(side.ratiosKnown + 1);
    }
    return side.ratios;
}

}  // namespace zul::numerics
