// What the threads do, each by an object of its own.
#pragma once

#include <functional>
#include <vector>

namespace zul::test {

using Results = std::vector<double>;

struct Work {
    std::function<Results(unsigned seed)> run;
    // It writes the numeric error state: calls are not to meet.
    bool isSerialised = false;
};

std::vector<double> NormalData(unsigned seed);

std::vector<Work> DescriptiveWorks();
std::vector<Work> SamplerWorks();
std::vector<Work> ClusteringWorks();
std::vector<Work> DistributionWorks();

}  // namespace zul::test
