// SPDX-License-Identifier: MIT
#include "hardware/MatchScore.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace lumenvale {

namespace {

constexpr std::int64_t locationScore = 10;

std::string hexadecimal(const char* format, std::int64_t value, std::int64_t limit)
{
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), format,
                  static_cast<unsigned>(std::clamp<std::int64_t>(value, 0, limit)));
    return text.data();
}

std::string byteText(std::int64_t value) { return hexadecimal("%02X", value, 0xFF); }

/// Whole centimetres, as EDID has them.
std::string sizeText(std::int64_t millimetres) { return byteText(millimetres / 10); }

/// Empty unless the dictionary has all six facts.
std::vector<KeyLoc> edidFragments(const PropertyDictionary& display)
{
    const auto* year = find<std::int64_t>(display, "DisplayYearManufacture");
    const auto* week = find<std::int64_t>(display, "DisplayWeekManufacture");
    const auto* vendor = find<std::int64_t>(display, "DisplayVendorID");
    const auto* product = find<std::int64_t>(display, "DisplayProductID");
    const auto* height = find<std::int64_t>(display, "DisplayVerticalImageSize");
    const auto* width = find<std::int64_t>(display, "DisplayHorizontalImageSize");
    if (!year || !week || !vendor || !product || !height || !width)
        return {};
    const std::int64_t productNumber = std::clamp<std::int64_t>(*product, 0, 0xFFFF);
    // No year reaches so far back that the subtraction could overflow once it is clamped from below.
    const std::int64_t yearsSince1990 = std::max<std::int64_t>(*year, 1990) - 1990;
    return {
        {hexadecimal("%04X", *vendor, 0xFFFF), 0},
        {byteText(productNumber & 0xFF) + byteText(productNumber >> 8), 4},
        {byteText(*week) + byteText(yearsSince1990), 19},
        {sizeText(*width) + sizeText(*height), 30},
    };
}

/// The four characters that end where the fragment ends, or at the end of a text that is shorter.
bool holdsFragment(const std::string& uuid, const KeyLoc& fragment)
{
    const std::size_t end = std::min(uuid.size(), static_cast<std::size_t>(fragment.loc) + fragment.key.size());
    const std::size_t begin = end < fragment.key.size() ? 0 : end - fragment.key.size();
    return uuid.compare(begin, end - begin, fragment.key) == 0;
}

/// Lower case for the ASCII letters; the bytes of other characters compare as they are.
std::string lowercased(std::string text)
{
    for (char& letter : text) {
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    }
    return text;
}

/// The English name, else the first.
std::string productName(const PropertyDictionary& display)
{
    const auto* names = find<PropertyDictionary>(display, "DisplayProductName");
    if (!names || names->empty())
        return {};
    const auto* english = find<std::string>(*names, "en_US");
    const auto* first = names->front().second.as<std::string>();
    return english ? *english : first ? *first : std::string();
}

} // namespace

MatchFacts matchFacts(const PropertyDictionary& display)
{
    const auto* location = find<std::string>(display, "IODisplayLocation");
    const auto* serial = find<std::int64_t>(display, "DisplaySerialNumber");
    return {.fragments = edidFragments(display),
            .location = location ? *location : std::string(),
            .name = lowercased(productName(display)),
            .serialNumber = serial ? *serial : 0};
}

std::int64_t matchScore(const MatchFacts& display, const IOregService& candidate)
{
    std::int64_t score = 0;
    for (const KeyLoc& fragment : display.fragments) {
        if (fragment.key != "0000" && holdsFragment(candidate.edidUUID, fragment))
            ++score;
    }
    if (!candidate.ioDisplayLocation.empty() && candidate.ioDisplayLocation == display.location)
        score += locationScore;
    if (!candidate.productName.empty() && lowercased(candidate.productName) == display.name)
        ++score;
    if (candidate.serialNumber != 0 && candidate.serialNumber == display.serialNumber)
        ++score;
    return score;
}

} // namespace lumenvale
