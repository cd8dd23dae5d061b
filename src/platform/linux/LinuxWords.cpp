// SPDX-License-Identifier: MIT
// What Linux desktops call their things.
#include "platform/Platform.h"

namespace lumenvale {

namespace {

/// Keys whose recorded label is a Mac's symbol or word, and those of the keypad, which type what others type too.
constexpr auto keyNames = std::to_array<KeyName>({
    {0x24, "Enter"},        {0x30, "Tab"},       {0x31, "Space"},    {0x33, "Backspace"}, {0x35, "Escape"},
    {0x6E, "Menu"},         {0x72, "Insert"},    {0x73, "Home"},     {0x74, "Page Up"},   {0x75, "Delete"},
    {0x77, "End"},          {0x79, "Page Down"}, {0x7B, "Left"},     {0x7C, "Right"},     {0x7D, "Down"},
    {0x7E, "Up"},           {0x41, "Keypad ."},  {0x43, "Keypad *"}, {0x45, "Keypad +"},  {0x4B, "Keypad /"},
    {0x4C, "Keypad Enter"}, {0x4E, "Keypad -"},  {0x51, "Keypad ="}, {0x52, "Keypad 0"},  {0x53, "Keypad 1"},
    {0x54, "Keypad 2"},     {0x55, "Keypad 3"},  {0x56, "Keypad 4"}, {0x57, "Keypad 5"},  {0x58, "Keypad 6"},
    {0x59, "Keypad 7"},     {0x5B, "Keypad 8"},  {0x5C, "Keypad 9"},
});

} // namespace

Words nativeWords()
{
    return {
        .nativeMethod = "System backlight",
        .control = "Ctrl+",
        .option = "Alt+",
        .shift = "Shift+",
        .command = "Super+",
        .keys = keyNames,
        .recordingHelp = "Press a key with any combination of Ctrl, Alt, Shift and Super. Escape cancels.",
        .presentations = {"Status area", "Applications", "Both"},
        .presentationHelp = "Click Lumenvale's icon in the status area, or Lumenvale among the applications, for "
                            "brightness controls.",
        .noStatusArea = "This desktop shows no status icons: to open the brightness panel, start Lumenvale again, "
                        "from the applications or with the command “lumenvale”.",
        .startupHelp = "Start Lumenvale automatically when you log in.",
        .startupUnavailable = "Lumenvale cannot add itself to the programs that start when you log in.",
        .approvalHelp = "",
        .approvalButton = "",
    };
}

} // namespace lumenvale
