// SPDX-License-Identifier: MIT
#include "app/cli/DisplayChoice.h"
#include "app/cli/Verb.h"
#include "app/cli/VersionText.h"

#include <algorithm>
#include <sstream>

namespace lumenvale {

namespace {

std::string_view label(Finding::Kind kind)
{
    switch (kind) {
    case Finding::Kind::good:
        return "ok: ";
    case Finding::Kind::note:
        return "note: ";
    case Finding::Kind::problem:
        return "problem: ";
    }
    return "";
}

void printFinding(std::ostream& out, const Finding& finding, const std::string& indent)
{
    out << indent << label(finding.kind) << finding.text << '\n';
    if (finding.isScript)
        out << indent << "  -> in a shell:\n";
    std::istringstream remedy(finding.remedy);
    for (std::string line; std::getline(remedy, line);)
        out << (finding.isScript ? "" : indent + "  -> ") << line << '\n';
}

std::string_view attempts(const DisplayInfo& display)
{
    switch (display.method) {
    case ControlMethod::apple:
        return "tried: the system's own brightness functions, which answered.";
    case ControlMethod::ddc:
        return "tried: the system's own brightness functions, without a reading; then DDC/CI, which answered.";
    case ControlMethod::unavailable:
        if (display.isBuiltIn)
            return "tried: the system's own brightness functions, without a reading; DDC/CI is for external "
                   "monitors.";
        return "tried: the system's own brightness functions, without a reading; then DDC/CI, without one either.";
    }
    return "";
}

void printDisplay(std::ostream& out, const DisplayInfo& display, const std::vector<Finding>& findings,
                  const Words& words)
{
    out << '\n' << display.name << " (" << display.id << ")\n";
    out << "  " << methodText(display.method, words);
    if (display.brightness)
        out << ", " << percentageText(display);
    out << "\n  " << attempts(display) << '\n';
    const bool isSaidBelow = std::ranges::any_of(findings, [&](const Finding& each) {
        return each.displayID == display.id && display.status.starts_with(each.text);
    });
    if (!isSaidBelow)
        out << "  " << display.status << '\n';
    for (const Finding& finding : findings) {
        if (finding.displayID == display.id)
            printFinding(out, finding, "  ");
    }
}

Task<int> runDoctor(VerbContext& context, ArgumentValues)
{
    auto inspection = context.hardware.inspect(connectedDisplays(context.screens));
    const std::vector<DisplayInfo> displays = co_await std::move(inspection);
    const std::vector<Finding> findings = context.diagnostics.examine(displays);
    context.out << versionText() << '\n';
    for (const Finding& finding : findings) {
        if (finding.displayID.empty())
            printFinding(context.out, finding, "");
    }
    if (displays.empty())
        context.out << "\nThere is no display.\n";
    for (const DisplayInfo& display : displays)
        printDisplay(context.out, display, findings, context.words);
    const bool isAllWell =
        std::ranges::none_of(findings, [](const Finding& each) { return each.kind == Finding::Kind::problem; });
    co_return isAllWell ? exitDone : exitRefused;
}

} // namespace

Verb doctorVerb() { return {"doctor", "Say what was found, what is missing, and how to get it", {}, runDoctor}; }

} // namespace lumenvale
