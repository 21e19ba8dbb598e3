#include "descriptive/compensated_sum.h"
#include "distributions/reference_distributions.h"
#include "frame/status.h"
#include "zul/hypothesis.h"

namespace zul {

int RunKelTabularChiSqGOFTest(const double* observed, const double* proportions, double* expected,
                              double* contributions, double* chiSquare, double* pValue,
                              double* degreesOfFreedom, double total, unsigned categories) {
    descriptive::CompensatedSum sum;
    for (unsigned i = 0; i < categories; ++i) {
        expected[i] = proportions != nullptr ? total * proportions[i] : 1.0 / categories * total;
        const double difference = observed[i] - expected[i];
        contributions[i] = difference * (difference / expected[i]);
        sum.Add(contributions[i]);
    }
    *chiSquare = sum.Value();
    *degreesOfFreedom = categories - 1.0;
    *pValue = reference::ChiSqPValue(*chiSquare, *degreesOfFreedom, Side::Upper);
    return kSuccess;
}

}  // namespace zul
