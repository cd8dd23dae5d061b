// SPDX-License-Identifier: MIT
#include "hardware/ServiceDiscovery.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>
#include <utility>

namespace lumenvale {

namespace {

constexpr std::int64_t qualifyingScore = 4;
constexpr std::int64_t locationScore = 10;

/// A fragment that an EDID UUID must hold for a display.
struct KeyLoc {
    std::string key;  ///< four upper-case hexadecimal digits
    std::int64_t loc; ///< where it must stand
};

std::string textOf(const PropertyDictionary& dictionary, std::string_view key)
{
    const auto* text = find<std::string>(dictionary, key);
    return text ? *text : std::string();
}

template <typename T>
std::optional<T> propertyOf(const RegistryEntry& entry, const std::string& key)
{
    const std::optional<PropertyValue> value = entry.property(key);
    const T* typed = value ? value->as<T>() : nullptr;
    return typed ? std::optional<T>(*typed) : std::nullopt;
}

bool isFramebuffer(const std::string& name) { return name == "AppleCLCD2" || name == "IOMobileFramebufferShim"; }

IOregService readFramebuffer(const RegistryEntry& entry, std::int64_t ordinal)
{
    IOregService candidate;
    candidate.serviceLocation = ordinal;
    candidate.edidUUID = propertyOf<std::string>(entry, "EDID UUID").value_or("");
    candidate.ioDisplayLocation = entry.path();
    candidate.displayAttributes = propertyOf<PropertyDictionary>(entry, "DisplayAttributes");
    if (candidate.displayAttributes) {
        if (const auto* product = find<PropertyDictionary>(*candidate.displayAttributes, "ProductAttributes")) {
            candidate.manufacturerID = textOf(*product, "ManufacturerID");
            candidate.productName = textOf(*product, "ProductName");
            candidate.alphanumericSerialNumber = textOf(*product, "AlphanumericSerialNumber");
            if (const auto* serial = find<std::int64_t>(*product, "SerialNumber"))
                candidate.serialNumber = *serial;
        }
    }
    if (const auto transport = propertyOf<PropertyDictionary>(entry, "Transport")) {
        candidate.transportUpstream = textOf(*transport, "Upstream");
        candidate.transportDownstream = textOf(*transport, "Downstream");
    }
    return candidate;
}

/// Reads a channel into the pending candidate. A channel that is not external leaves the service of an earlier one
/// at the same framebuffer in place; the framebuffer's display is then refused, since two channels claim to be its
/// own.
void readProxy(const RegistryEntry& entry, IOregService& pending)
{
    pending.location = propertyOf<std::string>(entry, "Location").value_or("");
    if (pending.location == "External")
        pending.service = entry.createAVService();
}

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

std::string productName(const PropertyDictionary& display)
{
    const auto* names = find<PropertyDictionary>(display, "DisplayProductName");
    if (!names || names->empty())
        return {};
    const auto* english = find<std::string>(*names, "en_US");
    const auto* first = names->front().second.as<std::string>();
    return english ? *english : first ? *first : std::string();
}

std::vector<Arm64Service> rank(const DisplayInfo& display, DisplaySystem& system,
                               const std::vector<IOregService>& candidates)
{
    const std::optional<PropertyDictionary> information = system.informationDictionary(display.displayID);
    std::vector<Arm64Service> ranked;
    ranked.reserve(candidates.size());
    for (const IOregService& candidate : candidates) {
        ranked.push_back({.displayID = display.displayID,
                          .service = candidate.service,
                          .serviceLocation = candidate.serviceLocation,
                          .serviceDetails = candidate,
                          .matchScore = information ? matchScore(*information, candidate) : 0});
    }
    std::ranges::stable_sort(ranked, std::ranges::greater(), &Arm64Service::matchScore);
    return ranked;
}

bool qualifies(const Arm64Service& best, const DisplayInfo& display)
{
    const IOregService& details = best.serviceDetails;
    const bool isSameUnit = details.serialNumber != 0 && details.serialNumber == display.serial;
    return best.matchScore >= qualifyingScore || (isSameUnit && details.productName == display.name);
}

} // namespace

std::vector<IOregService> enumerateServices(ServiceRegistry& registry)
{
    std::vector<IOregService> candidates;
    IOregService pending;
    std::int64_t framebuffers = 0;
    registry.forEachEntry([&](const RegistryEntry& entry) {
        const std::string name = entry.name();
        if (isFramebuffer(name)) {
            pending = readFramebuffer(entry, ++framebuffers);
        } else if (name == "DCPAVServiceProxy") {
            readProxy(entry, pending);
            candidates.push_back(pending);
        }
    });
    return candidates;
}

std::int64_t matchScore(const PropertyDictionary& display, const IOregService& candidate)
{
    std::int64_t score = 0;
    for (const KeyLoc& fragment : edidFragments(display)) {
        if (fragment.key != "0000" && holdsFragment(candidate.edidUUID, fragment))
            ++score;
    }
    const auto* location = find<std::string>(display, "IODisplayLocation");
    if (location && !candidate.ioDisplayLocation.empty() && candidate.ioDisplayLocation == *location)
        score += locationScore;
    if (!candidate.productName.empty() && lowercased(candidate.productName) == lowercased(productName(display)))
        ++score;
    const auto* serial = find<std::int64_t>(display, "DisplaySerialNumber");
    if (serial && candidate.serialNumber != 0 && candidate.serialNumber == *serial)
        ++score;
    return score;
}

ServiceChoice chooseService(const DisplayInfo& display, DisplaySystem& system,
                            const std::vector<IOregService>& candidates)
{
    const std::vector<Arm64Service> ranked = rank(display, system, candidates);
    if (ranked.empty() || !qualifies(ranked.front(), display))
        return {};
    const Arm64Service& best = ranked.front();
    const auto isElsewhere = [&best](const Arm64Service& each) {
        return each.serviceLocation != best.serviceLocation;
    };
    const auto rival = std::ranges::find_if(ranked, isElsewhere);
    if (rival != ranked.end() && rival->matchScore >= best.matchScore)
        return {};
    ServiceChoice choice{best.serviceDetails, nullptr};
    for (const Arm64Service& each : ranked) {
        if (isElsewhere(each) || !each.service)
            continue;
        if (choice.service) // several claim to be the display's: none is trusted
            return {best.serviceDetails, nullptr};
        choice.service = each.service;
    }
    return choice;
}

} // namespace lumenvale
