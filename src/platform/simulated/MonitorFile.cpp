// SPDX-License-Identifier: MIT
#include "platform/simulated/MonitorFile.h"

#include "base/Json.h"
#include "base/Uuid.h"

#include <algorithm>
#include <limits>
#include <type_traits>
#include <vector>

namespace lumenvale {

namespace {

constexpr std::int64_t largestLength = 100'000; // of a screen's side, in pixels or points
constexpr std::int64_t longestDelay = 10'000;   // milliseconds

/// Reads the keys of one object one by one; keeps the first mistake; knows at the end which keys nobody asked for.
class ObjectReader {
public:
    ObjectReader(const OrderedJson& source, std::string section) : object(source), prefix(std::move(section))
    {
        if (!object.is_object())
            error =
                prefix.empty() ? "holds something else than one JSON object." : quoted("") + " must be an object.";
    }

    void read(const char* key, bool& target)
    {
        const OrderedJson* value = take(key);
        if (value && !value->is_boolean())
            fail(key, "must be true or false");
        else if (value)
            target = value->get<bool>();
    }

    void read(const char* key, std::string& target)
    {
        const OrderedJson* value = take(key);
        if (value && !value->is_string())
            fail(key, "must be a text");
        else if (value)
            target = value->get<std::string>();
    }

    template <typename Integer>
    requires std::is_integral_v<Integer>
    void read(const char* key, Integer& target, std::int64_t least, std::int64_t most)
    {
        const OrderedJson* value = take(key);
        if (!value)
            return;
        if (!value->is_number_integer() || !isBetween(*value, least, most))
            fail(key, "must be a whole number from " + std::to_string(least) + " to " + std::to_string(most));
        else
            target = static_cast<Integer>(value->get<std::int64_t>());
    }

    void read(const char* key, double& target, double most)
    {
        const OrderedJson* value = take(key);
        if (value && !(value->is_number() && value->get<double>() >= 0 && value->get<double>() <= most))
            fail(key, "must be a number from 0 to " + std::to_string(static_cast<std::int64_t>(most)));
        else if (value)
            target = value->get<double>();
    }

    /// As above; null, where it `mayBeNull`, counts as left out.
    template <typename T, typename... Range>
    void read(const char* key, std::optional<T>& target, bool mayBeNull, Range... range)
    {
        if (!object.is_object() || !object.contains(key))
            return;
        if (mayBeNull && object[key].is_null()) {
            take(key);
            return;
        }
        T value{};
        read(key, value, range...);
        target = value;
    }

    const OrderedJson* section(const char* key) { return take(key); }

    void fail(const std::string& key, const std::string& what)
    {
        if (error.empty())
            error = quoted(key) + ' ' + what + '.';
    }

    void refuse(const std::string& mistake)
    {
        if (error.empty())
            error = mistake;
    }

    bool has(const char* key) const { return object.is_object() && object.contains(key); }

    /// The first mistake, unknown keys included; empty when there is none.
    std::string mistake()
    {
        if (error.empty()) {
            for (const auto& [key, value] : object.items()) {
                if (std::find(known.begin(), known.end(), key) == known.end())
                    fail(key, "is not a known key");
            }
        }
        return error;
    }

private:
    const OrderedJson* take(const char* key)
    {
        known.emplace_back(key);
        return has(key) ? &object[key] : nullptr;
    }

    static bool isBetween(const OrderedJson& value, std::int64_t least, std::int64_t most)
    {
        if (value.is_number_unsigned() &&
            value.get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()})
            return false;
        return value.get<std::int64_t>() >= least && value.get<std::int64_t>() <= most;
    }

    /// A key as the user finds it: "ddc.maximum".
    std::string quoted(const std::string& key) const
    {
        const std::string dot = prefix.empty() || key.empty() ? "" : ".";
        return writeJson(prefix + dot + key);
    }

    const OrderedJson& object;
    std::string prefix;
    std::string error;
    std::vector<std::string> known;
};

NativeControl readNative(ObjectReader& reader)
{
    constexpr std::int64_t longWord = std::numeric_limits<std::uint32_t>::max();
    NativeControl native;
    reader.read("brightness", native.brightness, 1.0);
    reader.read("maximum", native.maximum, true, std::int64_t{1}, longWord);
    reader.read("readFails", native.readFails);
    reader.read("writeFails", native.writeFails);
    reader.read("overridesTo", native.overridesTo, true, 1.0);
    return native;
}

DdcControl readDdc(ObjectReader& reader)
{
    constexpr std::int64_t word = std::numeric_limits<std::uint16_t>::max();
    constexpr std::int64_t longWord = std::numeric_limits<std::uint32_t>::max();
    DdcControl ddc;
    reader.read("maximum", ddc.maximum, 1, word);
    if (!reader.has("current"))
        ddc.current = ddc.maximum / 2;
    reader.read("current", ddc.current, 0, ddc.maximum);
    reader.read("silent", ddc.silent);
    reader.read("ignoresWrites", ddc.ignoresWrites);
    reader.read("overridesTo", ddc.overridesTo, true, 0, ddc.maximum);
    reader.read("failNextTransfers", ddc.failNextTransfers, 0, longWord);
    reader.read("corruptEvery", ddc.corruptEvery, 0, longWord);
    reader.read("delayMs", ddc.delayMs, 0, longestDelay);
    return ddc;
}

template <typename Control, typename Read>
void readSection(ObjectReader& reader, const char* key, std::optional<Control>& target, Read read)
{
    if (const OrderedJson* json = reader.section(key)) {
        ObjectReader section(*json, key);
        target = read(section);
        reader.refuse(section.mistake());
    }
}

void readIdentity(ObjectReader& reader, MonitorFile& monitor)
{
    constexpr std::int64_t word = std::numeric_limits<std::uint16_t>::max();
    constexpr std::int64_t longWord = std::numeric_limits<std::uint32_t>::max();
    reader.read("name", monitor.name);
    if (monitor.name.empty())
        reader.fail("name", reader.has("name") ? "must not be empty" : "is missing");
    reader.read("displayID", monitor.displayID, false, std::int64_t{1}, longWord);
    reader.read("uuid", monitor.uuid, false);
    if (monitor.uuid) {
        const auto uuid = Uuid::parse(*monitor.uuid);
        if (uuid)
            monitor.uuid = uuid->toString();
        else
            reader.fail("uuid", "must be 32 hexadecimal digits in groups of 8-4-4-4-12");
    }
    reader.read("isBuiltIn", monitor.isBuiltIn);
    reader.read("isMain", monitor.isMain);
    reader.read("vendor", monitor.vendor, 0, word);
    reader.read("model", monitor.model, 0, word);
    reader.read("serial", monitor.serial, 0, longWord);
}

void readScreen(ObjectReader& reader, MonitorFile& monitor)
{
    reader.read("pixelWidth", monitor.pixelWidth, 0, largestLength);
    reader.read("pixelHeight", monitor.pixelHeight, 0, largestLength);
    monitor.logicalWidth = static_cast<double>(monitor.pixelWidth);
    monitor.logicalHeight = static_cast<double>(monitor.pixelHeight);
    reader.read("logicalWidth", monitor.logicalWidth, double{largestLength});
    reader.read("logicalHeight", monitor.logicalHeight, double{largestLength});
    reader.read("refreshRate", monitor.refreshRate, 10'000.0);
    reader.read("nativePixelWidth", monitor.nativePixelWidth, false, std::int64_t{1}, largestLength);
    reader.read("nativePixelHeight", monitor.nativePixelHeight, false, std::int64_t{1}, largestLength);
    reader.read("alphanumericSerial", monitor.alphanumericSerial);
    reader.read("upstream", monitor.upstream);
    reader.read("downstream", monitor.downstream);
    reader.read("online", monitor.online);
}

std::string withValue(const std::string& text, const char* section, const char* key, OrderedJson value)
{
    OrderedJson json = parseOrderedJson(text).value();
    json[section][key] = std::move(value);
    return writeJson(json, 2) + '\n';
}

} // namespace

tl::expected<MonitorFile, std::string> parseMonitorFile(const std::string& text, const std::string& fileName)
{
    const auto json = parseOrderedJson(text);
    if (!json)
        return tl::unexpected(fileName + ' ' + json.error() + '.');
    ObjectReader reader(*json, "");
    MonitorFile monitor;
    readIdentity(reader, monitor);
    readScreen(reader, monitor);
    readSection(reader, "native", monitor.native, readNative);
    readSection(reader, "ddc", monitor.ddc, readDdc);
    if (const std::string mistake = reader.mistake(); !mistake.empty())
        return tl::unexpected(fileName + ": " + mistake);
    return monitor;
}

std::string withNativeBrightness(const std::string& text, double brightness)
{
    return withValue(text, "native", "brightness", brightness);
}

std::string withDdcCurrent(const std::string& text, std::uint16_t current)
{
    return withValue(text, "ddc", "current", current);
}

std::string withFailNextTransfers(const std::string& text, std::uint32_t count)
{
    return withValue(text, "ddc", "failNextTransfers", count);
}

} // namespace lumenvale
