// SPDX-License-Identifier: MIT
// What the program was asked for. Parsing touches nothing: no file, no application object.
#pragma once

#include "app/cli/LevelArgument.h"
#include "app/desktop/DesktopRequest.h"

#include <optional>
#include <string>
#include <tl/expected.hpp>
#include <variant>
#include <vector>

namespace lumenvale {

struct DesktopVerb {
    std::optional<DesktopRequest> request; ///< of the copy that runs, or that starts now
};
/// Print this text and end: the help, or the version.
struct PrintVerb {
    std::string text;
};
struct ListVerb {
    bool asJson = false;
};
struct GetVerb {
    std::string display; ///< identifier, name, an unambiguous start of one, or "all"
};
struct SetVerb {
    std::string display;
    LevelArgument level;
};
struct PresetsVerb {
    bool asJson = false;
};
struct ApplyVerb {
    std::string preset; ///< identifier, name, or an unambiguous start of one
};
struct DoctorVerb {};

using Verb = std::variant<DesktopVerb, PrintVerb, ListVerb, GetVerb, SetVerb, PresetsVerb, ApplyVerb, DoctorVerb>;

struct CommandLine {
    std::optional<std::string> simulationFolder; ///< empty: the ready-made monitors; none: the real displays
    bool isVerbose = false;
    Verb verb;
};

/// Reads the arguments that follow the program's name. The error is the text for standard error.
tl::expected<CommandLine, std::string> parseCommandLine(std::vector<std::string> arguments);

/// "Lumenvale 1.0.0 (1)": version and build number.
std::string versionText();

} // namespace lumenvale
