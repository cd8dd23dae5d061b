// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11HotKeys.h"

#include "platform/linux/keyboard/KeyCodes.h"
#include "platform/linux/x11/X11Keyboard.h"
#include "platform/linux/x11/XcbXkb.h"

#include <QSocketNotifier>
#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>

namespace lumenvale {

namespace {

constexpr std::uint32_t lastXKeyCode = 255;

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};
struct Disconnect {
    void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

class X11HotKeys final : public HotKeyService {
public:
    explicit X11HotKeys(const char* displayName) : connection(xcb_connect(displayName, nullptr))
    {
        if (!isConnected())
            return;
        selectKeyboardEvents();
        modifiers = readX11Modifiers(connection.get());
        notifier =
            std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection.get()), QSocketNotifier::Read);
        QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { readEvents(); });
    }

    std::int32_t installHandler(Handler next, HotKeyReference& reference) override
    {
        if (!isConnected())
            return hotKeyServiceAbsentStatus;
        handler = std::move(next);
        reference = ++lastReference;
        return 0;
    }
    void removeHandler(HotKeyReference) override { handler = nullptr; }

    std::int32_t registerHotKey(std::uint32_t keyCode, std::uint32_t modifierBits, HotKeyID id, const std::string&,
                                HotKeyReference& reference) override
    {
        const std::uint32_t evdev = evdevFromVirtualKey(keyCode);
        if (evdev == 0 || evdev + xKeyCodeOffset > lastXKeyCode)
            return hotKeyInvalidStatus;
        const HotKey key{static_cast<xcb_keycode_t>(evdev + xKeyCodeOffset), modifierBits, id};
        // The server lets one client grab a combination twice and then forgets the first.
        const bool ours =
            std::ranges::any_of(keys, [&](const auto& each) { return each.second.isSameKeyAs(key); });
        if (ours || !grab(key))
            return hotKeyExistsStatus;
        reference = ++lastReference;
        keys.emplace(reference, key);
        return 0;
    }

    void unregisterHotKey(HotKeyReference reference) override
    {
        const auto key = keys.find(reference);
        if (key == keys.end())
            return;
        ungrab(key->second);
        keys.erase(key);
        xcb_flush(connection.get());
    }

    void setStatusObserver(StatusObserver next) override { observer = std::move(next); }

private:
    struct HotKey {
        xcb_keycode_t keyCode = 0;
        std::uint32_t modifiers = 0; // HotKeyModifier bits
        HotKeyID id;

        bool isSameKeyAs(const HotKey& other) const
        {
            return keyCode == other.keyCode && modifiers == other.modifiers;
        }
    };

    bool isConnected() const { return xcb_connection_has_error(connection.get()) == 0; }

    void selectKeyboardEvents()
    {
        const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection.get(), &xcb_xkb_id);
        if (!extension || !extension->present)
            return;
        const std::unique_ptr<xcb_xkb_use_extension_reply_t, FreeMemory> use(
            xcb_xkb_use_extension_reply(connection.get(), xcb_xkb_use_extension(connection.get(), 1, 0), nullptr));
        if (!use || !use->supported)
            return;
        firstKeyboardEvent = extension->first_event;
        // A held key then sends presses only, which tells repeats from new presses.
        xcb_xkb_per_client_flags(connection.get(), XCB_XKB_ID_USE_CORE_KBD,
                                 XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT,
                                 XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT, 0, 0, 0);
        constexpr std::uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY;
        constexpr std::uint16_t parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
        xcb_xkb_select_events(connection.get(), XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts, nullptr);
    }

    template <typename Action>
    void forEachGrab(const HotKey& key, Action action)
    {
        const std::uint16_t wanted = modifiers.fromHotKeyModifiers(key.modifiers);
        for (auto screen = xcb_setup_roots_iterator(xcb_get_setup(connection.get())); screen.rem > 0;
             xcb_screen_next(&screen)) {
            for (const std::uint16_t locks : modifiers.lockCombinations())
                action(screen.data->root, static_cast<std::uint16_t>(wanted | locks));
        }
    }

    bool grab(const HotKey& key)
    {
        std::vector<xcb_void_cookie_t> requests;
        forEachGrab(key, [&](xcb_window_t root, std::uint16_t mask) {
            requests.push_back(xcb_grab_key_checked(connection.get(), 1, root, mask, key.keyCode,
                                                    XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC));
        });
        bool granted = isConnected();
        for (const xcb_void_cookie_t request : requests) {
            const std::unique_ptr<xcb_generic_error_t, FreeMemory> error(
                xcb_request_check(connection.get(), request));
            granted = granted && !error;
        }
        if (!granted)
            ungrab(key);
        return granted;
    }

    void ungrab(const HotKey& key)
    {
        forEachGrab(key, [&](xcb_window_t root, std::uint16_t mask) {
            xcb_ungrab_key(connection.get(), key.keyCode, root, mask);
        });
        xcb_flush(connection.get());
    }

    void readEvents()
    {
        bool mapChanged = false;
        for (;;) {
            const std::unique_ptr<xcb_generic_event_t, FreeMemory> event(xcb_poll_for_event(connection.get()));
            if (!event)
                break;
            const std::uint8_t type = event->response_type & 0x7F;
            if (type == XCB_KEY_PRESS)
                press(*reinterpret_cast<const xcb_key_press_event_t*>(event.get()));
            else if (type == XCB_KEY_RELEASE)
                held.erase(reinterpret_cast<const xcb_key_release_event_t*>(event.get())->detail);
            else if (type == XCB_MAPPING_NOTIFY || (firstKeyboardEvent != 0 && type == firstKeyboardEvent))
                mapChanged = true;
        }
        if (mapChanged)
            grabAgain();
        if (!isConnected())
            notifier->setEnabled(false);
    }

    void press(const xcb_key_press_event_t& event)
    {
        if (!held.insert(event.detail).second)
            return; // it repeats
        const std::uint16_t pressed = event.state & modifiers.meaningful();
        const auto key = std::ranges::find_if(keys, [&](const auto& each) {
            return each.second.keyCode == event.detail &&
                   modifiers.fromHotKeyModifiers(each.second.modifiers) == pressed;
        });
        if (key == keys.end() || !handler)
            return;
        const Handler call = handler; // it may remove itself, and any key
        call(key->second.id);
    }

    /// The bits of the modifiers may have moved, so every grab has to.
    void grabAgain()
    {
        for (const auto& [reference, key] : keys)
            ungrab(key);
        modifiers = readX11Modifiers(connection.get());
        for (const auto& [reference, key] : keys) {
            const bool granted = grab(key);
            if (observer)
                observer(key.id.id, granted ? "" : "The keyboard changed and another app now has this shortcut.");
        }
    }

    std::unique_ptr<xcb_connection_t, Disconnect> connection;
    std::unique_ptr<QSocketNotifier> notifier;
    X11Modifiers modifiers;
    std::uint8_t firstKeyboardEvent = 0;
    Handler handler;
    StatusObserver observer;
    HotKeyReference lastReference = 0;
    std::map<HotKeyReference, HotKey> keys;
    std::set<xcb_keycode_t> held;
};

} // namespace

std::unique_ptr<HotKeyService> makeX11HotKeys(const char* displayName)
{
    return std::make_unique<X11HotKeys>(displayName);
}

} // namespace lumenvale
