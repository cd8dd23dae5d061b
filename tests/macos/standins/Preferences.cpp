// SPDX-License-Identifier: MIT
// The preferences database.
#include "Core.h"

using namespace lumenvale;
using namespace lumenvale::standin;

namespace {

/// What the object stands for now; none where that is no property list.
std::optional<PropertyValue> toValue(const Object& object)
{
    PropertyArray values;
    for (const Object* each : object.elements)
        values.push_back(toValue(*each).value_or("no property list"));
    PropertyDictionary entries;
    for (const auto& [key, value] : object.entries)
        entries.emplace_back(key->text(), toValue(*value).value_or("no property list"));
    if (object.type > dictionaryType)
        return std::nullopt;
    return object.type == arrayType ? values : object.type == dictionaryType ? entries : object.value;
}

std::map<std::string, PropertyValue>& domainOf(CFStringRef application, CFStringRef user, CFStringRef host,
                                               const char* function)
{
    if (user != kCFPreferencesCurrentUser || host != kCFPreferencesAnyHost)
        fault(std::string(function) + ": not the user's own preferences");
    return machine().preferences[check(application, function, stringType).text()];
}

} // namespace

extern "C" {

CFPropertyListRef CFPreferencesCopyValue(CFStringRef key, CFStringRef application, CFStringRef user,
                                         CFStringRef host)
{
    const auto& domain = domainOf(application, user, host, __func__);
    const auto found = domain.find(check(key, __func__, stringType).text());
    return found == domain.end() ? nullptr : makeObject(found->second);
}
CFDictionaryRef CFPreferencesCopyMultiple(CFArrayRef keys, CFStringRef application, CFStringRef user,
                                          CFStringRef host)
{
    if (keys)
        fault("CFPreferencesCopyMultiple: not asked for all keys");
    PropertyDictionary entries;
    for (const auto& [key, value] : domainOf(application, user, host, __func__))
        entries.emplace_back(key, value);
    return static_cast<CFDictionaryRef>(makeObject(entries));
}
void CFPreferencesSetValue(CFStringRef key, CFPropertyListRef value, CFStringRef application, CFStringRef user,
                           CFStringRef host)
{
    failing(__func__);
    const std::string name = check(key, __func__, stringType).text();
    auto& domain = domainOf(application, user, host, __func__);
    const auto stored = value ? toValue(check(value, __func__)) : std::nullopt;
    if (stored)
        domain.insert_or_assign(name, *stored);
    else if (value)
        fault("CFPreferencesSetValue: not a property list");
    else
        domain.erase(name);
}
Boolean CFPreferencesSynchronize(CFStringRef application, CFStringRef user, CFStringRef host)
{
    domainOf(application, user, host, __func__);
    return !failing(__func__);
}

} // extern "C"
