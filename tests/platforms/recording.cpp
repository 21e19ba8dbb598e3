#include "platforms/recording.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <limits>
#include <ostream>
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

}  // namespace

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
    out << "group values unequal ties largest allowed\n";
    for (const auto& [name, group] : groups_) {
        const double allowed = AllowedDifference(name);
        out << name << " " << group.values << " " << group.unequal << " " << group.ties << " "
            << group.largest << " " << allowed;
        if (group.largest > 0) out << " at " << group.where;
        out << (group.largest <= allowed ? "\n" : " TOO LARGE\n");
        agrees = agrees && group.largest <= allowed;
    }
    return agrees;
}

double AllowedDifference(std::string_view) {
    return 0;
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
