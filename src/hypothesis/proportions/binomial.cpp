#include "hypothesis/proportions/binomial.h"

#include "distributions/reference_distributions.h"
#include "elementary/exponential.h"
#include "elementary/logarithm.h"
#include "frame/missing_value.h"
#include "numerics/gamma/gamma.h"

namespace zul::hypothesis {

double BinomialProbability(double x, double n, double p) {
    if (!(p >= 0 && p <= 1)) return frame::kQuietNaN;
    if (x < 0 || x > n) return 0;
    if (p == 0) return x == 0 ? 1 : 0;
    if (p == 1) return x == n ? 1 : 0;
    return elementary::Exp(numerics::LogBinomialCoefficient(n, x) + x * elementary::Log(p) +
                           (n - x) * elementary::Log(1 - p));
}

double BinomialTail(double x, double n, double p, bool upper) {
    return reference::BinomialTail(x, n, p, upper);
}

}  // namespace zul::hypothesis
