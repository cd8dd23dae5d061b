// SPDX-License-Identifier: MIT
// What the stand-ins share: objects with reference counts, and the lists of what lives and of what went wrong.
#pragma once

#include "Machine.h"

namespace lumenvale::standin {
/// The first ones in the order of PropertyValue's alternatives.
enum : CFTypeID { booleanType, integerType, realType, stringType, dataType, arrayType, dictionaryType };
enum : CFTypeID { uuidType = dictionaryType + 1, modeType, serviceType, anyType };
/// Every CoreFoundation object; which fields count depends on the type.
struct Object {
    CFTypeID type = anyType;
    long references = 1;
    PropertyValue value = 0; ///< but of arrays and dictionaries
    std::vector<const Object*> elements;
    std::vector<std::pair<const Object*, const Object*>> entries;
    Display display;

    template <typename T>
    T get() const
    {
        return value.as<T>() ? *value.as<T>() : T();
    }
    std::string text() const { return get<std::string>(); }
};
void fault(const std::string& text);
/// Enters something into the list of what must be given back.
void born(const void* thing, const std::string& what);
/// Takes it out; a fault, and false, when it is not in it.
bool died(const void* thing, const std::string& function);
Object* newObject(CFTypeID type, const std::string& what, PropertyValue value = 0);
/// The object; after a fault, if it is null, given back already or of another type, an empty one.
Object& check(CFTypeRef object, const std::string& function, CFTypeID type = anyType);
/// A fault outside of an autorelease pool.
void needPool(const char* function);
/// Counts the call; the code when the machine wants it to fail.
std::optional<int> failing(const char* function);
template <typename Reference>
Reference as(const Object* object)
{
    return reinterpret_cast<Reference>(const_cast<Object*>(object));
}
} // namespace lumenvale::standin
