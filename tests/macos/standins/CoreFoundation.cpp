// SPDX-License-Identifier: MIT
// Reference-counted values, stricter than the real ones: no conversion that may fail succeeds by luck. And the
// preferences database.
#include "Core.h"

#include <cstring>

using namespace lumenvale;
using namespace lumenvale::standin;

namespace {
/// Never freed, never counted.
template <typename Reference>
Reference constant(CFTypeID type, PropertyValue value)
{
    return as<Reference>(new Object{.type = type, .value = std::move(value)});
}
/// UTF-16 units of UTF-8 text, or -1 when it is not that.
CFIndex utf16Length(const std::string& text)
{
    CFIndex units = 0;
    int pending = 0; // bytes that the character still needs
    for (const unsigned char byte : text) {
        const bool continues = (byte & 0xC0) == 0x80;
        if (continues != (pending > 0) || byte > 0xF4 || byte == 0xC0 || byte == 0xC1)
            return -1;
        pending = continues ? pending - 1 : byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : byte >= 0xC0 ? 1 : 0;
        units += continues ? 0 : byte >= 0xF0 ? 2 : 1;
    }
    return pending == 0 ? units : -1;
}
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
const CFAllocatorRef kCFAllocatorDefault = nullptr;
const CFBooleanRef kCFBooleanTrue = constant<CFBooleanRef>(booleanType, true);
const CFBooleanRef kCFBooleanFalse = constant<CFBooleanRef>(booleanType, false);
const CFStringRef kCFPreferencesCurrentUser = constant<CFStringRef>(stringType, "current user");
const CFStringRef kCFPreferencesAnyHost = constant<CFStringRef>(stringType, "any host");
const CFArrayCallBacks kCFTypeArrayCallBacks = {};
const CFDictionaryKeyCallBacks kCFTypeDictionaryKeyCallBacks = {};
const CFDictionaryValueCallBacks kCFTypeDictionaryValueCallBacks = {};
CFTypeRef CFRetain(CFTypeRef reference)
{
    ++check(reference, __func__).references;
    return reference;
}
void CFRelease(CFTypeRef reference)
{
    Object& object = check(reference, __func__);
    if (object.type == anyType || object.type == booleanType || --object.references > 0)
        return;
    for (const Object* each : object.elements)
        CFRelease(each);
    for (const auto& [key, value] : object.entries) {
        CFRelease(key);
        CFRelease(value);
    }
    died(&object, __func__);
    delete &object;
}
CFTypeID CFGetTypeID(CFTypeRef reference)
{
    const CFTypeID type = check(reference, __func__).type;
    return type == realType ? CFTypeID{integerType} : type;
}
CFTypeID CFStringGetTypeID() { return stringType; }
CFStringRef CFStringCreateWithBytes(CFAllocatorRef, const UInt8* bytes, CFIndex count, CFStringEncoding encoding,
                                    Boolean)
{
    const std::string text(reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(count));
    if (failing(__func__) || encoding != kCFStringEncodingUTF8 || utf16Length(text) < 0)
        return nullptr;
    return as<CFStringRef>(newObject(stringType, "text " + text, text));
}
CFIndex CFStringGetLength(CFStringRef text) { return utf16Length(check(text, __func__, stringType).text()); }
CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding) { return 3 * length; }
Boolean CFStringGetCString(CFStringRef text, char* buffer, CFIndex size, CFStringEncoding)
{
    const std::string bytes = check(text, __func__, stringType).text();
    if (failing(__func__) || static_cast<CFIndex>(bytes.size()) >= size)
        return false;
    std::strcpy(buffer, bytes.c_str());
    return true;
}
CFTypeID CFBooleanGetTypeID() { return booleanType; }
Boolean CFBooleanGetValue(CFBooleanRef boolean) { return check(boolean, __func__, booleanType).get<bool>(); }
CFTypeID CFNumberGetTypeID() { return integerType; }
CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void* value)
{
    if (type == kCFNumberFloat64Type)
        return as<CFNumberRef>(newObject(realType, "number", *static_cast<const double*>(value)));
    return as<CFNumberRef>(newObject(integerType, "number", *static_cast<const std::int64_t*>(value)));
}
Boolean CFNumberIsFloatType(CFNumberRef number) { return check(number, __func__).type == realType; }
Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value)
{
    if (type == kCFNumberFloat64Type)
        *static_cast<double*>(value) = check(number, __func__, realType).get<double>();
    else
        *static_cast<std::int64_t*>(value) = check(number, __func__, integerType).get<std::int64_t>();
    return !failing(__func__); // false: the number does not fit
}
CFTypeID CFDataGetTypeID() { return dataType; }
CFDataRef CFDataCreate(CFAllocatorRef, const UInt8* bytes, CFIndex length)
{
    return as<CFDataRef>(newObject(dataType, "data", PropertyData(bytes, bytes + length)));
}
CFIndex CFDataGetLength(CFDataRef data) { return std::ssize(check(data, __func__, dataType).get<PropertyData>()); }
void CFDataGetBytes(CFDataRef data, CFRange range, UInt8* buffer)
{
    const auto bytes = check(data, __func__, dataType).get<PropertyData>();
    if (range.location < 0 || range.length < 0 || range.location + range.length > CFDataGetLength(data))
        return fault("CFDataGetBytes: out of range");
    std::memcpy(buffer, bytes.data() + range.location, static_cast<std::size_t>(range.length));
}
CFTypeID CFArrayGetTypeID() { return arrayType; }
CFMutableArrayRef CFArrayCreateMutable(CFAllocatorRef, CFIndex, const CFArrayCallBacks* calls)
{
    if (calls != &kCFTypeArrayCallBacks)
        fault("CFArrayCreateMutable: elements would not be retained");
    return as<CFMutableArrayRef>(newObject(arrayType, "array"));
}
CFIndex CFArrayGetCount(CFArrayRef array) { return std::ssize(check(array, __func__, arrayType).elements); }
const void* CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index)
{
    return check(array, __func__, arrayType).elements.at(static_cast<std::size_t>(index));
}
void CFArrayAppendValue(CFMutableArrayRef array, const void* value)
{
    check(array, __func__, arrayType).elements.push_back(static_cast<const Object*>(CFRetain(value)));
}
CFTypeID CFDictionaryGetTypeID() { return dictionaryType; }
CFMutableDictionaryRef CFDictionaryCreateMutable(CFAllocatorRef, CFIndex, const CFDictionaryKeyCallBacks* keys,
                                                 const CFDictionaryValueCallBacks* values)
{
    if (keys != &kCFTypeDictionaryKeyCallBacks || values != &kCFTypeDictionaryValueCallBacks)
        fault("CFDictionaryCreateMutable: entries would not be retained");
    return as<CFMutableDictionaryRef>(newObject(dictionaryType, "dictionary"));
}
CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary)
{
    return std::ssize(check(dictionary, __func__, dictionaryType).entries);
}
void CFDictionaryGetKeysAndValues(CFDictionaryRef dictionary, const void** keys, const void** values)
{
    for (const auto& [key, value] : check(dictionary, __func__, dictionaryType).entries) {
        *keys++ = key;
        *values++ = value;
    }
}
void CFDictionaryAddValue(CFMutableDictionaryRef dictionary, const void* key, const void* value)
{
    Object& object = check(dictionary, __func__, dictionaryType);
    for (const auto& [existing, unused] : object.entries) {
        if (existing->value == check(key, __func__).value)
            return;
    }
    object.entries.emplace_back(static_cast<const Object*>(CFRetain(key)),
                                static_cast<const Object*>(CFRetain(value)));
}
CFStringRef CFUUIDCreateString(CFAllocatorRef, CFUUIDRef uuid)
{
    return static_cast<CFStringRef>(makeObject(check(uuid, __func__, uuidType).value));
}
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
    const auto& domain = domainOf(application, user, host, __func__);
    return static_cast<CFDictionaryRef>(makeObject(PropertyDictionary(domain.begin(), domain.end())));
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
