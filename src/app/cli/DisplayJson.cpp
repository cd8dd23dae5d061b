// SPDX-License-Identifier: MIT
#include "app/cli/DisplayJson.h"

#include "base/Json.h"

namespace lumenvale {

namespace {

template <typename T>
OrderedJson orNull(const std::optional<T>& value)
{
    return value ? OrderedJson(*value) : OrderedJson(nullptr);
}

OrderedJson toJson(const DisplayInfo& display)
{
    return {{"id", display.id},
            {"displayID", display.displayID},
            {"name", display.name},
            {"isBuiltIn", display.isBuiltIn},
            {"isMain", display.isMain},
            {"vendor", display.vendor},
            {"model", display.model},
            {"serial", display.serial},
            {"pixelWidth", display.pixelWidth},
            {"pixelHeight", display.pixelHeight},
            {"logicalWidth", display.logicalWidth},
            {"logicalHeight", display.logicalHeight},
            {"refreshRate", display.refreshRate},
            {"nativeResolution", display.nativeResolution},
            {"connection", display.connection},
            {"hardwareSerial", display.hardwareSerial},
            {"method", rawValue(display.method)},
            {"brightness", orNull(display.brightness)},
            {"maximum", display.maximum},
            {"status", display.status},
            {"error", orNull(display.error)}};
}

} // namespace

std::string displaysAsJson(const std::vector<DisplayInfo>& displays)
{
    OrderedJson list = OrderedJson::array();
    for (const DisplayInfo& each : displays)
        list.push_back(toJson(each));
    return writeJson(list, 2);
}

} // namespace lumenvale
