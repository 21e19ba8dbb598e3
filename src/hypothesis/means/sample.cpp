#include "hypothesis/means/sample.h"

#include "elementary/root.h"
#include "zul/descriptive.h"

namespace zul::hypothesis {

void MeanAndStandardDeviation(const double* data, unsigned n, double* mean, double* standardDeviation) {
    double variance = 0;
    v1::GetSampleMeanAndVariance(data, n, mean, &variance);
    *standardDeviation = elementary::Sqrt(variance);
}

unsigned SumCounts(const int* data, unsigned n) {
    unsigned sum = 0;
    for (unsigned i = 0; i < n; ++i)
        sum += static_cast<unsigned>(data[i]);
    return sum;
}

}  // namespace zul::hypothesis
