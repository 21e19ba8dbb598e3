#include "elementary/quotients_of_four.h"

#include "elementary/core/division.h"

namespace zul::test {

void QuotientsOfFour(double* out, const double* n, const double* d) {
    using Four = double __attribute__((vector_size(32)));
    const Four divisors = elementary::Load<Four>(d);
    elementary::Store(out, elementary::Quotient(elementary::Load<Four>(n), divisors, 1.0 / divisors));
}

}  // namespace zul::test
