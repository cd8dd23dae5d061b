// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11Keyboard.h"

#include "platform/linux/x11/Xcb.h"

#include <xcb/xcb_keysyms.h>

// xcb's header of the keyboard extension names a field with a C++ keyword.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicitField // NOLINT
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif

namespace lumenvale {

namespace {

// X11/keysymdef.h
constexpr xcb_keysym_t numLockSymbol = 0xFF7F;
constexpr xcb_keysym_t scrollLockSymbol = 0xFF14;
constexpr xcb_keysym_t altLeftSymbol = 0xFFE9;
constexpr xcb_keysym_t superLeftSymbol = 0xFFEB;

struct FreeSymbols {
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
};

/// The modifier bit of the first key that types `symbol`, or 0.
std::uint16_t maskOf(xcb_keysym_t symbol, xcb_key_symbols_t* symbols, const xcb_get_modifier_mapping_reply_t* map)
{
    const auto keys = owned(xcb_key_symbols_get_keycode(symbols, symbol));
    const xcb_keycode_t* entries = xcb_get_modifier_mapping_keycodes(map);
    for (const xcb_keycode_t* key = keys.get(); key && *key != XCB_NO_SYMBOL; ++key) {
        for (int i = 0; i < 8 * map->keycodes_per_modifier; ++i) {
            if (entries[i] == *key)
                return static_cast<std::uint16_t>(1 << (i / map->keycodes_per_modifier));
        }
    }
    return 0;
}

} // namespace

std::vector<std::uint16_t> X11Modifiers::lockCombinations() const
{
    std::vector<std::uint16_t> result = {0};
    for (const std::uint16_t lock : {static_cast<std::uint16_t>(XCB_MOD_MASK_LOCK), numLock, scrollLock}) {
        if (lock == 0 || (lock & meaningful()) != 0)
            continue;
        const std::size_t count = result.size();
        for (std::size_t i = 0; i < count; ++i)
            result.push_back(static_cast<std::uint16_t>(result[i] | lock));
    }
    return result;
}

std::uint16_t X11Modifiers::of(const PresetShortcut& shortcut) const
{
    return static_cast<std::uint16_t>((shortcut.command ? super : 0) | (shortcut.shift ? XCB_MOD_MASK_SHIFT : 0) |
                                      (shortcut.option ? alt : 0) | (shortcut.control ? XCB_MOD_MASK_CONTROL : 0));
}

X11Modifiers readX11Modifiers(xcb_connection_t* connection)
{
    X11Modifiers result;
    const auto map =
        owned(xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
    const std::unique_ptr<xcb_key_symbols_t, FreeSymbols> symbols(xcb_key_symbols_alloc(connection));
    if (!map || !symbols || map->keycodes_per_modifier == 0)
        return result;
    result.numLock = maskOf(numLockSymbol, symbols.get(), map.get());
    result.scrollLock = maskOf(scrollLockSymbol, symbols.get(), map.get());
    if (const std::uint16_t alt = maskOf(altLeftSymbol, symbols.get(), map.get()))
        result.alt = alt;
    if (const std::uint16_t super = maskOf(superLeftSymbol, symbols.get(), map.get()))
        result.super = super;
    return result;
}

std::uint8_t selectX11KeyboardEvents(xcb_connection_t* connection)
{
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_xkb_id);
    if (!extension || !extension->present)
        return 0;
    const auto use =
        owned(xcb_xkb_use_extension_reply(connection, xcb_xkb_use_extension(connection, 1, 0), nullptr));
    if (!use || !use->supported)
        return 0;
    constexpr std::uint32_t repeatsWithoutReleases = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    xcb_xkb_per_client_flags(connection, XCB_XKB_ID_USE_CORE_KBD, repeatsWithoutReleases, repeatsWithoutReleases,
                             0, 0, 0);
    constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
    constexpr std::uint16_t parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    xcb_xkb_select_events(connection, XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts, nullptr);
    return extension->first_event;
}

bool isX11KeyDown(xcb_connection_t* connection, xcb_keycode_t key)
{
    const auto map = owned(xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr));
    return map && (map->keys[key / 8] >> (key % 8) & 1) != 0;
}

} // namespace lumenvale
