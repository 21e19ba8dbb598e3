// What the contingency tables and the ticks give, for random counts and ranges.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "contingency/tables.h"
#include "hypothesis/record_fields.h"
#include "platforms/exact_numbers.h"
#include "platforms/recording.h"
#include "zul/ticks.h"

namespace zul::test {
namespace {

constexpr int kCases = 150;

class RandomTables {
public:
    RandomTables(Recording& recording, std::uint64_t seed) : recording_(recording), numbers_(seed) {}

    void Next() {
        ++tables_;
        const unsigned rows = tables_ % 3 == 0 ? 2 : 2 + Below(6);
        const unsigned columns = tables_ % 3 == 0 ? 2 : 2 + Below(6);
        int status = -1;
        const TablePtr made = MakeTable(Counts(std::size_t{rows} * columns), rows, columns, &status);
        const IContingencyTable& table = *made;
        Fill<TableChiSquare>("ChiSquare", 8, [&](auto* r) { return table.GetChiSquare(r); });
        Fill<TableAssociation>("Association", 27, [&](auto* r) { return table.GetAssociation(r); });
        Fill<TableFisher>("Fisher", 3, [&](auto* r) { return table.GetFisher(r); });
        Fill<TableTest>("McNemar", 6, [&](auto* r) { return table.GetMcNemar(r); });
        Fill<TableTest>("LinearByLinear", 3, [&](auto* r) { return table.GetLinearByLinear(r); });
        Fill<TableTrend>("Trend", 4, [&](auto* r) { return table.GetTrend(r); });
        Fill<TableRisk>("Risk", 6, [&](auto* r) { return table.GetRisk(r, 0.9375); });
        Record("Residuals", 0, {table.AdjustedResidual(1, 1), table.Contribution(1, 1)});
    }

    void Strata() {
        MantelHaenszel r;
        r.strata = 1 + Below(5);
        const std::vector<double> counts = Counts(std::size_t{4} * r.strata);
        const bool continuity = Below(2) == 0;
        const auto type = static_cast<IntervalType>(static_cast<int>(Below(3)) - 1);
        const int status = RunMantelHaenszel(&r, counts.data(), continuity, 0.90625, type);
        Record("MantelHaenszel", status, Doubles(r, 6));
    }

    void Ticks() {
        deprecated::TickCalculationResult r;
        const double low = numbers_.Real(-40, 40);
        const double high = numbers_.Real(-40, 40);
        const int status = deprecated::ComputeTicks(&r, low, high, 2 + Below(20));
        Record("Ticks", status, Doubles(r, 5));
        Record("Ticks", 0, {TickValue(&r, 1), TickValue(&r, r.count - 1), static_cast<double>(r.decimals)});
    }

private:
    unsigned Below(int n) { return static_cast<unsigned>(numbers_.Below(n)); }
    // Every fourth table has fractions too.
    std::vector<double> Counts(std::size_t n) {
        const double unit = tables_ % 4 == 3 ? 0.125 : 1;
        std::vector<double> counts(n);
        for (double& count : counts)
            count = Below(40) * unit;
        counts.back() += 1;
        return counts;
    }
    template <typename Result, typename Call>
    void Fill(const std::string& group, std::size_t fields, Call call) {
        Result record;
        const int status = call(&record);
        Record("Table" + group, status, Doubles(record, fields));
    }
    void Record(const std::string& group, int status, const std::vector<double>& values) {
        recording_.Add("Statuses", status);
        recording_.Add(group, values);
    }
    Recording& recording_;
    ExactNumbers numbers_;
    int tables_ = 0;
};

}  // namespace

void RecordTables(Recording& recording, unsigned seed) {
    RandomTables tables(recording, seed);
    for (int i = 0; i < kCases; ++i) {
        tables.Next();
        tables.Strata();
        tables.Ticks();
    }
}

}  // namespace zul::test
