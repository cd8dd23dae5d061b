// SPDX-License-Identifier: MIT
#include "app/cli/CommandLine.h"

#include "base/Identity.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

namespace lumenvale {

namespace {

constexpr char levelForms[] = "LEVEL is 42%, 0.42, +5% or -5%.";

/// "-5%" is a level, not a row of one-letter options.
void protectNegativeLevels(std::vector<std::string>& arguments)
{
    const auto level = std::find_if(arguments.begin(), arguments.end(), [](const std::string& each) {
        return each.size() > 1 && each[0] == '-' && (each[1] == '.' || (each[1] >= '0' && each[1] <= '9'));
    });
    if (level != arguments.end() && std::find(arguments.begin(), level, "--") == level)
        arguments.insert(level, "--");
}

/// The parser and the places that its options fill.
struct Parser {
    Parser()
    {
        app.require_subcommand(0, 1);
        simulate = app.add_option("--simulate", folder,
                                  "Control the simulated monitors that the files in DIR "
                                  "describe; without DIR, a ready-made set of three")
                       ->type_name("[DIR]")
                       ->expected(0, 1);
        app.add_flag("--verbose", isVerbose, "Log to standard error, every transfer included");
        app.add_flag("--version", isVersion, "Print the version and exit");
        auto* showPanel = app.add_flag("--show-panel", isPanelWanted,
                                       "Show the brightness panel, of the running program if there is one");
        auto* openSettings =
            app.add_flag("--open-settings", areSettingsWanted, "Open the settings window likewise")
                ->excludes(showPanel);
        applyPreset = app.add_option("--apply-preset", presetToApply, "Have the desktop program apply a preset")
                          ->type_name("PRESET")
                          ->excludes(showPanel)
                          ->excludes(openSettings);

        list = app.add_subcommand("list", "List the displays and their brightness");
        list->add_flag("--json", asJson, "Print every field, as JSON");
        get = app.add_subcommand("get", "Print a display's brightness");
        addDisplay(*get);
        set = app.add_subcommand("set", "Set a display's brightness and verify it");
        addDisplay(*set);
        set->add_option("LEVEL", level, "42%, 0.42, +5% or -5%")->required()->type_name("");
        presets = app.add_subcommand("presets", "List the presets");
        presets->add_flag("--json", asJson, "Print every field, as JSON");
        apply = app.add_subcommand("apply", "Set the displays to a preset's levels");
        apply->add_option("PRESET", preset, "An identifier, a name, or an unambiguous start of one")
            ->required()
            ->type_name("");
        doctor = app.add_subcommand("doctor", "Say what was found, what is missing, and how to get it");
        app.footer("Exit status: 0 done, 1 refused by the hardware, 2 wrong use, 3 no such display or preset.");
    }

    void addDisplay(CLI::App& verb)
    {
        verb.add_option("DISPLAY", display, "An identifier, a name, an unambiguous start of one, or all")
            ->required()
            ->type_name("");
    }

    CLI::App app{
        "Controls the brightness of every connected display. Without a command it is the desktop program.",
        "lumenvale"};
    CLI::Option* simulate = nullptr;
    CLI::Option* applyPreset = nullptr;
    CLI::App* list = nullptr;
    CLI::App* get = nullptr;
    CLI::App* set = nullptr;
    CLI::App* presets = nullptr;
    CLI::App* apply = nullptr;
    CLI::App* doctor = nullptr;
    std::string folder;
    bool isVerbose = false;
    bool isVersion = false;
    bool isPanelWanted = false;
    bool areSettingsWanted = false;
    bool asJson = false;
    std::string display;
    std::string level;
    std::string preset;
    std::string presetToApply;
};

std::optional<DesktopRequest> desktopRequest(const Parser& parser)
{
    using Action = DesktopRequest::Action;
    if (parser.isPanelWanted)
        return DesktopRequest{Action::showPanel, "", ""};
    if (parser.areSettingsWanted)
        return DesktopRequest{Action::openSettings, "", ""};
    if (*parser.applyPreset)
        return DesktopRequest{Action::applyPreset, parser.presetToApply, ""};
    return std::nullopt;
}

tl::expected<Verb, std::string> chosenVerb(const Parser& parser)
{
    if (parser.isVersion)
        return PrintVerb{versionText() + '\n'};
    if (*parser.list)
        return ListVerb{parser.asJson};
    if (*parser.get)
        return GetVerb{parser.display};
    if (*parser.set) {
        const auto level = parseLevel(parser.level);
        if (!level)
            return tl::unexpected('"' + parser.level + "\" is not a brightness. " + levelForms);
        return SetVerb{parser.display, *level};
    }
    if (*parser.presets)
        return PresetsVerb{parser.asJson};
    if (*parser.apply)
        return ApplyVerb{parser.preset};
    if (*parser.doctor)
        return DoctorVerb{};
    return DesktopVerb{desktopRequest(parser)};
}

} // namespace

tl::expected<CommandLine, std::string> parseCommandLine(std::vector<std::string> arguments)
{
    Parser parser;
    protectNegativeLevels(arguments);
    std::reverse(arguments.begin(), arguments.end()); // the parser takes them from the back
    try {
        parser.app.parse(std::move(arguments));
    } catch (const CLI::CallForHelp& call) {
        std::ostringstream help, unused;
        parser.app.exit(call, help, unused);
        return CommandLine{std::nullopt, false, PrintVerb{help.str()}};
    } catch (const CLI::ParseError& mistake) {
        return tl::unexpected(std::string(mistake.what()) + "\nRun lumenvale --help for more.");
    }
    const auto verb = chosenVerb(parser);
    if (!verb)
        return tl::unexpected(verb.error());
    CommandLine line;
    if (*parser.simulate)
        line.simulationFolder = parser.folder;
    line.isVerbose = parser.isVerbose;
    line.verb = *verb;
    return line;
}

std::string versionText()
{
    return std::string(applicationName) + " " + LUMENVALE_VERSION + " (" + LUMENVALE_BUILD_NUMBER + ")";
}

} // namespace lumenvale
