// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace lumenvale {

/// What a program tells before it has looked for its displays.
constexpr char unknownDisplays[] = "null";

/// The desktop program that this user runs beside a command. Main thread.
class RunningProgram {
public:
    /// Receives what the program shows of the displays, as `list --json` prints it, `unknownDisplays` while it
    /// does not know them yet; none while it does not run.
    using Observer = std::function<void(const std::optional<std::string>& displays)>;

    virtual ~RunningProgram() = default;

    /// Calls `observer` on a later turn of the main loop, and again at each change. Call it once.
    virtual void observe(Observer observer) = 0;
};

} // namespace lumenvale
