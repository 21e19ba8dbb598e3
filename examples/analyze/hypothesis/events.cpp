#include "hypothesis/events.h"

#include <algorithm>
#include <set>

#include "input/counts.h"
#include "input/samples.h"
#include "output/text.h"

namespace analyze {

EventCount CountEvents(const Table& table, const CsvRow& cells, const std::string& event) {
    const auto wanted = table.Number(event);
    const auto isEvent = [&](const CsvCell& cell) {
        const auto value = table.Number(cell.text);
        return value && wanted ? *value == *wanted : cell.text == event;
    };
    return {static_cast<unsigned>(std::ranges::count_if(cells, isEvent)), CountOf(cells)};
}

void CheckEvent(const Table& table, const CsvRow& cells, const std::string& column,
                const std::string& event) {
    if (CountEvents(table, cells, event).events > 0) return;
    std::set<std::string> distinct;
    for (const CsvCell& cell : cells)
        distinct.insert(cell.text);
    std::vector<std::string> values(distinct.begin(), distinct.end());
    std::ranges::sort(values, Precedes);
    throw InputError(table.Place(column) + ": no cell says " + Quoted(event) + "; the values are " +
                     Listed(values) + ", choose the event with --event");
}

}  // namespace analyze
