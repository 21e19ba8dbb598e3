#include <cstdio>
#include <exception>

#include <zul/distributions.h>
#include <zul/frame.h>

//! [adapter]
extern "C" int normal_upper_tail(double x, double mean, double sd, double* tail) {
    thread_local const int registered = zul::RegisterKelSigfpeHandler();  // once on each thread
    try {
        *tail = zul::NormalCdf(x, mean, sd, /*upper=*/true);
        return registered;  // 0
    } catch (const std::exception&) {
        zul::ResetFpuStates();
        return 1;
    }
}
//! [adapter]

int main() {
    //! [caller]
    double tail = 0;
    std::printf("status %d, ", normal_upper_tail(1.96, 0, 1, &tail));
    std::printf("tail %.6f\n", tail);
    std::printf("status %d for a standard deviation of 0\n", normal_upper_tail(1.96, 0, 0, &tail));
    //! [caller]
}
