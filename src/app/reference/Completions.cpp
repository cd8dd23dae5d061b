// SPDX-License-Identifier: MIT
#include "app/reference/Completions.h"

#include "app/cli/CommandLine.h"

#include <map>

namespace lumenvale {

namespace {

std::string filled(std::string text, const std::map<std::string, std::string>& parts)
{
    for (const auto& [name, part] : parts) {
        const std::string mark = "@" + name + "@";
        for (std::size_t at = 0; (at = text.find(mark, at)) != std::string::npos; at += part.size())
            text.replace(at, mark.size(), part);
    }
    return text;
}

/// `text` in single quotes, as every shell takes it.
std::string quoted(const std::string& text)
{
    std::string result = "'";
    for (const char character : text)
        result += character == '\'' ? "'\\''" : std::string(1, character);
    return result + "'";
}

std::string verbNames()
{
    std::string names;
    for (const Verb& each : verbs())
        names += (names.empty() ? "" : " ") + each.name;
    return names;
}

std::string optionNames(const std::vector<Argument>& arguments)
{
    std::string names;
    for (const Argument& each : arguments) {
        if (each.isOption())
            names += (names.empty() ? "" : " ") + each.name;
    }
    return names;
}

/// The name of what offers values of this kind in the templates.
std::string source(ValueKind kind)
{
    switch (kind) {
    case ValueKind::display:
        return "displays";
    case ValueKind::preset:
        return "presets";
    case ValueKind::folder:
        return "folders";
    case ValueKind::level:
        return "levels";
    case ValueKind::flag:
        break;
    }
    return "nothing";
}

std::vector<Argument> positionals(const Verb& verb)
{
    std::vector<Argument> arguments;
    for (const Argument& each : verb.arguments) {
        if (!each.isOption())
            arguments.push_back(each);
    }
    return arguments;
}

/// Options in the form of zsh's _arguments, a line each.
std::string zshOptions(const std::vector<Argument>& arguments)
{
    std::string lines;
    for (const Argument& each : arguments) {
        if (!each.isOption())
            continue;
        std::string spec = each.name + "[" + each.help + "]";
        if (each.kind != ValueKind::flag)
            spec += (each.isOptional ? "::" : ":") + each.valueName + ":_lumenvale_" + source(each.kind);
        lines += "    " + quoted(spec) + " \\\n";
    }
    return lines;
}

} // namespace

std::string bashCompletion(const std::string& scriptTemplate)
{
    std::string verbOptions, values;
    for (const Argument& each : programOptions()) {
        if (each.kind != ValueKind::flag)
            values += "    " + each.name + ":1) source=" + source(each.kind) + " ;;\n";
    }
    for (const Verb& verb : verbs()) {
        verbOptions += "    " + verb.name + ") options=" + quoted(optionNames(verb.arguments)) + " ;;\n";
        int position = 0;
        for (const Argument& each : positionals(verb))
            values +=
                "    " + verb.name + ":" + std::to_string(++position) + ") source=" + source(each.kind) + " ;;\n";
    }
    return filled(scriptTemplate, {{"OPTIONS", optionNames(programOptions())},
                                   {"VERBS", verbNames()},
                                   {"VERB_OPTIONS", verbOptions},
                                   {"VALUES", values}});
}

std::string zshCompletion(const std::string& scriptTemplate)
{
    std::string commands, arguments;
    for (const Verb& verb : verbs()) {
        commands += "    " + quoted(verb.name + ":" + verb.summary) + "\n";
        arguments += "    " + verb.name + ") _arguments \\\n" + zshOptions(verb.arguments);
        for (const Argument& each : positionals(verb))
            arguments += "    " + quoted(":" + each.name + ":_lumenvale_" + source(each.kind)) + " \\\n";
        arguments += "    '*:: :' ;;\n";
    }
    return filled(scriptTemplate,
                  {{"COMMANDS", commands}, {"OPTIONS", zshOptions(programOptions())}, {"ARGUMENTS", arguments}});
}

std::string fishCompletion(const std::string& scriptTemplate)
{
    std::string lines;
    const auto add = [&lines](const std::string& condition, const std::string& rest) {
        lines += "complete -c lumenvale -n " + quoted(condition) + " " + rest + "\n";
    };
    const std::string noVerb = "not __fish_seen_subcommand_from " + verbNames();
    const auto option = [](const Argument& argument) {
        std::string text = "-l " + argument.name.substr(2) + " -d " + quoted(argument.help);
        if (argument.kind != ValueKind::flag)
            text += std::string(argument.isOptional ? "" : " -r") + " -a " +
                    quoted("(__lumenvale_" + source(argument.kind) + ")");
        return text;
    };
    for (const Argument& each : programOptions())
        add(noVerb, option(each));
    for (const Verb& verb : verbs()) {
        add(noVerb, "-a " + verb.name + " -d " + quoted(verb.summary));
        int position = 0;
        for (const Argument& each : verb.arguments) {
            if (each.isOption())
                add("__fish_seen_subcommand_from " + verb.name, option(each));
            else
                add("__lumenvale_argument " + verb.name + " " + std::to_string(++position),
                    "-a " + quoted("(__lumenvale_" + source(each.kind) + ")"));
        }
    }
    return filled(scriptTemplate, {{"COMPLETIONS", lines}});
}

} // namespace lumenvale
