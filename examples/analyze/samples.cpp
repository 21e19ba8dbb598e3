#include "samples.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "text.h"

namespace analyze {
namespace {

// More groups than these are not listed in a message.
constexpr std::size_t kListedGroups = 8;

std::string ColumnOf(const TestOptions& options, const std::string& name) {
    return options.file + ": column " + Quoted(name);
}

Sample ReadFilled(const CsvTable& table, const TestOptions& options, const std::string& name) {
    Sample sample{name, name, table.ReadCells(name)};
    std::erase_if(sample.cells, [](const CsvCell& cell) { return cell.text.empty(); });
    if (sample.cells.empty()) throw InputError(ColumnOf(options, name) + " is empty");
    return sample;
}

std::string Listed(const std::vector<std::string>& groups) {
    std::string list;
    for (std::size_t i = 0; i < groups.size() && i < kListedGroups; ++i)
        list += (i == 0 ? "" : ", ") + Quoted(groups[i]);
    return list + (groups.size() > kListedGroups ? ", ..." : "");
}

// Numbers by their value, other texts by their characters.
bool Precedes(const std::string& a, const std::string& b) {
    const auto x = ParseNumber(a);
    const auto y = ParseNumber(b);
    return x && y && *x != *y ? *x < *y : a < b;
}

std::vector<std::string> ChooseGroups(const CsvRow& keys, const TestOptions& options) {
    std::set<std::string> distinct;
    for (const CsvCell& key : keys)
        distinct.insert(key.text);
    std::vector<std::string> there(distinct.begin(), distinct.end());
    const std::string column = ColumnOf(options, *options.by);
    if (options.groups.empty()) {
        if (there.size() != 2)
            throw InputError(column + " has " + std::to_string(there.size()) +
                             (there.size() == 1 ? " group, " : " groups, ") + Listed(there) +
                             "; a test of two groups needs two, choose them with --groups");
        if (Precedes(there[1], there[0])) std::swap(there[0], there[1]);
        return there;
    }
    if (options.groups.size() != 2 || options.groups[0] == options.groups[1])
        throw InputError("--groups: give two different groups with a comma between them");
    for (const std::string& group : options.groups)
        if (std::ranges::find(there, group) == there.end())
            throw InputError(column + " has no group " + Quoted(group) + "; the groups are " + Listed(there));
    return options.groups;
}

}  // namespace

std::array<Sample, 2> ReadTwoSamples(const CsvTable& table, const TestOptions& options) {
    if (options.with)
        return {ReadFilled(table, options, options.column), ReadFilled(table, options, *options.with)};
    if (!options.by)
        throw InputError("give the second column with --with, or the column of the groups with --by");
    const CsvRow cells = table.ReadCells(options.column);
    const CsvRow keys = table.ReadCells(*options.by);
    const std::vector<std::string> groups = ChooseGroups(keys, options);
    std::array<Sample, 2> samples = {Sample{groups[0], options.column, {}},
                                     Sample{groups[1], options.column, {}}};
    for (std::size_t i = 0; i < cells.size(); ++i)
        for (Sample& sample : samples)
            if (keys[i].text == sample.label) sample.cells.push_back(cells[i]);
    return samples;
}

std::vector<Sample> ReadGroups(const CsvTable& table, const std::string& column, const std::string& by) {
    const CsvRow cells = table.ReadCells(column);
    const CsvRow keys = table.ReadCells(by);
    std::map<std::string, CsvRow> groups;
    for (std::size_t i = 0; i < cells.size(); ++i)
        if (!cells[i].text.empty()) groups[keys[i].text].push_back(cells[i]);
    std::vector<Sample> samples;
    samples.reserve(groups.size());
    for (auto& [label, row] : groups)
        samples.push_back({label, column, std::move(row)});
    std::ranges::sort(samples, Precedes, &Sample::label);
    return samples;
}

}  // namespace analyze
