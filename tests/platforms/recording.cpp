#include "platforms/recording.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iomanip>
#include <limits>
#include <ostream>
#include <sstream>
#include <stdexcept>

namespace zul::test {
namespace {

// The distance of two numbers in last places of the larger of the recorded one and the scale.
double LastPlaces(double computed, double recorded, double scale) {
    if (computed == recorded || (computed != computed && recorded != recorded)) return 0;
    const double size = std::max(std::abs(recorded), std::abs(scale));
    const double lastPlace = std::nextafter(size, std::numeric_limits<double>::infinity()) - size;
    const double distance = std::abs(computed - recorded) / lastPlace;
    return distance == distance ? distance : std::numeric_limits<double>::infinity();
}

// What C libraries that differ by a last place in exp, log and pow make of it. The figures in brackets are
// the largest differences of 2.3 million results between glibc 2.36 and mingw-w64 10.

// Sums, products, quotients and square roots alone, or whole numbers: not a bit.
constexpr const char* kExact =
    "BinomialInvCdf Correlations Discrete Distances GeometricInvCdf HypergeometricInvCdf IntegerUniform "
    "Joins NegBinomialInvCdf OrderStatistics PoissonInvCdf SampleBernoulli SampleBinomial SampleDiscrete "
    "SampleHypergeometric SampleIndices SampleIntegerUniform SampleNegBinomial SamplePoisson "
    "SampleTriangular SampleUniform Skewness States Statuses Sums Triangular Uniform ";

// Closed forms: a few functions in a row, of which an exponential multiplies what its exponent is wrong by
// with the exponent itself [45].
constexpr double kClosedForm = 128;

// Exponents that are sums of large terms, and searches, which end within a relative 1e-12 [2000].
constexpr double kSearched = 4096;
// A search ends by the probability, near 1 at quantiles that are farther apart [23450].
constexpr double kSearchedInT = 0x1p18;
constexpr const char* kOthers =
    "AndersonDarling Beta Binomial ChiSq Curve F Fit Gamma Hypergeometric Lambda NegBinomial "
    "OneProportion OneSampleT OneVariance PairedT Plot Poisson SampleT T ";

bool IsAmong(std::string_view group, const char* prefixes) {
    std::istringstream words(prefixes);
    for (std::string prefix; words >> prefix;)
        if (group.starts_with(prefix)) return true;
    return false;
}

}  // namespace

double AllowedDifference(std::string_view group) {
    if (IsAmong(group, kExact)) return 0;
    if (group.starts_with("TInvCdf")) return kSearchedInT;
    return IsAmong(group, kOthers) ? kSearched : kClosedForm;
}

double Recording::Value(const Quantity& quantity, double computed) {
    const double recorded = Next(quantity, computed);
    if (compares_) Count(quantity, computed, recorded);
    return recorded;
}

double Recording::Whole(const Quantity& quantity, double computed, const std::function<bool(double)>& isTie) {
    const double recorded = Next(quantity, computed);
    if (!compares_) return recorded;
    const bool tied = std::abs(computed - recorded) == 1 && isTie(std::min(computed, recorded));
    if (tied) ++groups_[quantity.group].ties;
    Count(quantity, tied ? recorded : computed, recorded);
    return recorded;
}

double Recording::Next(const Quantity& quantity, double computed) {
    if (!compares_) {
        table_.push_back({quantity.group, computed});
        return computed;
    }
    if (next_ == table_.size() || table_[next_].group != quantity.group)
        throw std::runtime_error("the table is of another version: it has no " + quantity.group + " at row " +
                                 std::to_string(next_ + 1));
    return table_[next_++].value;
}

void Recording::Count(const Quantity& quantity, double computed, double recorded) {
    Differences& group = groups_[quantity.group];
    ++group.values;
    const double places = LastPlaces(computed, recorded, quantity.scale);
    if (places > 0) ++group.unequal;
    if (!(places > group.largest)) return;
    group.largest = places;
    group.where = quantity.where;
}

bool Recording::Report(std::ostream& out) const {
    bool agrees = next_ == table_.size();
    if (!agrees) out << "the table has rows that were not computed\n";
    out << std::left << std::setw(28) << "group"
        << "values, unequal, ties at steps, largest difference (allowed)\n";
    for (const auto& [name, group] : groups_) {
        const double allowed = AllowedDifference(name);
        const bool isTooLarge = group.largest > allowed;
        out << std::setw(28) << name << std::setw(6) << group.values << " " << std::setw(5) << group.unequal
            << " " << std::setw(3) << group.ties << " " << std::setw(8) << group.largest << " (" << allowed
            << ") " << (isTooLarge ? "TOO LARGE " : "") << group.where << "\n";
        agrees = agrees && !isTooLarge;
    }
    return agrees;
}

void WriteTable(const std::string& file, const std::vector<Recorded>& table) {
    std::ofstream out(file);
    for (const auto& [group, value] : table)
        out << group << " " << std::hex << std::bit_cast<std::uint64_t>(value) << "\n";
    if (!out.flush()) throw std::runtime_error("cannot write " + file);
}

std::vector<Recorded> ReadTable(const std::string& file) {
    std::ifstream in(file);
    std::vector<Recorded> table;
    std::string group;
    for (std::uint64_t bits = 0; in >> group >> std::hex >> bits;)
        table.push_back({group, std::bit_cast<double>(bits)});
    if (table.empty() || !in.eof()) throw std::runtime_error("cannot read " + file);
    return table;
}

}  // namespace zul::test
