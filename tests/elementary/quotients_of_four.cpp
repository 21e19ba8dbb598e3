#include "elementary/quotients_of_four.h"

#include "elementary/core/division.h"

namespace zul::test {

using Four = double __attribute__((vector_size(32)));

void QuotientsOfFour(double* out, const double* n, const double* d) {
    const Four divisors = elementary::Load<Four>(d);
    elementary::Store(out, elementary::Quotient(elementary::Load<Four>(n), divisors, 1.0 / divisors));
}

void QuotientsByWhole(double* out, const double* n, double d) {
    const auto divisors = elementary::Splat<Four>(d);
    elementary::Store(out, elementary::QuotientByWhole(elementary::Load<Four>(n), divisors,
                                                       elementary::ReciprocalOf(divisors)));
}

}  // namespace zul::test
