// SPDX-License-Identifier: MIT
#include "platform/linux/portal/PortalShortcut.h"

#include "platform/linux/keyboard/KeyCodes.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QVariantMap>
#include <algorithm>
#include <array>
#include <string_view>

namespace lumenvale {

namespace {

using Entries = QList<std::pair<QString, QVariantMap>>; // a(sa{sv})

struct NamedKey {
    std::uint32_t keyCode;
    std::string_view name; // an xkb key symbol
};

constexpr auto namedKeys = std::to_array<NamedKey>({
    // clang-format off
    {0x00, "a"}, {0x0B, "b"}, {0x08, "c"}, {0x02, "d"}, {0x0E, "e"}, {0x03, "f"}, {0x05, "g"}, {0x04, "h"},
    {0x22, "i"}, {0x26, "j"}, {0x28, "k"}, {0x25, "l"}, {0x2E, "m"}, {0x2D, "n"}, {0x1F, "o"}, {0x23, "p"},
    {0x0C, "q"}, {0x0F, "r"}, {0x01, "s"}, {0x11, "t"}, {0x20, "u"}, {0x09, "v"}, {0x0D, "w"}, {0x07, "x"},
    {0x10, "y"}, {0x06, "z"},
    {0x12, "1"}, {0x13, "2"}, {0x14, "3"}, {0x15, "4"}, {0x17, "5"}, {0x16, "6"}, {0x1A, "7"}, {0x1C, "8"},
    {0x19, "9"}, {0x1D, "0"},
    {0x0A, "less"}, {0x18, "equal"}, {0x1B, "minus"}, {0x1E, "bracketright"}, {0x21, "bracketleft"},
    {0x27, "apostrophe"}, {0x29, "semicolon"}, {0x2A, "backslash"}, {0x2B, "comma"}, {0x2C, "slash"},
    {0x2F, "period"}, {0x32, "grave"}, {0x24, "Return"}, {0x30, "Tab"}, {0x31, "space"}, {0x33, "BackSpace"},
    {0x35, "Escape"}, {0x6E, "Menu"}, {0x72, "Insert"}, {0x73, "Home"}, {0x74, "Page_Up"}, {0x75, "Delete"},
    {0x77, "End"}, {0x79, "Page_Down"}, {0x7B, "Left"}, {0x7C, "Right"}, {0x7D, "Down"}, {0x7E, "Up"},
    {0x41, "KP_Decimal"}, {0x43, "KP_Multiply"}, {0x45, "KP_Add"}, {0x4B, "KP_Divide"}, {0x4C, "KP_Enter"},
    {0x4E, "KP_Subtract"}, {0x51, "KP_Equal"}, {0x52, "KP_0"}, {0x53, "KP_1"}, {0x54, "KP_2"}, {0x55, "KP_3"},
    {0x56, "KP_4"}, {0x57, "KP_5"}, {0x58, "KP_6"}, {0x59, "KP_7"}, {0x5B, "KP_8"}, {0x5C, "KP_9"},
    {foreignKeyBase + 99, "Print"}, {foreignKeyBase + 119, "Pause"}, // KEY_SYSRQ, KEY_PAUSE
    // clang-format on
});

std::string keyName(const PresetShortcut& shortcut)
{
    const std::optional<std::uint32_t> code = keyCode(shortcut);
    for (int number = 1; number <= 20; ++number) {
        if (functionKeyCode(number) == code)
            return "F" + std::to_string(number);
    }
    const auto key = std::ranges::find(namedKeys, code, &NamedKey::keyCode);
    return key == namedKeys.end() ? std::string() : std::string(key->name);
}

} // namespace

std::string portalTrigger(const PresetShortcut& shortcut)
{
    const std::string key = keyName(shortcut);
    if (key.empty())
        return {};
    return std::string(shortcut.control ? "CTRL+" : "") + (shortcut.option ? "ALT+" : "") +
           (shortcut.shift ? "SHIFT+" : "") + (shortcut.command ? "LOGO+" : "") + key;
}

QVariant writePortalShortcuts(const std::vector<PortalShortcut>& shortcuts)
{
    qDBusRegisterMetaType<Entries::value_type>();
    qDBusRegisterMetaType<Entries>();
    Entries entries;
    for (const PortalShortcut& each : shortcuts) {
        entries.append({QString::fromStdString(each.name),
                        {{"description", QString::fromStdString(each.description)},
                         {"preferred_trigger", QString::fromStdString(each.trigger)}}});
    }
    return QVariant::fromValue(entries);
}

std::set<std::string> readBoundShortcuts(const QVariant& value)
{
    std::set<std::string> bound;
    if (value.value<QDBusArgument>().currentSignature() != "a(sa{sv})")
        return bound;
    for (const auto& [name, properties] : qdbus_cast<Entries>(value)) {
        if (!properties.value("trigger_description").toString().isEmpty())
            bound.insert(name.toStdString());
    }
    return bound;
}
} // namespace lumenvale
