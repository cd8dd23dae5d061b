// SPDX-License-Identifier: MIT
// Preferences as a person or a broken disk left them: no crash, and what is read is what would be written again.
#include "platform/qt/PreferenceJson.h"

#include <cstdlib>

using namespace lumenvale;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto file = parseOrderedJson({reinterpret_cast<const char*>(data), size});
    if (!file || !file->is_object())
        return 0;
    OrderedJson again = OrderedJson::object();
    for (const auto& [key, json] : file->items()) {
        if (const auto value = preferenceFromJson(key, json))
            again[key] = preferenceToJson(key, *value);
    }
    const auto reread = parseOrderedJson(writeJson(again, 2));
    if (!reread)
        std::abort();
    for (const auto& [key, json] : file->items()) {
        if (const auto value = preferenceFromJson(key, json);
            value && preferenceFromJson(key, (*reread)[key]) != value)
            std::abort();
    }
    return 0;
}
