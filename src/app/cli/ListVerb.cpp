// SPDX-License-Identifier: MIT
#include "app/cli/DisplayChoice.h"
#include "app/cli/DisplayJson.h"
#include "app/cli/Verb.h"

#include <QString>
#include <algorithm>
#include <array>

namespace lumenvale {

namespace {

void printTable(std::ostream& out, const std::vector<DisplayInfo>& displays, const Words& words)
{
    using Row = std::array<std::string, 4>;
    std::vector<Row> rows;
    Row::size_type column = 0;
    std::array<qsizetype, 4> widths{};
    const auto width = [](const std::string& text) { return QString::fromStdString(text).size(); };
    for (const DisplayInfo& each : displays) {
        rows.push_back({each.name, percentageText(each), std::string(methodText(each.method, words)), each.id});
        for (column = 0; column < widths.size(); ++column)
            widths[column] = std::max(widths[column], width(rows.back()[column]));
    }
    for (const Row& row : rows) {
        for (column = 0; column + 1 < row.size(); ++column)
            out << row[column]
                << std::string(static_cast<std::size_t>(widths[column] - width(row[column]) + 2), ' ');
        out << row.back() << '\n';
    }
}

Task<int> runList(VerbContext& context, ArgumentValues values)
{
    auto inspection = context.hardware.inspect(connectedDisplays(context.screens));
    const std::vector<DisplayInfo> displays = co_await std::move(inspection);
    if (values.has(jsonFlag().name))
        context.out << displaysAsJson(displays) << '\n';
    else
        printTable(context.out, displays, context.words);
    for (const DisplayInfo& display : displays) {
        if (display.method == ControlMethod::unavailable)
            context.err << display.name << ": " << display.status << '\n';
    }
    if (displays.empty())
        context.err << "There is no display.\n";
    co_return exitDone;
}

} // namespace

Verb listVerb() { return {"list", "List the displays and their brightness", {jsonFlag()}, runList}; }

} // namespace lumenvale
