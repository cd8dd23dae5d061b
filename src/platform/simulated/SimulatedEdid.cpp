// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedEdid.h"

#include <array>
#include <cstdio>

namespace lumenvale {

namespace {

// All simulated monitors left the works on the same day, in the same size.
constexpr int yearOfManufacture = 2024;
constexpr int weekOfManufacture = 17;
constexpr int firstEdidYear = 1990;
constexpr int widthMillimetres = 600;
constexpr int heightMillimetres = 340;

} // namespace

std::string simulatedEdidUuid(const MonitorFile& monitor)
{
    std::array<char, 37> text{};
    std::snprintf(text.data(), text.size(), "%04X%02X%02X-0000-0000-%02X%02X-0104B5%02X%02X00", monitor.vendor,
                  monitor.model & 0xFFU, monitor.model >> 8U & 0xFFU, weekOfManufacture,
                  yearOfManufacture - firstEdidYear, widthMillimetres / 10, heightMillimetres / 10);
    return text.data();
}

std::string simulatedManufacturer(std::uint32_t vendor)
{
    std::string letters;
    for (const unsigned shift : {10U, 5U, 0U}) {
        const std::uint32_t letter = vendor >> shift & 0x1FU;
        if (letter < 1 || letter > 26)
            return {};
        letters += static_cast<char>('A' + letter - 1);
    }
    return letters;
}

PropertyDictionary simulatedEdidProperties(const MonitorFile& monitor)
{
    return {
        {"DisplayYearManufacture", yearOfManufacture},        {"DisplayWeekManufacture", weekOfManufacture},
        {"DisplayVendorID", std::int64_t{monitor.vendor}},    {"DisplayProductID", std::int64_t{monitor.model}},
        {"DisplayVerticalImageSize", heightMillimetres},      {"DisplayHorizontalImageSize", widthMillimetres},
        {"DisplaySerialNumber", std::int64_t{monitor.serial}}};
}

} // namespace lumenvale
