// SPDX-License-Identifier: MIT
// Hot keys: what is registered is kept, and presses go through the installed handlers.
#include "Core.h"

#include <Carbon/Carbon.h>
#include <algorithm>
#include <cstring>

using namespace lumenvale::standin;

struct OpaqueEventTargetRef {};
struct OpaqueEventRef {
    EventHotKeyID key;
};
struct OpaqueEventHandlerRef {
    EventHandlerUPP function;
    void* user;
};
struct OpaqueEventHotKeyRef : HotKey {};

namespace {
OpaqueEventTargetRef application;
std::vector<EventHandlerRef> handlers; // the newest first
std::vector<EventHotKeyRef> keys;

template <typename Reference>
OSStatus withdraw(std::vector<Reference>& all, Reference one, const char* function)
{
    if (!died(one, function))
        return eventHotKeyInvalidErr;
    std::erase(all, one);
    delete one;
    return noErr;
}
} // namespace

std::vector<HotKey> lumenvale::standin::hotKeys()
{
    std::vector<HotKey> registered;
    for (const EventHotKeyRef each : keys)
        registered.push_back(*each);
    return registered;
}
OSStatus lumenvale::standin::press(std::uint32_t signature, std::uint32_t id)
{
    OpaqueEventRef event{{signature, id}};
    for (const EventHandlerRef each : std::vector<EventHandlerRef>(handlers)) {
        const bool isInstalled = std::ranges::find(handlers, each) != handlers.end();
        const EventRef given = id == 0 ? nullptr : &event;
        const OSStatus status = isInstalled ? each->function(nullptr, given, each->user) : eventNotHandledErr;
        if (status != eventNotHandledErr)
            return status;
    }
    return eventNotHandledErr;
}

extern "C" {
EventTargetRef GetApplicationEventTarget() { return &application; }
OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP function, ItemCount count,
                             const EventTypeSpec* types, void* user, EventHandlerRef* reference)
{
    if (const auto code = failing(__func__))
        return *code;
    if (target != &application || count != 1 || types->eventClass != kEventClassKeyboard ||
        types->eventKind != kEventHotKeyPressed)
        fault("InstallEventHandler: not for presses of the application's keys");
    *reference = new OpaqueEventHandlerRef{function, user};
    handlers.insert(handlers.begin(), *reference);
    born(*reference, "event handler");
    return noErr;
}
OSStatus RemoveEventHandler(EventHandlerRef handler) { return withdraw(handlers, handler, __func__); }
OSStatus RegisterEventHotKey(UInt32 keyCode, UInt32 modifiers, EventHotKeyID id, EventTargetRef target,
                             OptionBits options, EventHotKeyRef* reference)
{
    if (const auto code = failing(__func__))
        return *code;
    if (target != &application || options != kEventHotKeyNoOptions)
        fault("RegisterEventHotKey: wrong target or options");
    for (const EventHotKeyRef each : keys) {
        if (each->keyCode == keyCode && each->modifiers == modifiers)
            return eventHotKeyExistsErr;
    }
    *reference = new OpaqueEventHotKeyRef{{keyCode, modifiers, id.signature, id.id}};
    keys.push_back(*reference);
    born(*reference, "hot key");
    return noErr;
}
OSStatus UnregisterEventHotKey(EventHotKeyRef key) { return withdraw(keys, key, __func__); }
OSStatus GetEventParameter(EventRef event, EventParamName name, EventParamType type, EventParamType*,
                           ByteCount size, ByteCount*, void* data)
{
    if (const auto code = failing(__func__))
        return *code;
    if (name != kEventParamDirectObject || type != typeEventHotKeyID || size != sizeof event->key)
        fault("GetEventParameter: not the hot key's identity");
    std::memcpy(data, &event->key, sizeof event->key);
    return noErr;
}
} // extern "C"
