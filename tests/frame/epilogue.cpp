#include "frame/epilogue.h"

namespace zul::test {

double AddAndScale(const Columns& columns, long count, double sum) {
    const long* const a = columns[0];
    const long* const b = columns[1];
    const long* const c = columns[2];
    const long* const d = columns[3];
    const long* const e = columns[4];
    const long* const f = columns[5];
    long many = 0;
    for (long i = 0; i < count; ++i)
        many += a[i] * b[i] + c[i] * d[i] + (e[i] ^ f[i]) * (a[i] + c[i]) + (many ^ a[i]) * e[i];
    return sum + static_cast<double>(many) * sum;
}

}  // namespace zul::test
