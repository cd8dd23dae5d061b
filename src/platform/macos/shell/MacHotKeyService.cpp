// SPDX-License-Identifier: MIT
#include "platform/macos/shell/MacHotKeyService.h"

#include "base/Words.h"

#include <utility>

namespace lumenvale {

MacHotKeyService::~MacHotKeyService() { stop(); }

void MacHotKeyService::start(Events toCall)
{
    events = std::move(toCall);
    const EventTypeSpec pressed = {kEventClassKeyboard, kEventHotKeyPressed};
    handlerStatus =
        InstallEventHandler(GetApplicationEventTarget(), &MacHotKeyService::deliver, 1, &pressed, this, &handler);
}

void MacHotKeyService::stop()
{
    for (const auto& [id, key] : registrations)
        UnregisterEventHotKey(key);
    registrations.clear();
    if (const EventHandlerRef installed = std::exchange(handler, nullptr))
        RemoveEventHandler(installed);
    events = {};
}

tl::expected<void, std::string> MacHotKeyService::registerHotKey(std::uint32_t id, const PresetShortcut& shortcut,
                                                                 const std::string& /*description*/)
{
    if (handlerStatus != noErr)
        return tl::unexpected("Keyboard shortcut handler could not start (" + std::to_string(handlerStatus) +
                              ").");
    EventHotKeyRef key = nullptr;
    const OSStatus status =
        RegisterEventHotKey(keyCode(shortcut).value_or(0), carbonModifiers(shortcut), {hotKeySignature, id},
                            GetApplicationEventTarget(), kEventHotKeyNoOptions, &key);
    if (status != noErr || !key)
        return tl::unexpected(displayLabel(shortcut, portableWords) + " could not be registered (" +
                              std::to_string(status) + "). It may be used by macOS or another app.");
    registrations.emplace(id, key);
    return {};
}

void MacHotKeyService::unregisterHotKey(std::uint32_t id)
{
    const auto found = registrations.find(id);
    if (found == registrations.end())
        return;
    UnregisterEventHotKey(found->second);
    registrations.erase(found);
}

OSStatus MacHotKeyService::deliver(EventHandlerCallRef, EventRef event, void* service)
{
    if (!event || !service)
        return eventNotHandledErr;
    EventHotKeyID key = {};
    if (GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr, sizeof key, nullptr, &key) !=
            noErr ||
        key.signature != hotKeySignature)
        return eventNotHandledErr;
    if (const auto pressed =
            static_cast<MacHotKeyService*>(service)->events.pressed) // the call may stop the service
        pressed(key.id);
    return noErr;
}

} // namespace lumenvale
