// A host that loads the library while it runs, by name, and does a t test with it. It is linked with
// nothing of the library: there is no import library in its build, and it can tell the user when zul.dll is
// missing.
//
//   load_at_run_time [library]
//
// The public headers are included for the types: the records and the enumerations. The functions that they
// declare, the constructors of the records included, cannot be called by name, which would need the import
// library: they are looked up.
#include <zul/hypothesis.h>

#include <cstddef>
#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>

#include "library.h"

namespace {

using zul::AlternativeHypothesis;
using zul::IntervalType;
using zul::v0::PairedT;

// An export has the name that the compiler of the library makes of its declaration, so that overloads
// differ. The names below are those of GCC and clang, in libzul.so as in a zul.dll made by mingw-w64. To
// see the names of a library, and with c++filt at its end the declarations in the same order:
//
//   x86_64-w64-mingw32-objdump -p zul.dll | grep _Z | sed 's/.*] //'
//   nm --dynamic --defined-only --format=just-symbols libzul.so
//
// A zul.dll made by another compiler has other names (dumpbin /exports zul.dll) and other exceptions: host
// and library have to be of one C++ ABI for the exceptions below to be caught.
struct Exports {
    int (*registerHandler)();
    void (*resetFpuStates)();
    double (*normalCdf)(double x, double mean, double sd, bool upper);
    void (*constructPairedT)(PairedT* record);
    int (*runPairedT)(PairedT* record, const double* first, const double* second, double confidence,
                      IntervalType type, AlternativeHypothesis alternative, double difference0);
};

template <typename Function>
void Find(void* library, const char* name, Function* function) {
    *function = reinterpret_cast<Function>(FindExport(library, name));
    if (*function == nullptr) throw std::runtime_error(std::string("the library has no ") + name);
}

Exports Load(const char* name) {
    void* const library = LoadByName(name);
    if (library == nullptr) throw std::runtime_error(std::string("cannot load ") + name);
    Exports exports{};
    Find(library, "_ZN3zul24RegisterKelSigfpeHandlerEv", &exports.registerHandler);
    Find(library, "_ZN3zul14ResetFpuStatesEv", &exports.resetFpuStates);
    Find(library, "_ZN3zul9NormalCdfEdddb", &exports.normalCdf);
    Find(library, "_ZN3zul2v07PairedTC1Ev", &exports.constructPairedT);
    Find(library,
         "_ZN3zul2v010RunPairedTEPNS0_7PairedTEPKdS4_dNS_12IntervalTypeENS_21AlternativeHypothesisEd",
         &exports.runPairedT);
    return exports;
}

// Hours of sleep that ten patients gained by two drugs. Student, The probable error of a mean, 1908.
constexpr double kDrug1[] = {0.7, -1.6, -0.2, -1.2, -0.1, 3.4, 3.7, 0.8, 0.0, 2.0};
constexpr double kDrug2[] = {1.9, 0.8, 1.1, 0.1, -0.1, 4.4, 5.5, 1.6, 4.6, 3.4};

int CompareDrugs(const Exports& exports) {
    // Room for a record, made one by the library's constructor.
    alignas(PairedT) std::byte room[sizeof(PairedT)];
    auto* const record = reinterpret_cast<PairedT*>(room);
    exports.constructPairedT(record);
    record->n = 10;
    const int status = exports.runPairedT(record, kDrug1, kDrug2, 0.95, IntervalType::TwoSided,
                                          AlternativeHypothesis::NotEqual, 0);
    std::printf("mean difference %.2f, 95 %% interval %.6f to %.6f\n", record->meanDifference,
                record->lowerBound, record->upperBound);
    std::printf("t = %.5f, p = %.6f\n", record->tStatistic, record->pValue);
    return status;
}

// A standard deviation of 0 is a division by zero: a trap of the processor, which the library turns into an
// exception.
void ShowTrap(const Exports& exports) {
    try {
        std::printf("%f\n", exports.normalCdf(1, 0, 0, false));
    } catch (const std::runtime_error& error) {
        exports.resetFpuStates();  // after an exception the thread is still in trapping mode
        std::printf("a standard deviation of 0: %s\n", error.what());
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        const Exports exports = Load(argc > 1 ? argv[1] : kLibraryName);
        exports.registerHandler();  // once on each thread that calls the library
        const int status = CompareDrugs(exports);
        ShowTrap(exports);
        return status;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
        return 1;
    }
}
