// The results of the library as a table, which one platform writes and another compares its own results
// with.
#pragma once

#include <cstddef>
#include <functional>
#include <iosfwd>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zul::test {

// A value of the table: the bits of the double, and the group whose differences are judged together.
struct Recorded {
    std::string group;
    double value;
};

// Where a result comes from.
struct Quantity {
    std::string group;
    std::string where;
    // What the quantity is made of may be larger than itself, as where a quantile is near 0: differences
    // are counted in last places of a number of this size then.
    double scale = 0;
};

class Recording {
public:
    // Writes.
    Recording() = default;
    // Compares.
    explicit Recording(std::vector<Recorded> table) : table_(std::move(table)), compares_(true) {}

    // Records the result, or compares it. Returns the value of the table, so that what is computed from it
    // has the same arguments on both platforms.
    double Value(const Quantity& quantity, double computed);
    // The same for a whole number that may be off by one where `isTie` says so of the smaller of both.
    double Whole(const Quantity& quantity, double computed, const std::function<bool(double)>& isTie);

    const std::vector<Recorded>& Table() const { return table_; }
    // Prints the differences of each group; whether none is above what its group allows.
    bool Report(std::ostream& out) const;

private:
    struct Differences {
        std::size_t values = 0;
        std::size_t unequal = 0;
        std::size_t ties = 0;
        double largest = 0;  // in last places
        std::string where;
    };
    double Next(const Quantity& quantity, double computed);
    void Count(const Quantity& quantity, double computed, double recorded);
    std::vector<Recorded> table_;
    bool compares_ = false;
    std::size_t next_ = 0;
    std::map<std::string, Differences> groups_;
};

// The largest difference, in last places, that a group allows.
double AllowedDifference(std::string_view group);

void WriteTable(const std::string& file, const std::vector<Recorded>& table);
std::vector<Recorded> ReadTable(const std::string& file);

// All of them, in the order of the table. The seed is that of the data.
void RecordDistributions(Recording& recording, unsigned seed);
void RecordTests(Recording& recording, unsigned seed);
void RecordRankTests(Recording& recording, unsigned seed);
void RecordDescriptive(Recording& recording, unsigned seed);
void RecordBoxplots(Recording& recording, unsigned seed);
void RecordSamplers(Recording& recording);
void RecordClustering(Recording& recording, unsigned seed);

}  // namespace zul::test
