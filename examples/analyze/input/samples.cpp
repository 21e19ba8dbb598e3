#include "input/samples.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "output/text.h"

namespace analyze {
namespace {

std::vector<std::string> GroupsIn(const Table& table, const std::string& by) {
    std::set<std::string> distinct;
    for (const CsvCell& key : Rows(table, {by}).Cells(0))
        distinct.insert(key.text);
    std::vector<std::string> groups(distinct.begin(), distinct.end());
    std::ranges::sort(groups, Precedes);
    return groups;
}

std::vector<std::string> ChooseGroups(const Table& table, const TwoSampleColumns& columns) {
    std::vector<std::string> there = GroupsIn(table, *columns.by);
    const std::string place = table.Place(*columns.by);
    if (columns.groups.empty()) {
        if (there.size() != 2)
            throw InputError(place + " has " + std::to_string(there.size()) +
                             (there.size() == 1 ? " group, " : " groups, ") + Listed(there) +
                             "; a test of two groups needs two, choose them with --groups");
        return there;
    }
    if (columns.groups.size() != 2 || columns.groups[0] == columns.groups[1])
        throw InputError("--groups: give two different groups with a comma between them");
    for (const std::string& group : columns.groups)
        if (std::ranges::find(there, group) == there.end())
            throw InputError(place + " has no group " + Quoted(group) + "; the groups are " + Listed(there));
    return columns.groups;
}

// The rows of each group.
Samples Split(const Table& table, const Rows& rows, const std::vector<std::string>& groups) {
    std::map<std::string, CsvRow> cells;
    const CsvRow values = rows.Cells(0);
    const CsvRow keys = rows.Cells(1);
    for (std::size_t i = 0; i < values.size(); ++i)
        cells[keys[i].text].push_back(values[i]);
    Samples samples;
    samples.origin = OriginOf(table, rows.Missing());
    samples.description = Quoted(rows.Names()[0]) + " by " + Quoted(rows.Names()[1]);
    for (const std::string& group : groups)
        if (cells.contains(group))
            samples.samples.push_back({group, rows.Names()[0], std::move(cells[group])});
        else
            samples.empty.push_back(group);
    if (!samples.empty.empty()) samples.description += ", no values in " + Listed(samples.empty);
    return samples;
}

}  // namespace

Samples ReadTwoSamples(const Table& table, const TwoSampleColumns& columns) {
    if (columns.with) {
        const Rows first(table, {columns.column});
        const Rows second(table, {*columns.with});
        const std::string& name1 = first.Names().front();
        const std::string& name2 = second.Names().front();
        return {{{name1, name1, first.Cells(0)}, {name2, name2, second.Cells(0)}},
                {},
                OriginOf(table, first.Missing() + second.Missing()),
                Quoted(name1) + " and " + Quoted(name2)};
    }
    if (!columns.by)
        throw InputError("give the second column with --with, or the column of the groups with --by");
    const std::vector<std::string> groups = ChooseGroups(table, columns);
    Samples samples = Split(table, Rows(table, {columns.column, *columns.by}, groups), groups);
    if (samples.samples.size() != 2)
        throw InputError(table.Place(columns.column) + " has no values in one of the groups " +
                         Listed(groups));
    return samples;
}

Samples ReadGroups(const Table& table, const std::string& column, const std::string& by) {
    Samples samples = Split(table, Rows(table, {column, by}), GroupsIn(table, by));
    if (samples.samples.size() < 2) throw InputError(table.Place(by) + " has a single group");
    return samples;
}

bool Precedes(const std::string& a, const std::string& b) {
    const auto x = ParseNumber(a);
    const auto y = ParseNumber(b);
    return x && y && *x != *y ? *x < *y : a < b;
}

}  // namespace analyze
