// SPDX-License-Identifier: MIT
#include "platform/macos/shell/MacHotKeyService.h"

#include <utility>

namespace lumenvale {

namespace {

std::optional<HotKeyID> pressedKey(EventRef event)
{
    EventHotKeyID key = {};
    if (GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr, sizeof key, nullptr, &key) !=
        noErr)
        return std::nullopt;
    return HotKeyID{key.signature, key.id};
}

} // namespace

MacHotKeyService::~MacHotKeyService()
{
    for (const auto& [reference, key] : keys)
        UnregisterEventHotKey(key);
    for (const auto& [reference, installed] : handlers)
        RemoveEventHandler(installed->reference);
}

std::int32_t MacHotKeyService::installHandler(Handler handler, HotKeyReference& reference)
{
    const EventTypeSpec pressed = {kEventClassKeyboard, kEventHotKeyPressed};
    auto installed = std::make_unique<Installed>();
    installed->handler = std::make_shared<const Handler>(std::move(handler));
    const OSStatus status = InstallEventHandler(GetApplicationEventTarget(), &MacHotKeyService::deliver, 1,
                                                &pressed, installed.get(), &installed->reference);
    if (status != noErr)
        return status;
    reference = ++last;
    handlers.emplace(reference, std::move(installed));
    return noErr;
}

void MacHotKeyService::removeHandler(HotKeyReference handler)
{
    const auto found = handlers.find(handler);
    if (found == handlers.end())
        return;
    RemoveEventHandler(found->second->reference);
    handlers.erase(found);
}

std::int32_t MacHotKeyService::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID id,
                                              const std::string& /*description*/, HotKeyReference& reference)
{
    EventHotKeyRef key = nullptr;
    const OSStatus status = RegisterEventHotKey(keyCode, modifiers, EventHotKeyID{id.signature, id.id},
                                                GetApplicationEventTarget(), kEventHotKeyNoOptions, &key);
    if (status != noErr)
        return status;
    if (!key)
        return eventHotKeyInvalidErr;
    reference = ++last;
    keys.emplace(reference, key);
    return noErr;
}

void MacHotKeyService::unregisterHotKey(HotKeyReference key)
{
    const auto found = keys.find(key);
    if (found == keys.end())
        return;
    UnregisterEventHotKey(found->second);
    keys.erase(found);
}

OSStatus MacHotKeyService::deliver(EventHandlerCallRef, EventRef event, void* installed)
{
    if (!event || !installed)
        return eventNotHandledErr;
    const auto handler = static_cast<Installed*>(installed)->handler; // the call may remove it
    return (*handler)(pressedKey(event));
}

} // namespace lumenvale
