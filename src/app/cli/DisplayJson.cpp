// SPDX-License-Identifier: MIT
#include "app/cli/DisplayJson.h"

#include "base/Json.h"

namespace lumenvale {

namespace {

/// Calls `visit` with each field's name and the field.
template <typename Display, typename Visit>
void eachField(Display& display, const Visit& visit)
{
    visit("id", display.id);
    visit("displayID", display.displayID);
    visit("name", display.name);
    visit("isBuiltIn", display.isBuiltIn);
    visit("isMain", display.isMain);
    visit("vendor", display.vendor);
    visit("model", display.model);
    visit("serial", display.serial);
    visit("pixelWidth", display.pixelWidth);
    visit("pixelHeight", display.pixelHeight);
    visit("logicalWidth", display.logicalWidth);
    visit("logicalHeight", display.logicalHeight);
    visit("refreshRate", display.refreshRate);
    visit("nativeResolution", display.nativeResolution);
    visit("connection", display.connection);
    visit("hardwareSerial", display.hardwareSerial);
    visit("method", display.method);
    visit("brightness", display.brightness);
    visit("maximum", display.maximum);
    visit("status", display.status);
    visit("error", display.error);
    visit("levels", display.levels);
}

template <typename T>
OrderedJson encoded(const T& value)
{
    return value;
}
OrderedJson encoded(ControlMethod method) { return rawValue(method); }
OrderedJson encoded(const LevelRange& levels) { return {{"lowest", levels.lowest}, {"highest", levels.highest}}; }
template <typename T>
OrderedJson encoded(const std::optional<T>& value)
{
    return value ? encoded(*value) : OrderedJson(nullptr);
}

/// What is of another kind leaves the value as it is, and is false.
template <typename T>
bool decode(const Json& json, T& value)
{
    const bool fits = std::is_same_v<T, bool>          ? json.is_boolean()
                      : std::is_same_v<T, std::string> ? json.is_string()
                                                       : json.is_number();
    if (fits)
        json.get_to(value);
    return fits;
}
bool decode(const Json& json, ControlMethod& method)
{
    for (const ControlMethod each : {ControlMethod::apple, ControlMethod::ddc, ControlMethod::unavailable}) {
        if (json == rawValue(each)) {
            method = each;
            return true;
        }
    }
    return false;
}
bool decode(const Json& json, LevelRange& levels)
{
    return json.is_object() && decode(json.value("lowest", Json()), levels.lowest) &&
           decode(json.value("highest", Json()), levels.highest);
}
template <typename T>
bool decode(const Json& json, std::optional<T>& value)
{
    T found{};
    const bool fits = decode(json, found);
    if (fits)
        value = std::move(found);
    return fits;
}

OrderedJson toJson(const DisplayInfo& display)
{
    OrderedJson object;
    eachField(display, [&object](const char* name, const auto& field) { object[name] = encoded(field); });
    if (!display.levels)
        object.erase("levels"); // most displays have none
    return object;
}

} // namespace

std::string displaysAsJson(const std::vector<DisplayInfo>& displays)
{
    OrderedJson list = OrderedJson::array();
    for (const DisplayInfo& each : displays)
        list.push_back(toJson(each));
    return writeJson(list, 2);
}

std::string displayAsJson(const DisplayInfo& display) { return writeJson(toJson(display)); }

std::optional<std::vector<DisplayInfo>> displaysFromJson(std::string_view text)
{
    const auto list = parseJson(text);
    if (!list || !list->is_array())
        return std::nullopt;
    std::vector<DisplayInfo> displays;
    for (const Json& object : *list) {
        if (!object.is_object())
            return std::nullopt;
        eachField(displays.emplace_back(), [&object](const char* name, auto& field) {
            if (const auto found = object.find(name); found != object.end())
                decode(*found, field);
        });
    }
    return displays;
}

} // namespace lumenvale
