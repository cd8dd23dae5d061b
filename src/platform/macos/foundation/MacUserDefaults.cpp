// SPDX-License-Identifier: MIT
#include "platform/macos/foundation/MacUserDefaults.h"

#include "platform/macos/foundation/PropertyConversion.h"

#include <chrono>
#include <utility>

namespace lumenvale {

namespace {

/// A slider dragged in the settings changes a preset many times a second; the disk is asked twice a second.
constexpr auto writeWait = std::chrono::milliseconds(500);

} // namespace

MacUserDefaults::MacUserDefaults(std::string application, Clock& clock)
    : application(std::move(application)), clock(clock)
{
}

MacUserDefaults::~MacUserDefaults() { flush(); }

std::optional<PropertyValue> MacUserDefaults::value(const std::string& key) const
{
    const auto name = toCFString(key);
    const auto owner = toCFString(application);
    if (!name || !owner)
        return std::nullopt;
    const CFReference<CFPropertyListRef> stored(
        CFPreferencesCopyValue(name.get(), owner.get(), kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
    return toPropertyValue(stored.get());
}

void MacUserDefaults::set(const std::string& key, std::optional<PropertyValue> next)
{
    const auto name = toCFString(key);
    const auto owner = toCFString(application);
    const auto stored = next ? toCFObject(*next) : CFReference<CFTypeRef>();
    if (!name || !owner || (next && !stored)) {
        hasFailed = true;
        failures.emit("The text to be saved is not valid Unicode.");
        return;
    }
    CFPreferencesSetValue(name.get(), stored.get(), owner.get(), kCFPreferencesCurrentUser, kCFPreferencesAnyHost);
    isChanged = true;
    if (timer == 0) {
        timer = clock.callAfter(writeWait, [this] {
            timer = 0;
            flush();
        });
    }
}

PropertyDictionary MacUserDefaults::domain(const std::string& name) const
{
    const auto owner = toCFString(name);
    if (!owner)
        return {};
    const CFReference<CFDictionaryRef> all(
        CFPreferencesCopyMultiple(nullptr, owner.get(), kCFPreferencesCurrentUser, kCFPreferencesAnyHost));
    const auto value = toPropertyValue(all.get());
    const auto* dictionary = value ? value->as<PropertyDictionary>() : nullptr;
    return dictionary ? *dictionary : PropertyDictionary();
}

Subscription MacUserDefaults::observeFailures(std::function<void(const std::string&)> observer)
{
    return failures.subscribe(std::move(observer));
}

void MacUserDefaults::flush()
{
    clock.cancel(std::exchange(timer, 0));
    if (!isChanged)
        return;
    const auto owner = toCFString(application);
    isChanged = !owner || !CFPreferencesSynchronize(owner.get(), kCFPreferencesCurrentUser, kCFPreferencesAnyHost);
    const bool hadFailed = std::exchange(hasFailed, isChanged);
    if (isChanged)
        failures.emit("The system's preferences database did not accept the change.");
    else if (hadFailed)
        failures.emit("");
}

} // namespace lumenvale
