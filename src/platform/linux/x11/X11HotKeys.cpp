// SPDX-License-Identifier: MIT
#include "platform/linux/x11/X11HotKeys.h"

#include "platform/linux/keyboard/KeyCodes.h"
#include "platform/linux/keyboard/ShortcutMessages.h"
#include "platform/linux/x11/X11Keyboard.h"
#include "platform/linux/x11/Xcb.h"

#include <QSocketNotifier>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <map>
#include <set>
#include <utility>

namespace lumenvale {

namespace {

constexpr std::uint32_t lastXKeyCode = 255;
constexpr std::chrono::milliseconds releaseCheckInterval(50);

class X11HotKeys final : public HotKeyService {
public:
    explicit X11HotKeys(const char* displayName) : connection(xcb_connect(displayName, nullptr))
    {
        if (!isConnected())
            return;
        keyboardEvent = selectX11KeyboardEvents(connection.get());
        modifiers = readX11Modifiers(connection.get());
        notifier =
            std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection.get()), QSocketNotifier::Read);
        QObject::connect(notifier.get(), &QSocketNotifier::activated, notifier.get(), [this] { readEvents(); });
        releaseCheck.setInterval(releaseCheckInterval);
        QObject::connect(&releaseCheck, &QTimer::timeout, &releaseCheck, [this] { forgetReleasedKeys(); });
    }

    void start(Events toCall) override { events = std::move(toCall); }

    void stop() override
    {
        for (const auto& [id, key] : keys)
            ungrab(key);
        keys.clear();
        events = {};
    }

    tl::expected<void, std::string> registerHotKey(std::uint32_t id, const PresetShortcut& shortcut,
                                                   const std::string& /*description*/) override
    {
        if (!isConnected())
            return tl::unexpected(couldNotStartMessage("the X server does not answer"));
        const auto code = keyCode(shortcut);
        const std::uint32_t evdev = code ? evdevFromVirtualKey(*code) : 0;
        if (evdev == 0 || evdev + xKeyCodeOffset > lastXKeyCode)
            return tl::unexpected(unknownKeyMessage(shortcut));
        // The server lets one client grab a combination twice and then forgets the first.
        if (std::ranges::any_of(keys, [&](const auto& each) { return collide(each.second.shortcut, shortcut); }))
            return tl::unexpected(usedTwiceMessage(shortcut));
        const HotKey key{static_cast<xcb_keycode_t>(evdev + xKeyCodeOffset), shortcut};
        if (!grab(key))
            return tl::unexpected(takenMessage(shortcut));
        keys.emplace(id, key);
        if (isX11KeyDown(connection.get(), key.keyCode)) {
            downAtGrab.insert(key.keyCode);
            releaseCheck.start();
        }
        readSoon();
        return {};
    }

    void unregisterHotKey(std::uint32_t id) override
    {
        const auto key = keys.find(id);
        if (key == keys.end())
            return;
        ungrab(key->second);
        keys.erase(key);
    }

private:
    struct HotKey {
        xcb_keycode_t keyCode = 0;
        PresetShortcut shortcut;
    };

    bool isConnected() const { return xcb_connection_has_error(connection.get()) == 0; }

    template <typename Action>
    void forEachGrab(const HotKey& key, Action action)
    {
        const std::uint16_t wanted = modifiers.of(key.shortcut);
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
        for (const xcb_void_cookie_t request : requests)
            granted = !owned(xcb_request_check(connection.get(), request)) && granted;
        if (!granted)
            ungrab(key);
        return granted;
    }

    void ungrab(const HotKey& key)
    {
        if (!isConnected())
            return;
        forEachGrab(key, [&](xcb_window_t root, std::uint16_t mask) {
            xcb_ungrab_key(connection.get(), key.keyCode, root, mask);
        });
        xcb_flush(connection.get());
        readSoon();
    }

    /// While xcb waits for a reply it keeps the events that arrive before it: the socket is then empty, and the
    /// notifier does not tell of them.
    void readSoon()
    {
        QTimer::singleShot(0, notifier.get(), [this] { readEvents(); });
    }

    void readEvents()
    {
        bool mapChanged = false;
        while (const auto event = owned(xcb_poll_for_event(connection.get()))) {
            const std::uint8_t type = event->response_type & 0x7F;
            if (type == XCB_KEY_PRESS)
                press(reinterpret_cast<const xcb_key_press_event_t&>(*event));
            else if (type == XCB_KEY_RELEASE)
                release(reinterpret_cast<const xcb_key_release_event_t&>(*event).detail);
            else if (type == XCB_MAPPING_NOTIFY || (keyboardEvent != 0 && type == keyboardEvent))
                mapChanged = true;
        }
        if (mapChanged)
            grabAgain();
        if (!isConnected())
            notifier->setEnabled(false);
    }

    void press(const xcb_key_press_event_t& event)
    {
        if (!held.insert(event.detail).second || downAtGrab.contains(event.detail))
            return; // it repeats
        const std::uint16_t pressed = event.state & modifiers.meaningful();
        const auto key = std::ranges::find_if(keys, [&](const auto& each) {
            return each.second.keyCode == event.detail && modifiers.of(each.second.shortcut) == pressed;
        });
        if (key == keys.end())
            return;
        if (const auto call = events.pressed) // it may stop the service
            call(key->first);
    }

    void release(xcb_keycode_t key)
    {
        held.erase(key);
        downAtGrab.erase(key);
    }

    /// The release of a key that was down before its grab goes to another program.
    void forgetReleasedKeys()
    {
        std::erase_if(downAtGrab, [this](xcb_keycode_t key) { return !isX11KeyDown(connection.get(), key); });
        if (downAtGrab.empty())
            releaseCheck.stop();
        readSoon();
    }

    /// The bits of the modifiers may have moved, so every grab has to.
    void grabAgain()
    {
        for (const auto& [id, key] : keys)
            ungrab(key);
        modifiers = readX11Modifiers(connection.get());
        std::vector<std::pair<std::uint32_t, std::string>> outcomes;
        for (const auto& [id, key] : keys)
            outcomes.emplace_back(id, grab(key) ? std::string() : takenMessage(key.shortcut));
        readSoon();
        for (const auto& [id, message] : outcomes) {
            if (const auto call = events.changed)
                call(id, message);
        }
    }

    XcbConnection connection;
    std::unique_ptr<QSocketNotifier> notifier;
    X11Modifiers modifiers;
    std::uint8_t keyboardEvent = 0; ///< the type of XKB's events; 0: there are none
    Events events;
    std::map<std::uint32_t, HotKey> keys;
    std::set<xcb_keycode_t> held;       ///< pressed, and not yet released
    std::set<xcb_keycode_t> downAtGrab; ///< down since before their grab: what they send are repeats
    QTimer releaseCheck;
};

} // namespace

std::unique_ptr<HotKeyService> makeX11HotKeys(const char* displayName)
{
    return std::make_unique<X11HotKeys>(displayName);
}

} // namespace lumenvale
