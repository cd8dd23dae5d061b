// SPDX-License-Identifier: MIT
// The stored form of presets. A problem reads "[3].shortcut.command: expected true or false, found a number":
// each level of the document puts its own place in front while the problem travels outwards.
#include "base/Json.h"
#include "presets/BrightnessPreset.h"

#include <cmath>
#include <limits>
#include <string_view>
#include <utility>

namespace lumenvale {

namespace {

template <typename T>
using Result = tl::expected<T, std::string>;

tl::unexpected<std::string> mismatch(std::string_view expected, const Json& found)
{
    std::string problem = ": expected ";
    problem += expected;
    return tl::unexpected(problem + ", found " + found.type_name());
}

Result<bool> readFlag(const Json& value)
{
    if (!value.is_boolean())
        return mismatch("true or false", value);
    return value.get<bool>();
}

Result<std::string> readText(const Json& value)
{
    if (!value.is_string())
        return mismatch("a string", value);
    return value.get<std::string>();
}

template <typename Integer>
Result<Integer> readInteger(const Json& value)
{
    if (value.is_number_unsigned()) {
        if (std::in_range<Integer>(value.get<std::uint64_t>()))
            return static_cast<Integer>(value.get<std::uint64_t>());
    } else if (value.is_number_integer() && std::in_range<Integer>(value.get<std::int64_t>())) {
        return static_cast<Integer>(value.get<std::int64_t>());
    } else if (value.is_number_float()) { // a person may write 1e1 or 16.0
        const double number = value.get<double>();
        constexpr double least = std::numeric_limits<Integer>::min();
        const double end = std::ldexp(1.0, std::numeric_limits<Integer>::digits);
        if (number >= least && number < end && number == std::trunc(number))
            return static_cast<Integer>(number);
    }
    return mismatch("a whole number from " + std::to_string(std::numeric_limits<Integer>::min()) + " to " +
                        std::to_string(std::numeric_limits<Integer>::max()),
                    value);
}

Result<double> readLevel(const Json& value)
{
    return value.is_number() ? value.get<double>() : std::numeric_limits<double>::quiet_NaN();
}

Result<Uuid> readID(const Json& value)
{
    const std::optional<Uuid> id =
        value.is_string() ? Uuid::parse(value.get_ref<const std::string&>()) : std::nullopt;
    if (!id)
        return mismatch("a UUID", value);
    return *id;
}

template <typename T>
bool takeRequired(const Json& object, const char* key, Result<T> (*read)(const Json&), T& target,
                  std::string& problem)
{
    const auto entry = object.find(key);
    if (entry == object.end()) {
        problem = std::string(": the key \"") + key + "\" is missing";
        return false;
    }
    Result<T> value = read(*entry);
    if (!value) {
        problem = std::string(".") + key + value.error();
        return false;
    }
    target = std::move(*value);
    return true;
}

template <typename T>
bool takeOptional(const Json& object, const char* key, Result<T> (*read)(const Json&), std::optional<T>& target,
                  std::string& problem)
{
    const auto entry = object.find(key);
    if (entry == object.end() || entry->is_null())
        return true;
    return takeRequired(object, key, read, target.emplace(), problem);
}

template <typename T, Result<T> (*read)(const Json&)>
Result<std::map<std::string, T>> readMap(const Json& value)
{
    if (!value.is_object())
        return mismatch("an object", value);
    std::map<std::string, T> result;
    for (const auto& [key, entry] : value.items()) {
        Result<T> each = read(entry);
        if (!each)
            return tl::unexpected("[\"" + key + "\"]" + each.error());
        result.insert_or_assign(key, std::move(*each));
    }
    return result;
}

Result<PresetShortcut> readShortcut(const Json& value)
{
    if (!value.is_object())
        return mismatch("an object", value);
    PresetShortcut shortcut;
    std::string problem;
    if (takeRequired(value, "functionKey", readInteger<std::int64_t>, shortcut.functionKey, problem) &&
        takeRequired(value, "command", readFlag, shortcut.command, problem) &&
        takeRequired(value, "option", readFlag, shortcut.option, problem) &&
        takeRequired(value, "control", readFlag, shortcut.control, problem) &&
        takeRequired(value, "shift", readFlag, shortcut.shift, problem) &&
        takeOptional(value, "recordedKeyCode", readInteger<std::uint32_t>, shortcut.recordedKeyCode, problem) &&
        takeOptional(value, "recordedKeyLabel", readText, shortcut.recordedKeyLabel, problem))
        return shortcut;
    return tl::unexpected(problem);
}

Result<BrightnessPreset> readPreset(const Json& value)
{
    if (!value.is_object())
        return mismatch("an object", value);
    BrightnessPreset preset;
    std::string problem;
    if (takeRequired(value, "id", readID, preset.id, problem) &&
        takeRequired(value, "name", readText, preset.name, problem) &&
        takeOptional(value, "shortcut", readShortcut, preset.shortcut, problem) &&
        takeRequired(value, "values", readMap<double, readLevel>, preset.values, problem) &&
        takeRequired(value, "displayNames", readMap<std::string, readText>, preset.displayNames, problem))
        return preset;
    return tl::unexpected(problem);
}

OrderedJson jsonOf(const PresetShortcut& shortcut)
{
    OrderedJson object = {
        {"functionKey", shortcut.functionKey}, {"command", shortcut.command}, {"option", shortcut.option},
        {"control", shortcut.control},         {"shift", shortcut.shift},
    };
    if (shortcut.recordedKeyCode)
        object["recordedKeyCode"] = *shortcut.recordedKeyCode;
    if (shortcut.recordedKeyLabel)
        object["recordedKeyLabel"] = *shortcut.recordedKeyLabel;
    return object;
}

OrderedJson jsonOf(const BrightnessPreset& preset)
{
    OrderedJson object = {{"id", preset.id.toString()}, {"name", preset.name}};
    if (preset.shortcut)
        object["shortcut"] = jsonOf(*preset.shortcut);
    object["values"] = OrderedJson::object_t(preset.values.begin(), preset.values.end());
    object["displayNames"] = OrderedJson::object_t(preset.displayNames.begin(), preset.displayNames.end());
    return object;
}

} // namespace

tl::expected<PropertyData, std::string> encodePresets(const std::vector<BrightnessPreset>& presets)
{
    OrderedJson document = OrderedJson::array();
    for (const BrightnessPreset& preset : presets) {
        for (const auto& [display, level] : preset.values) {
            if (!std::isfinite(level))
                return tl::unexpected("The level of " + display + " in " + displayName(preset) +
                                      " is not a number.");
        }
        document.push_back(jsonOf(preset));
    }
    const std::string text = writeJson(document);
    return PropertyData(text.begin(), text.end());
}

tl::expected<std::vector<BrightnessPreset>, std::string> decodePresets(const PropertyData& data)
{
    // As characters: a library's traits for other types are not standard, and newer ones lack them.
    const auto parsed = parseJson({reinterpret_cast<const char*>(data.data()), data.size()});
    if (!parsed)
        return tl::unexpected("the document " + parsed.error());
    const Json& document = *parsed;
    if (!document.is_array())
        return tl::unexpected("the document" + mismatch("an array", document).value());
    std::vector<BrightnessPreset> presets;
    presets.reserve(document.size());
    for (std::size_t i = 0; i < document.size(); ++i) {
        Result<BrightnessPreset> preset = readPreset(document[i]);
        if (!preset)
            return tl::unexpected("[" + std::to_string(i) + "]" + preset.error());
        presets.push_back(std::move(*preset));
    }
    return presets;
}

} // namespace lumenvale
