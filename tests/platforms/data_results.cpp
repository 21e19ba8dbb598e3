// Descriptive statistics and clustering of random data.
#include <cmath>
#include <memory>
#include <vector>

#include "hypothesis/record_fields.h"
#include "platforms/exact_numbers.h"
#include "platforms/recording.h"
#include "zul/clustering.h"
#include "zul/descriptive.h"

namespace zul::test {
namespace {

class DataResults {
public:
    DataResults(Recording& recording, std::vector<double> x, std::vector<double> y)
        : recording_(recording), x_(std::move(x)), y_(std::move(y)), n_(static_cast<unsigned>(x_.size())) {}

    void Sums() {
        std::vector<double> out(n_);
        recording_.Add("Sums", v1::GetSum(x_.data(), n_));
        v1::GetCumulativeSums(x_.data(), n_, out.data());
        recording_.Add("Sums", out);
        v1::GetProportions(x_.data(), n_, out.data());
        recording_.Add("Sums", out);
        const double mean = v1::GetSampleMean(x_.data(), n_);
        recording_.Add("Sums", {mean, v1::GetSampleVariance(x_.data(), n_, mean)});
        v1::SecondSampleMoments moments;
        moments.count = n_;
        v1::GetSecondSampleMoments(&moments, x_.data());
        recording_.Add("Sums", Doubles(moments, 4));
        std::vector<double> powers(4);
        v1::GetCenteredOrderKPowerSums(x_.data(), n_, powers.data(), 4);
        recording_.Add("Sums", powers);
        double varianceX = 0;
        double varianceY = 0;
        const double covariance = v1::GetCovariance(x_.data(), y_.data(), n_, &varianceX, &varianceY);
        recording_.Add("Sums", {covariance, varianceX, varianceY});
    }

    void Moments() {
        double skewness = 0;
        double kurtosis = 0;
        v1::GetKelSkewnessAndKurtosis(x_.data(), n_, &skewness, &kurtosis);
        recording_.Add("Skewness", {skewness, kurtosis});
        int status = 0;
        recording_.Add("Correlations", {v1::GetPearsonCorrelation(x_.data(), y_.data(), n_),
                                        v1::GetSpearmanCorrelation(x_.data(), y_.data(), n_, &status)});
        std::vector<double> positive = x_;
        for (double& x : positive)
            x = std::abs(x) + 0.125;
        recording_.Add("GeometricMean", v2::GetGeometricMean(positive.data(), n_));
    }

    void OrderStatistics() {
        std::vector<double> out(n_);
        v1::GetRank(x_.data(), n_, out.data());
        recording_.Add("OrderStatistics", out);
        const std::vector<double> probabilities = {0.0, 0.01, 0.125, 0.3, 0.5, 0.7, 0.9375, 1.0};
        std::vector<double> quantiles(probabilities.size());
        for (int method = 1; method <= 9; ++method) {
            v1::GetSampleQuantiles(x_.data(), n_, method, quantiles.data(), probabilities.data(),
                                   static_cast<unsigned>(probabilities.size()));
            recording_.Add("OrderStatistics", quantiles);
        }
        int status = 0;
        std::vector<double> modes(5);
        unsigned modeCount = 0;
        unsigned frequency = 0;
        v1::GetMode(x_.data(), n_, modes.data(), 5, &modeCount, &frequency);
        modes.insert(modes.end(), {v1::GetKelTrimmedMean(x_.data(), n_, &status),
                                   v1::GetTrimmedMean(x_.data(), n_, 0.2, &status),
                                   static_cast<double>(modeCount), static_cast<double>(frequency)});
        recording_.Add("OrderStatistics", modes);
    }

    void Boxplot() {
        v1::KelBoxplotHelper box;
        v1::RunKelBoxplotHelper(&box, 0.9, x_.data(), n_);
        recording_.Add("Boxplot", Doubles(box, 11));
    }

private:
    Recording& recording_;
    std::vector<double> x_;
    std::vector<double> y_;
    unsigned n_;
};

constexpr unsigned kSizes[] = {1, 2, 3, 4, 5, 8, 11, 50, 51, 300, 1500};

// Sizes from 2^-20 to 2^20, so that every sum rounds.
std::vector<double> WideData(std::size_t count, ExactNumbers& numbers) {
    std::vector<double> data(count);
    for (double& x : data)
        x = numbers.Real(-20, 20);
    return data;
}

using Table = std::unique_ptr<dax::types::IRectangularArray<double>>;

Table RandomTable(int rows, int columns, ExactNumbers& numbers) {
    Table table(dax::types::MakeIRectangularArrayDouble(rows, columns));
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            table->Set(row, column, numbers.Real(-2, 4));
    return table;
}

void RecordJoins(Recording& recording, dax::clustering::DistanceMatrix& distances) {
    using namespace dax::clustering;
    const int n = distances.RowCount();
    for (int i = 0; i < n; ++i)
        for (int j = 0; j < i; ++j)
            recording.Add("Distances", distances(i, j));
    for (int linkage = Average; linkage <= Centroid; ++linkage) {
        const std::unique_ptr<DistanceMatrix> copy(MakeDistanceMatrix(n));
        for (int i = 0; i < n; ++i)
            for (int j = 0; j < i; ++j)
                copy->Set(i, j, distances(i, j));
        const std::unique_ptr<dax::types::IReadableVector<ClusterStep>> steps(
            RunClustering(static_cast<LinkageEnums>(linkage), 100, *copy));
        for (std::size_t step = 0; step < steps->size(); ++step) {
            const ClusterStep& join = (*steps)[step];
            recording.Add("Joins", {join.similarity, join.distance,
                                    static_cast<double>(join.cluster1 * n + join.cluster2)});
        }
        const std::unique_ptr<dax::types::IReadableVector<int>> members(FindMembersWithNumber(*steps, 4));
        for (std::size_t i = 0; i < members->size(); ++i)
            recording.Add("Joins", (*members)[i]);
    }
}

}  // namespace

void RecordDescriptive(Recording& recording, unsigned seed) {
    ExactNumbers numbers(seed);
    // Braces: their items are evaluated in order.
    for (const unsigned n : kSizes) {
        DataResults wide{recording, WideData(n, numbers), WideData(n, numbers)};
        wide.Sums();
        wide.Moments();
        DataResults tied{recording, numbers.Data(n, 3, 2), numbers.Data(n, -1, 4)};
        tied.Sums();
        tied.Moments();
        tied.OrderStatistics();
    }
}

void RecordBoxplots(Recording& recording, unsigned seed) {
    ExactNumbers numbers(seed);
    for (const unsigned n : kSizes)
        DataResults(recording, numbers.Data(n, 3, 2), {}).Boxplot();
}

void RecordClustering(Recording& recording, unsigned seed) {
    using namespace dax::clustering;
    constexpr int kRows = 24;
    constexpr int kColumns = 7;
    ExactNumbers numbers(seed);
    const std::unique_ptr<DistanceMatrix> distances(MakeDistanceMatrix(kRows));
    for (int measure = Euclidean; measure <= SquaredPearson; ++measure) {
        for (const bool standardize : {false, true}) {
            const Table table = RandomTable(kRows, kColumns, numbers);
            CreateForClusterObservations(*table, static_cast<DistanceEnums>(measure), standardize,
                                         *distances);
            RecordJoins(recording, *distances);
        }
    }
    CreateForClusterVariables(*RandomTable(kColumns, kRows, numbers), false, *distances);
    RecordJoins(recording, *distances);
}

}  // namespace zul::test
