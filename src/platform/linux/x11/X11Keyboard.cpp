// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11Keyboard.h"

#include "presets/PresetShortcut.h"

#include <cstdlib>
#include <memory>
#include <xcb/xcb_keysyms.h>

namespace lumenvale {

namespace {

// X11/keysymdef.h
constexpr xcb_keysym_t numLockSymbol = 0xFF7F;
constexpr xcb_keysym_t scrollLockSymbol = 0xFF14;
constexpr xcb_keysym_t altLeftSymbol = 0xFFE9;
constexpr xcb_keysym_t superLeftSymbol = 0xFFEB;

struct Free {
    void operator()(void* memory) const { std::free(memory); }
};
struct FreeSymbols {
    void operator()(xcb_key_symbols_t* symbols) const { xcb_key_symbols_free(symbols); }
};

/// The modifier bit of the first key that types `symbol`, or 0.
std::uint16_t maskOf(xcb_keysym_t symbol, xcb_key_symbols_t* symbols, const xcb_get_modifier_mapping_reply_t* map)
{
    const std::unique_ptr<xcb_keycode_t, Free> keys(xcb_key_symbols_get_keycode(symbols, symbol));
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

std::uint16_t X11Modifiers::fromHotKeyModifiers(std::uint32_t modifiers) const
{
    std::uint16_t bits = 0;
    if (modifiers & HotKeyModifier::command)
        bits |= super;
    if (modifiers & HotKeyModifier::shift)
        bits |= XCB_MOD_MASK_SHIFT;
    if (modifiers & HotKeyModifier::option)
        bits |= alt;
    if (modifiers & HotKeyModifier::control)
        bits |= XCB_MOD_MASK_CONTROL;
    return bits;
}

X11Modifiers readX11Modifiers(xcb_connection_t* connection)
{
    X11Modifiers result;
    const std::unique_ptr<xcb_get_modifier_mapping_reply_t, Free> map(
        xcb_get_modifier_mapping_reply(connection, xcb_get_modifier_mapping(connection), nullptr));
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

} // namespace lumenvale
