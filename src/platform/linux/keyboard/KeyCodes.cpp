// SPDX-License-Identifier: MIT
#include "platform/linux/keyboard/KeyCodes.h"

#include <algorithm>
#include <array>

namespace lumenvale {

namespace {

constexpr auto pairs = std::to_array<KeyCodePair>({
    // clang-format off
    {0x00, 30}, // A
    {0x01, 31}, // S
    {0x02, 32}, // D
    {0x03, 33}, // F
    {0x04, 35}, // H
    {0x05, 34}, // G
    {0x06, 44}, // Z
    {0x07, 45}, // X
    {0x08, 46}, // C
    {0x09, 47}, // V
    {0x0A, 86}, // the key beside the left Shift of ISO keyboards
    {0x0B, 48}, // B
    {0x0C, 16}, // Q
    {0x0D, 17}, // W
    {0x0E, 18}, // E
    {0x0F, 19}, // R
    {0x10, 21}, // Y
    {0x11, 20}, // T
    {0x12, 2}, // 1
    {0x13, 3}, // 2
    {0x14, 4}, // 3
    {0x15, 5}, // 4
    {0x16, 7}, // 6
    {0x17, 6}, // 5
    {0x18, 13}, // equals
    {0x19, 10}, // 9
    {0x1A, 8}, // 7
    {0x1B, 12}, // minus
    {0x1C, 9}, // 8
    {0x1D, 11}, // 0
    {0x1E, 27}, // right bracket
    {0x1F, 24}, // O
    {0x20, 22}, // U
    {0x21, 26}, // left bracket
    {0x22, 23}, // I
    {0x23, 25}, // P
    {0x24, 28}, // Return
    {0x25, 38}, // L
    {0x26, 36}, // J
    {0x27, 40}, // apostrophe
    {0x28, 37}, // K
    {0x29, 39}, // semicolon
    {0x2A, 43}, // backslash; the key beside Return of ISO keyboards
    {0x2B, 51}, // comma
    {0x2C, 53}, // slash
    {0x2D, 49}, // N
    {0x2E, 50}, // M
    {0x2F, 52}, // full stop
    {0x30, 15}, // Tab
    {0x31, 57}, // Space
    {0x32, 41}, // grave accent
    {0x33, 14}, // Backspace
    {0x35, 1}, // Escape
    {0x36, 126}, // right Command, Super
    {0x37, 125}, // left Command, Super
    {0x38, 42}, // left Shift
    {0x39, 58}, // Caps Lock
    {0x3A, 56}, // left Option, Alt
    {0x3B, 29}, // left Control
    {0x3C, 54}, // right Shift
    {0x3D, 100}, // right Option, Alt
    {0x3E, 97}, // right Control
    {0x3F, 464}, // Fn
    {0x40, 187}, // F17
    {0x41, 83}, // keypad decimal point
    {0x43, 55}, // keypad times
    {0x45, 78}, // keypad plus
    {0x47, 69}, // keypad Clear, Num Lock
    {0x48, 115}, // volume up
    {0x49, 114}, // volume down
    {0x4A, 113}, // mute
    {0x4B, 98}, // keypad divide
    {0x4C, 96}, // keypad Enter
    {0x4E, 74}, // keypad minus
    {0x4F, 188}, // F18
    {0x50, 189}, // F19
    {0x51, 117}, // keypad equals
    {0x52, 82}, // keypad 0
    {0x53, 79}, // keypad 1
    {0x54, 80}, // keypad 2
    {0x55, 81}, // keypad 3
    {0x56, 75}, // keypad 4
    {0x57, 76}, // keypad 5
    {0x58, 77}, // keypad 6
    {0x59, 71}, // keypad 7
    {0x5A, 190}, // F20
    {0x5B, 72}, // keypad 8
    {0x5C, 73}, // keypad 9
    {0x5D, 124}, // yen (JIS)
    {0x5E, 89}, // underscore (JIS), slash (ABNT)
    {0x5F, 121}, // keypad comma (JIS), keypad full stop (ABNT)
    {0x60, 63}, // F5
    {0x61, 64}, // F6
    {0x62, 65}, // F7
    {0x63, 61}, // F3
    {0x64, 66}, // F8
    {0x65, 67}, // F9
    {0x66, 123}, // Eisu (JIS)
    {0x67, 87}, // F11
    {0x68, 122}, // Kana (JIS)
    {0x69, 183}, // F13
    {0x6A, 186}, // F16
    {0x6B, 184}, // F14
    {0x6D, 68}, // F10
    {0x6E, 127}, // context menu
    {0x6F, 88}, // F12
    {0x71, 185}, // F15
    {0x72, 110}, // Help, Insert
    {0x73, 102}, // Home
    {0x74, 104}, // Page Up
    {0x75, 111}, // Delete forward
    {0x76, 62}, // F4
    {0x77, 107}, // End
    {0x78, 60}, // F2
    {0x79, 109}, // Page Down
    {0x7A, 59}, // F1
    {0x7B, 105}, // left
    {0x7C, 106}, // right
    {0x7D, 108}, // down
    {0x7E, 103}, // up
    // clang-format on
});

} // namespace

std::span<const KeyCodePair> keyCodePairs() { return pairs; }

std::uint32_t virtualKeyFromEvdev(std::uint32_t evdev)
{
    const auto pair = std::ranges::find(pairs, evdev, &KeyCodePair::evdev);
    return pair == pairs.end() ? foreignKeyBase + evdev : pair->virtualKey;
}

std::uint32_t evdevFromVirtualKey(std::uint32_t virtualKey)
{
    if (virtualKey >= foreignKeyBase)
        return virtualKey - foreignKeyBase;
    const auto pair = std::ranges::find(pairs, virtualKey, &KeyCodePair::virtualKey);
    return pair == pairs.end() ? 0 : pair->evdev;
}

} // namespace lumenvale
