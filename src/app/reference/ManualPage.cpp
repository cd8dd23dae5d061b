// SPDX-License-Identifier: MIT
#include "app/reference/ManualPage.h"

#include "app/cli/CommandLine.h"

#include <string_view>

namespace lumenvale {

namespace {

/// Text as man(7) takes it literally: a hyphen is a minus sign, a dot at a line's start no request.
std::string escaped(std::string_view text)
{
    std::string result;
    for (const char character : text) {
        if (character == '\\')
            result += "\\e";
        else if (character == '-')
            result += "\\-";
        else
            result += character;
    }
    return result.starts_with('.') || result.starts_with('\'') ? "\\&" + result : result;
}

std::string sentence(const std::string& text) { return escaped(text) + (text.ends_with('.') ? "\n" : ".\n"); }

std::string bold(const std::string& text) { return "\\fB" + escaped(text) + "\\fR"; }

std::string italic(const std::string& text) { return "\\fI" + escaped(text) + "\\fR"; }

/// "--simulate [DIR]", "[--json]" or "DISPLAY".
std::string signature(const Argument& argument)
{
    std::string text = argument.isOption() ? bold(argument.name) : italic(argument.name);
    if (!argument.valueName.empty())
        text += argument.isOptional ? " [" + italic(argument.valueName) + "]" : " " + italic(argument.valueName);
    if (argument.isRepeatable)
        text += " ...";
    return text;
}

std::string inSynopsis(const Argument& argument)
{
    return argument.isOption() || argument.isOptional ? " [" + signature(argument) + "]"
                                                      : " " + signature(argument);
}

std::string described(const std::vector<Argument>& arguments)
{
    std::string text;
    for (const Argument& each : arguments)
        text += ".TP\n" + signature(each) + "\n" + sentence(each.help);
    return text;
}

std::string commands()
{
    std::string text;
    for (const Verb& verb : verbs()) {
        text += ".SS " + bold(verb.name);
        for (const Argument& each : verb.arguments)
            text += inSynopsis(each);
        text += "\n" + sentence(verb.summary) + described(verb.arguments);
    }
    return text;
}

constexpr char head[] = R"(.\" SPDX-License-Identifier: MIT
.TH LUMENVALE 1
.SH NAME
lumenvale \- control the brightness of every connected display
.SH SYNOPSIS
.B lumenvale
.RI [ options ]
.br
.B lumenvale
.RI [ options ]
.I command
.RI [ arguments ]
.SH DESCRIPTION
Without a command,
.B lumenvale
is the desktop program: a panel with a slider for each display, presets, and settings. A second start shows the panel of
the program that runs.
.PP
The commands work without a desktop. Each value that they set is read back and verified. Built\-in panels are set through
the system's own brightness, external monitors over DDC/CI. A
.I DISPLAY
is an identifier, a name, an unambiguous start of one, or
.BR all .
.SH COMMANDS
)";

constexpr char tail[] = R"(.SH EXIT STATUS
.TP
.B 0
Done.
.TP
.B 1
The hardware refused, and standard error says what and why; or doctor found a problem.
.TP
.B 2
Wrong use, or a mistake in the files that were read.
.TP
.B 3
There is no such display or preset.
.SH FILES
.TP
.I ~/.config/app.lumenvale.Lumenvale/preferences.json
Presets and preferences.
.TP
.I /usr/lib/udev/rules.d/60\-lumenvale\-i2c.rules
Lets the user at the machine reach the monitors' channels.
.TP
.I /usr/share/dbus\-1/interfaces/app.lumenvale.Lumenvale.Displays.xml
What other programs may ask of the running program over the session bus.
.TP
.I /usr/share/doc/lumenvale\-cli/examples/status\-bar.md
How status bars show the brightness.
.SH EXAMPLES
.TP
.B lumenvale set all 40%
Sets every display to 40 %.
.TP
.B lumenvale set Dell +5%
Makes the display whose name begins with Dell a little brighter.
.TP
.B lumenvale watch
Prints a line at each change, until it is stopped.
.TP
.B lumenvale apply Evening
Sets the displays to the levels of a preset.
.TP
.B lumenvale \-\-simulate list
Tries it on simulated monitors.
)";

} // namespace

std::string manualPage() { return head + commands() + ".SH OPTIONS\n" + described(programOptions()) + tail; }

} // namespace lumenvale
