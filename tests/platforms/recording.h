// The results of the library as a table. Every platform, processor, compiler and option gives the same bits.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace zul::test {

struct Result {
    std::string group;
    double value;
};

class Recording {
public:
    // NaN is recorded as one and the same.
    void Add(const std::string& group, double value);
    void Add(const std::string& group, const std::vector<double>& values);

    const std::vector<Result>& Table() const { return table_; }
    // Of the bits of all values in their order, by FNV-1a (G. Fowler, L. C. Noll and K.-P. Vo, 1991).
    std::uint64_t Hash() const;

private:
    std::vector<Result> table_;
};

// All of them, in the order of the table. The seed is that of the data.
void RecordDistributions(Recording& recording, unsigned seed);
void RecordTests(Recording& recording, unsigned seed);
void RecordVariances(Recording& recording, unsigned seed);
void RecordRankTests(Recording& recording, unsigned seed);
void RecordDescriptive(Recording& recording, unsigned seed);
void RecordBoxplots(Recording& recording, unsigned seed);
void RecordFits(Recording& recording, unsigned seed);
void RecordSamplers(Recording& recording);
void RecordClustering(Recording& recording, unsigned seed);
void RecordTables(Recording& recording, unsigned seed);

}  // namespace zul::test
