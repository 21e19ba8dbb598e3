#include "threads/works.h"

#include <array>
#include <cmath>
#include <memory>
#include <random>
#include <stdexcept>

#include "frame/traps.h"
#include "sampling/slots.h"
#include "support/clustering.h"
#include "zul/descriptive.h"
#include "zul/frame.h"

namespace zul::test {
namespace {

constexpr unsigned kCount = 300;
constexpr std::size_t kRoom = kCount;

Results Describe(unsigned seed) {
    const std::vector<double> x = NormalData(seed);
    const std::vector<double> y = NormalData(seed + 100);
    Results r(8 * kRoom);
    double* out = r.data();
    std::vector<unsigned> order(kCount);
    std::array<unsigned, 2> counts{};
    int status = 0;
    v1::GetCumulativeSums(x.data(), kCount, out);
    v1::GetProportions(x.data(), kCount, out + kRoom);
    v1::GetRank(x.data(), kCount, out + 2 * kRoom);
    v1::GetOrder(x.data(), kCount, order.data());
    v1::GetSampleQuantiles(x.data(), kCount, 7, out + 4 * kRoom, out + kRoom, kCount);
    v1::GetMode(x.data(), kCount, out + 5 * kRoom, 20, &counts[0], &counts[1]);
    v1::GetCenteredOrderKPowerSums(x.data(), kCount, out + 6 * kRoom, 4);
    v1::GetKelSkewnessAndKurtosis(x.data(), kCount, out + 7 * kRoom, out + 7 * kRoom + 1);
    r.insert(r.end(), order.begin(), order.end());
    r.insert(r.end(), {v1::GetSampleMean(x.data(), kCount), v1::GetSampleVariance(x.data(), kCount),
                       v1::GetPearsonCorrelation(x.data(), y.data(), kCount),
                       v1::GetSpearmanCorrelation(x.data(), y.data(), kCount, &status),
                       v1::GetTrimmedMean(x.data(), kCount, 0.1, &status),
                       v2::GetGeometricMean(x.data(), kCount), static_cast<double>(counts[0])});
    return r;
}

// A sampler's operation, with parameters that all of them can do something with.
Results Draw(unsigned seed, const Slot& slot) {
    const SamplerPtr sampler = MakeSampler(seed + 1);
    Results r;
    for (const Parameters& parameters :
         {Parameters{0.5, 0.5, 2}, Parameters{30, 20, 10}, Parameters{0.25, 0.75, 0.5, 0.5}}) {
        Results deviates(20);
        slot.draw(*sampler, deviates.data(), 20, parameters);
        r.insert(r.end(), deviates.begin(), deviates.end());
    }
    r.push_back(sampler->GetSeed());
    return r;
}

Results Cluster(unsigned seed) {
    using namespace dax::clustering;
    const std::vector<double> x = NormalData(seed);
    std::vector<std::vector<double>> rows;
    for (std::size_t i = 0; i + 2 < kCount; i += 6)
        rows.push_back({x[i], x[i + 1], x[i + 2]});
    const Table table = MakeTable(rows);
    Results r;
    for (const auto linkage : {Average, Single, Ward}) {
        const Matrix m = MakeMatrix(table->RowCount());
        CreateForClusterObservations(*table, Pearson, false, *m);
        const std::unique_ptr<dax::types::IReadableVector<ClusterStep>> steps(RunClustering(linkage, 5, *m));
        for (std::size_t i = 0; i < steps->size(); ++i)
            r.insert(r.end(), {(*steps)[i].distance, double((*steps)[i].cluster1)});
        const std::unique_ptr<dax::types::IReadableVector<int>> members(FindMembersWithNumber(*steps, 5));
        r.insert(r.end(), members->DataImpl(), members->DataImpl() + members->size());
    }
    return r;
}

// Traps of the thread's own and of a sampler, each ended by an exception.
Results Trap(unsigned seed) {
    Results r;
    const auto count = [&r](auto call) {
        try {
            call();
            r.push_back(0);
        } catch (const std::overflow_error&) {
            r.push_back(1);
        } catch (const std::invalid_argument&) {
            r.push_back(2);
        } catch (const std::runtime_error&) {
            r.push_back(3);
        }
        ResetFpuStates();
    };
    const SamplerPtr sampler = MakeSampler(seed + 1);
    for (int i = 0; i < 20; ++i) {
        Results out(50);
        count([&] { sampler->SampleExponential(out.data(), 50, 1e308, 0); });
        r.push_back(sampler->GetSeed());
        r.insert(r.end(), out.begin(), out.end());
        SetKelFpuStates();
        count([] { Divide(1, 0); });
        SetKelFpuStates();
        count([] { Divide(0, 0); });
    }
    return r;
}

}  // namespace

std::vector<double> NormalData(unsigned seed) {
    std::mt19937_64 engine(seed);
    std::normal_distribution<double> normal(10, 2);
    std::vector<double> x(kCount);
    for (double& value : x)
        value = std::round(normal(engine) * 8) / 8;
    return x;
}

std::vector<Work> DescriptiveWorks() {
    return {{Describe}};
}

std::vector<Work> ClusteringWorks() {
    return {{Cluster}};
}

std::vector<Work> SamplerWorks() {
    std::vector<Work> works = {{Trap}};
    for (const auto& [name, slot] : Slots()) {
        const bool isByQuantile = name == "Poisson" || name == "T" || name.starts_with("NegBinomial");
        works.push_back({[&draw = slot](unsigned seed) { return Draw(seed, draw); }, isByQuantile});
    }
    return works;
}

}  // namespace zul::test
