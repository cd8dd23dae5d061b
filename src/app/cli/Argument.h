// SPDX-License-Identifier: MIT
// How the command line describes what it takes, and what a user gave. Values; any thread.
#pragma once

#include "app/cli/LevelArgument.h"

#include <map>
#include <string>
#include <vector>

namespace lumenvale {

/// What a value names: it decides what is checked before anything runs, and what a shell offers.
enum class ValueKind { flag, display, preset, level, folder };

/// A flag or option ("--json", "--simulate"), or a positional argument ("DISPLAY").
struct Argument {
    std::string name; ///< as the help shows it; those of flags and options start with two dashes
    ValueKind kind;
    std::string help;                       ///< one line, without a full stop
    std::string valueName = {};             ///< of an option that takes a value: "PRESET"
    bool isOptional = false;                ///< a positional argument may be left out; an option's value may
    bool isRepeatable = false;              ///< may be given several times
    std::vector<std::string> excludes = {}; ///< options described before this one that it does not go with

    bool isOption() const { return name.starts_with("--"); }
};

/// "DISPLAY", as all verbs understand it: see `chooseDisplays`.
Argument displayArgument();
/// "--json"
Argument jsonFlag();

/// What the user gave, by the arguments' names.
struct ArgumentValues {
    /// Flags have no texts; what was not given is absent. Every text of the kind `level` can be parsed.
    std::map<std::string, std::vector<std::string>> given;

    bool has(const std::string& name) const { return given.contains(name); }
    /// The first text that was given; empty when there is none.
    std::string text(const std::string& name) const;
    /// The level that was given; zero when there is none.
    LevelArgument level(const std::string& name) const;
};

} // namespace lumenvale
