// SPDX-License-Identifier: MIT
// What a system calls the things that it shows the program in: its keys, its bars, its login. The words given here
// are a Mac's; the folder of a system with others defines its own as `nativeWords` (Platform.h). Whoever shows
// them is handed them. What is stored and what JSON gives never depends on them. Any thread.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace lumenvale {

/// What a key is called, instead of the label that was recorded with it.
struct KeyName {
    std::uint32_t keyCode; ///< Macintosh virtual key code
    std::string_view name;
};

/// The texts are literals: they outlive everything.
struct Words {
    // Displays
    std::string_view nativeMethod;

    // Shortcuts: what a modifier puts before the key
    std::string_view control;
    std::string_view option;
    std::string_view shift;
    std::string_view command;
    std::span<const KeyName> keys;
    std::string_view recordingHelp;

    // Where the program shows itself, in the order of `allPresentations`
    std::array<std::string_view, 3> presentations;
    std::string_view presentationHelp;
    std::string_view noStatusArea; ///< how to get back to a program whose icon nothing shows

    // Starting at login
    std::string_view startupHelp;
    std::string_view startupUnavailable;
    std::string_view approvalHelp; ///< how the user approves the login item
    std::string_view approvalButton;
};

inline constexpr Words portableWords = {
    .nativeMethod = "Apple native brightness",
    .control = "⌃",
    .option = "⌥",
    .shift = "⇧",
    .command = "⌘",
    .keys = {},
    .recordingHelp = "Press a key with any combination of ⌘, ⌥, ⌃, and ⇧. Escape cancels.",
    .presentations = {"Menu bar", "Dock", "Menu bar and Dock"},
    .presentationHelp = "Click the menu bar or Dock icon for brightness controls.",
    .noStatusArea = "",
    .startupHelp = "Start Lumenvale automatically when you log in to your Mac.",
    .startupUnavailable = "macOS could not locate this app as a login item. Try running it from Applications.",
    .approvalHelp = "Enable Lumenvale in System Settings → General → Login Items to finish setup.",
    .approvalButton = "Open Login Items…",
};

} // namespace lumenvale
