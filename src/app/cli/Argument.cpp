// SPDX-License-Identifier: MIT
#include "app/cli/Argument.h"

namespace lumenvale {

Argument displayArgument()
{
    return {.name = "DISPLAY",
            .kind = ValueKind::display,
            .help = "An identifier, a name, an unambiguous start of one, or all"};
}

Argument jsonFlag() { return {.name = "--json", .kind = ValueKind::flag, .help = "Print every field, as JSON"}; }

std::string ArgumentValues::text(const std::string& name) const
{
    const auto texts = given.find(name);
    return texts == given.end() || texts->second.empty() ? std::string() : texts->second.front();
}

LevelArgument ArgumentValues::level(const std::string& name) const
{
    return parseLevel(text(name)).value_or(LevelArgument());
}

} // namespace lumenvale
