#include "numerics/gamma/digamma.h"
#include "zul/distributions.h"

namespace zul::v2 {

double Psi(double x) {
    return numerics::Digamma(x);
}

}  // namespace zul::v2
