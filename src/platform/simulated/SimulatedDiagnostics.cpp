// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedDiagnostics.h"

namespace lumenvale {

namespace {

using Kind = Finding::Kind;

/// Collects what is said about one display.
class Findings {
public:
    Findings(std::vector<Finding>& list, const DisplayInfo& about, const SimulatedDisplay& display)
        : target(list), displayID(about.id), fileName(display.fileName)
    {
    }

    void say(Kind kind, const std::string& text) { target.push_back({kind, displayID, text, ""}); }

    /// A fault that the file asks for by `key`; `cure` is the value that ends it.
    void fault(const std::string& text, const std::string& key, const std::string& cure)
    {
        target.push_back(
            {Kind::problem, displayID, text, "Set \"" + key + "\" to " + cure + " in " + fileName + "."});
    }

    void missing(const std::string& text)
    {
        target.push_back(
            {Kind::problem, displayID, text, R"(Add a "native" or a "ddc" object to )" + fileName + "."});
    }

private:
    std::vector<Finding>& target;
    std::string displayID;
    std::string fileName;
};

void examineNative(Findings& findings, const NativeControl& native)
{
    findings.say(Kind::good, "The system's own brightness functions drive this display.");
    if (native.readFails)
        findings.fault("Reading its brightness fails.", "native.readFails", "false");
    if (native.writeFails)
        findings.fault("Setting its brightness fails.", "native.writeFails", "false");
    if (native.overridesTo)
        findings.fault("Whatever is set, something else overrides it.", "native.overridesTo", "null");
}

void examineDdc(Findings& findings, const DdcControl& ddc)
{
    findings.say(Kind::good,
                 "Its I2C channel was found. The brightness scale ends at " + std::to_string(ddc.maximum) + '.');
    if (ddc.silent)
        findings.fault("The monitor does not answer, as if DDC/CI were switched off in its menu.", "ddc.silent",
                       "false");
    if (ddc.ignoresWrites)
        findings.fault("The monitor acknowledges new values and keeps the old one.", "ddc.ignoresWrites", "false");
    if (ddc.overridesTo)
        findings.fault("Whatever is set, the monitor goes to " + std::to_string(*ddc.overridesTo) + '.',
                       "ddc.overridesTo", "null");
    if (ddc.failNextTransfers != 0)
        findings.fault("The next " + std::to_string(ddc.failNextTransfers) + " transfers will fail.",
                       "ddc.failNextTransfers", "0");
    if (ddc.corruptEvery != 0)
        findings.fault("One in " + std::to_string(ddc.corruptEvery) + " replies has a wrong bit.",
                       "ddc.corruptEvery", "0");
    if (ddc.delayMs != 0)
        findings.fault("Each transfer takes " + std::to_string(ddc.delayMs) + " milliseconds.", "ddc.delayMs",
                       "0");
}

} // namespace

std::vector<Finding> SimulatedDiagnostics::examine(const std::vector<DisplayInfo>& displays)
{
    const FolderContents contents = folder.read();
    std::vector<Finding> list{
        {Kind::note, "", "The displays are simulated by the files in " + folder.path() + '.', ""}};
    for (const std::string& problem : contents.problems)
        list.push_back({Kind::problem, "", problem, "Correct the file. The other displays work meanwhile."});
    for (const DisplayInfo& info : displays) {
        const auto display = folder.find(info.displayID);
        if (!display) {
            list.push_back({Kind::problem, info.id, "Its file has just gone.", ""});
            continue;
        }
        Findings findings(list, info, *display);
        if (!display->monitor.online)
            findings.fault("It is still among the screens, but no longer attached.", "online", "true");
        if (display->monitor.native)
            examineNative(findings, *display->monitor.native);
        if (display->monitor.ddc)
            examineDdc(findings, *display->monitor.ddc);
        if (!display->monitor.native && !display->monitor.ddc)
            findings.missing("It has neither brightness functions of the system nor an I2C channel.");
    }
    return list;
}

} // namespace lumenvale
