// SPDX-License-Identifier: MIT
#include "Core.h"
#include "platform/macos/foundation/AutoreleasePool.h"

namespace lumenvale::standin {
namespace {
struct State {
    Machine machine;
    std::map<const void*, std::string> living;
    std::vector<std::string> faults;
    std::map<std::string, int> calls;
    std::intptr_t pools = 0;
};
State& state()
{
    static auto& only = *new State; // outlives every static object of the tests
    return only;
}
} // namespace

Machine& machine() { return state().machine; }
Machine& reset() { return (state() = State()).machine; }
std::vector<std::string> leaks()
{
    std::vector<std::string> texts;
    for (const auto& [thing, what] : state().living)
        texts.push_back(what);
    texts.resize(texts.size() + static_cast<std::size_t>(state().pools), "autorelease pool");
    return texts;
}
std::vector<std::string> faults() { return state().faults; }
int calls(const std::string& function) { return state().calls[function]; }
bool isInPool() { return state().pools > 0; }
void fault(const std::string& text) { state().faults.push_back(text); }
void born(const void* thing, const std::string& what) { state().living.insert_or_assign(thing, what); }
bool died(const void* thing, const std::string& function)
{
    if (state().living.erase(thing) == 1)
        return true;
    fault(function + ": given back already, or never taken");
    return false;
}
Object* newObject(CFTypeID type, const std::string& what, PropertyValue value)
{
    auto* object = new Object{.type = type, .value = std::move(value)};
    born(object, what);
    return object;
}
Object& check(CFTypeRef reference, const std::string& function, CFTypeID type)
{
    static Object nothing;
    auto* object = static_cast<Object*>(const_cast<void*>(reference));
    const bool isConstant = reference == kCFBooleanTrue || reference == kCFBooleanFalse ||
                            reference == kCFPreferencesCurrentUser || reference == kCFPreferencesAnyHost;
    if (!object || (!isConstant && !state().living.contains(object)))
        fault(function + (object ? ": used after it was given back" : ": null"));
    else if (type != anyType && object->type != type)
        fault(function + ": an object of another type");
    else
        return *object;
    return nothing = Object();
}
void needPool(const char* function)
{
    if (!isInPool())
        fault(std::string(function) + ": outside of an autorelease pool");
}
std::optional<int> failing(const char* function)
{
    ++state().calls[function];
    const auto found = machine().failures.find(function);
    if (found == machine().failures.end() || found->second.times-- <= 0)
        return std::nullopt;
    return found->second.code;
}
CFTypeRef makeObject(const PropertyValue& value)
{
    if (const bool* flag = value.as<bool>())
        return *flag ? kCFBooleanTrue : kCFBooleanFalse;
    Object* object = newObject(value.storage.index(), "a property-list value", value);
    if (const auto* array = value.as<PropertyArray>()) {
        for (const PropertyValue& each : *array)
            object->elements.push_back(static_cast<const Object*>(makeObject(each)));
    } else if (const auto* dictionary = value.as<PropertyDictionary>()) {
        for (const auto& [key, each] : *dictionary)
            object->entries.emplace_back(static_cast<const Object*>(makeObject(key)),
                                         static_cast<const Object*>(makeObject(each)));
    }
    return object;
}
} // namespace lumenvale::standin

void* objc_autoreleasePoolPush() { return reinterpret_cast<void*>(++lumenvale::standin::state().pools); }
void objc_autoreleasePoolPop(void* pool)
{
    if (reinterpret_cast<std::intptr_t>(pool) != lumenvale::standin::state().pools--)
        lumenvale::standin::fault("objc_autoreleasePoolPop: not the innermost pool");
}
