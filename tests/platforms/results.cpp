// The results of the library on this platform.
//
//   zul_results hash           prints how many they are and their hash, which is the same on all platforms
//   zul_results write FILE     writes them, exactly
//   zul_results compare FILE   prints how many of each group are not those of the file, and fails if any
#include <bit>
#include <cstdint>
#include <exception>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "platforms/recording.h"
#include "zul/frame.h"

namespace {

using zul::test::Recording;
using zul::test::Result;

Recording RecordAll() {
    Recording recording;
    RecordDistributions(recording, 20240301);
    RecordTests(recording, 20240302);
    RecordRankTests(recording, 20240306);
    RecordDescriptive(recording, 20240303);
    RecordBoxplots(recording, 20240305);
    RecordFits(recording, 20240306);
    RecordSamplers(recording);
    RecordClustering(recording, 20240304);
    RecordVariances(recording, 20240306);
    RecordTables(recording, 20240306);
    return recording;
}

void Write(const std::vector<Result>& table, const std::string& file) {
    std::ofstream out(file);
    for (const auto& [group, value] : table)
        out << group << " " << std::hex << std::bit_cast<std::uint64_t>(value) << "\n";
    if (!out.flush()) throw std::runtime_error("cannot write " + file);
}

std::vector<Result> Read(const std::string& file) {
    std::ifstream in(file);
    std::vector<Result> table;
    std::string group;
    for (std::uint64_t bits = 0; in >> group >> std::hex >> bits;)
        table.push_back({group, std::bit_cast<double>(bits)});
    if (table.empty() || !in.eof()) throw std::runtime_error("cannot read " + file);
    return table;
}

// Whether all bits are the same. The first difference of each group is printed.
bool AreSame(const std::vector<Result>& table, const std::vector<Result>& other) {
    if (table.size() != other.size()) throw std::runtime_error("the file is of another version");
    std::map<std::string, std::size_t> unequal;
    std::cout << std::setprecision(17);
    for (std::size_t i = 0; i < table.size(); ++i) {
        if (table[i].group != other[i].group) throw std::runtime_error("the file is of another version");
        if (std::bit_cast<std::uint64_t>(table[i].value) == std::bit_cast<std::uint64_t>(other[i].value))
            continue;
        if (++unequal[table[i].group] == 1)
            std::cout << table[i].group << ", row " << i + 1 << ": " << table[i].value << ", in the file "
                      << other[i].value << "\n";
    }
    std::size_t sum = 0;
    for (const auto& [group, count] : unequal) {
        std::cout << group << ": " << count << "\n";
        sum += count;
    }
    std::cout << sum << " of " << table.size() << " results differ\n";
    return sum == 0;
}

int Run(const std::string& command, const std::string& file) {
    const Recording recording = RecordAll();
    if (command == "compare") return AreSame(recording.Table(), Read(file)) ? 0 : 1;
    if (command == "write") Write(recording.Table(), file);
    std::cout << recording.Table().size() << " results, hash " << std::hex << std::setfill('0')
              << std::setw(16) << recording.Hash() << "\n";
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string command = argc > 1 ? argv[1] : "";
    if (!(command == "hash" && argc == 2) && !((command == "write" || command == "compare") && argc == 3)) {
        std::cerr << "usage: zul_results hash|write FILE|compare FILE\n";
        return 2;
    }
    try {
        zul::RegisterKelSigfpeHandler();
        return Run(command, argc == 3 ? argv[2] : "");
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << "\n";
        return 1;
    }
}
