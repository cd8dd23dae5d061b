// SPDX-License-Identifier: MIT
// The only source that includes the parser's library, which takes the compiler seconds.
#include "app/cli/CommandLine.h"

#include "app/cli/VersionText.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <sstream>

namespace lumenvale {

namespace {

// The program's own options.
constexpr char simulate[] = "--simulate";
constexpr char verbose[] = "--verbose";
constexpr char version[] = "--version";
constexpr char showPanel[] = "--show-panel";
constexpr char openSettings[] = "--open-settings";
constexpr char autostart[] = "--autostart";
constexpr char applyPreset[] = "--apply-preset";

/// "-5%" is a level, not a row of one-letter options.
void protectNegativeLevels(std::vector<std::string>& arguments)
{
    const auto level = std::find_if(arguments.begin(), arguments.end(), [](const std::string& each) {
        return each.size() > 1 && each[0] == '-' && (each[1] == '.' || (each[1] >= '0' && each[1] <= '9'));
    });
    if (level != arguments.end() && std::find(arguments.begin(), level, "--") == level)
        arguments.insert(level, "--");
}

constexpr int unlimited = 1 << 20; // how often a repeatable argument may be given

CLI::Option* add(CLI::App& app, const Argument& argument)
{
    if (argument.kind == ValueKind::flag)
        return app.add_flag(argument.name, argument.help);
    CLI::Option* const option = app.add_option(argument.name, argument.help);
    // Of a positional argument the name says all.
    const std::string& valueName = argument.valueName;
    option->type_name(argument.isOption() && argument.isOptional ? '[' + valueName + ']' : valueName);
    if (!argument.isOption() && !argument.isOptional)
        option->required();
    if (argument.isRepeatable)
        option->expected(argument.isOptional ? 0 : 1, unlimited);
    else if (argument.isOption() && argument.isOptional)
        option->expected(0, 1);
    return option;
}

/// A command of the library and the descriptions that it was made from.
class ParsedArguments {
public:
    ParsedArguments(CLI::App& app, const std::vector<Argument>& arguments) : described(arguments)
    {
        for (const Argument& each : arguments) {
            CLI::Option* const option = add(app, each);
            for (const std::string& name : each.excludes)
                option->excludes(app.get_option(name));
            options.push_back(option);
        }
    }

    /// What was given, once the library has parsed it. The error names a level that is none.
    tl::expected<ArgumentValues, std::string> values() const
    {
        ArgumentValues result;
        for (std::size_t i = 0; i < options.size(); ++i) {
            if (options[i]->count() == 0)
                continue;
            const bool isFlag = described[i].kind == ValueKind::flag;
            const auto texts = isFlag ? std::vector<std::string>() : options[i]->results();
            for (const std::string& text : texts) {
                if (described[i].kind == ValueKind::level && !parseLevel(text))
                    return tl::unexpected(notALevel(text));
            }
            result.given[described[i].name] = texts;
        }
        return result;
    }

private:
    const std::vector<Argument>& described;
    std::vector<CLI::Option*> options;
};

std::optional<DesktopRequest> desktopRequest(const ArgumentValues& options)
{
    using Action = DesktopRequest::Action;
    if (options.has(showPanel))
        return DesktopRequest{Action::showPanel, "", ""};
    if (options.has(openSettings))
        return DesktopRequest{Action::openSettings, "", ""};
    if (options.has(autostart))
        return DesktopRequest{Action::startQuietly, "", ""};
    if (options.has(applyPreset))
        return DesktopRequest{Action::applyPreset, options.text(applyPreset), ""};
    return std::nullopt;
}

CommandLine withOptions(const ArgumentValues& options)
{
    CommandLine line;
    if (options.has(simulate))
        line.simulationFolder = options.text(simulate);
    line.isVerbose = options.has(verbose);
    if (options.has(version))
        line.answer = versionText() + '\n';
    line.request = desktopRequest(options);
    return line;
}

} // namespace

const std::vector<Argument>& programOptions()
{
    static const std::vector<Argument> options = {
        {.name = simulate,
         .kind = ValueKind::folder,
         .help = "Control the simulated monitors that the files in DIR describe; without DIR, a ready-made set of "
                 "three",
         .valueName = "DIR",
         .isOptional = true},
        {.name = verbose, .kind = ValueKind::flag, .help = "Log to standard error, every transfer included"},
        {.name = version, .kind = ValueKind::flag, .help = "Print the version and exit"},
        {.name = showPanel,
         .kind = ValueKind::flag,
         .help = "Show the brightness panel, of the running program if there is one"},
        {.name = openSettings,
         .kind = ValueKind::flag,
         .help = "Open the settings window likewise",
         .excludes = {showPanel}},
        {.name = applyPreset,
         .kind = ValueKind::preset,
         .help = "Have the desktop program apply a preset",
         .valueName = "PRESET",
         .excludes = {showPanel, openSettings}},
        {.name = autostart,
         .kind = ValueKind::flag,
         .help = "Start as at login, which shows nothing but the icon",
         .excludes = {showPanel, openSettings, applyPreset}},
    };
    return options;
}

tl::expected<CommandLine, std::string> parseCommandLine(std::vector<std::string> arguments,
                                                        const std::string& program)
{
    CLI::App app{
        "Controls the brightness of every connected display. Without a command it is the desktop program.",
        "lumenvale"};
    app.require_subcommand(0, 1);
    const ParsedArguments options(app, programOptions());
    std::vector<std::pair<CLI::App*, ParsedArguments>> commands;
    for (const Verb& each : verbs()) {
        CLI::App* const command = app.add_subcommand(each.name, each.summary);
        commands.emplace_back(command, ParsedArguments(*command, each.arguments));
    }
    // Commands that are added later would print it too.
    app.footer(
        "Exit status: 0 done, 1 refused by the hardware or a problem found, 2 wrong use or a mistake in the "
        "files it read, 3 no such display or preset.");

    protectNegativeLevels(arguments);
    std::reverse(arguments.begin(), arguments.end()); // the library takes them from the back
    try {
        app.parse(std::move(arguments));
    } catch (const CLI::CallForHelp& call) {
        std::ostringstream help, unused;
        app.exit(call, help, unused);
        CommandLine line;
        line.answer = help.str();
        return line;
    } catch (const CLI::ParseError& mistake) {
        return tl::unexpected(std::string(mistake.what()) + "\nRun " + program + " --help for more.");
    }

    CommandLine line = withOptions(*options.values());
    for (std::size_t i = 0; i < commands.size(); ++i) {
        if (!*commands[i].first)
            continue;
        auto values = commands[i].second.values();
        if (!values)
            return tl::unexpected(values.error());
        line.verb = &verbs()[i];
        line.values = std::move(*values);
    }
    return line;
}

} // namespace lumenvale
