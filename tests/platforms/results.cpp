// The results of the library on this platform, beside those of another.
//
//   zul_results write FILE     writes a table of results, exactly
//   zul_results compare FILE   computes them again, prints the differences, and fails where they are too large
#include <exception>
#include <fstream>
#include <iostream>
#include <string>

#include "platforms/recording.h"
#include "zul/frame.h"

namespace {

void RecordAll(zul::test::Recording& recording) {
    RecordDistributions(recording, 20240301);
    RecordTests(recording, 20240302);
    RecordRankTests(recording, 20240306);
    RecordDescriptive(recording, 20240303);
    RecordBoxplots(recording, 20240305);
    RecordSamplers(recording);
    RecordClustering(recording, 20240304);
}

int Run(const std::string& command, const std::string& file) {
    using namespace zul::test;
    if (command == "write") {
        Recording recording;
        RecordAll(recording);
        WriteTable(file, recording.Table());
        std::cout << recording.Table().size() << " results\n";
        return 0;
    }
    Recording recording(ReadTable(file));
    RecordAll(recording);
    return recording.Report(std::cout) ? 0 : 1;
}

// Windows starts programs and threads so, and a C library whose exp, log and pow use the x87 unit loses
// digits then. To register a thread has to set that right.
void RoundX87To53Bits() {
    constexpr unsigned short kControl = 0x027F;
    __asm__ volatile("fldcw %0" : : "m"(kControl));
}

}  // namespace

int main(int argc, char** argv) {
    const std::string command = argc == 3 ? argv[1] : "";
    if (command != "write" && command != "compare") {
        std::cerr << "usage: zul_results write|compare FILE\n";
        return 2;
    }
    try {
        RoundX87To53Bits();
        zul::RegisterKelSigfpeHandler();
        return Run(command, argv[2]);
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << "\n";
        return 1;
    }
}
