// SPDX-License-Identifier: MIT
#include "hardware/ServiceDiscovery.h"

#include "hardware/MatchScore.h"

#include <algorithm>
#include <functional>
#include <string_view>
#include <utility>

namespace lumenvale {

namespace {

constexpr std::int64_t qualifyingScore = 4;

/// A candidate seen from one display.
struct Ranked {
    const IOregService* candidate;
    std::int64_t score;
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

/// Best first; equal scores stay in the order of the walk.
std::vector<Ranked> rank(const std::vector<IOregService>& candidates,
                         const std::optional<PropertyDictionary>& information)
{
    const MatchFacts facts = information ? matchFacts(*information) : MatchFacts();
    std::vector<Ranked> ranked;
    ranked.reserve(candidates.size());
    for (const IOregService& candidate : candidates)
        ranked.push_back({&candidate, matchScore(facts, candidate)});
    std::ranges::stable_sort(ranked, std::ranges::greater(), &Ranked::score);
    return ranked;
}

bool qualifies(const Ranked& best, const DisplayInfo& display)
{
    const IOregService& details = *best.candidate;
    const bool isSameUnit = details.serialNumber != 0 && details.serialNumber == display.serial;
    return best.score >= qualifyingScore || (isSameUnit && details.productName == display.name);
}

bool hasRival(const std::vector<Ranked>& ranked)
{
    const Ranked& best = ranked.front();
    const auto rival = std::ranges::find_if(ranked, [&best](const Ranked& each) {
        return each.candidate->serviceLocation != best.candidate->serviceLocation;
    });
    return rival != ranked.end() && rival->score >= best.score;
}

/// The open channels at `location`. Where several claim to be a display's own, none is trusted.
std::vector<std::shared_ptr<AVService>> servicesAt(std::int64_t location,
                                                   const std::vector<IOregService>& candidates)
{
    std::vector<std::shared_ptr<AVService>> services;
    for (const IOregService& each : candidates) {
        if (each.serviceLocation == location && each.service)
            services.push_back(each.service);
    }
    return services;
}

Route routeOf(const Arm64Service& match)
{
    const IOregService& details = match.serviceDetails;
    Route route{.service = match.service,
                .upstream = details.transportUpstream,
                .downstream = details.transportDownstream,
                .serialNumber = details.alphanumericSerialNumber};
    if (!details.displayAttributes)
        return route;
    const auto* width = find<std::int64_t>(*details.displayAttributes, "NativeFormatHorizontalPixels");
    const auto* height = find<std::int64_t>(*details.displayAttributes, "NativeFormatVerticalPixels");
    if (width && height)
        route.nativeFormat = PixelSize{*width, *height};
    return route;
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

std::optional<Arm64Service> chooseService(const DisplayInfo& display, DisplaySystem& system,
                                          const std::vector<IOregService>& candidates)
{
    const std::vector<Ranked> ranked = rank(candidates, system.informationDictionary(display.displayID));
    if (ranked.empty() || !qualifies(ranked.front(), display) || hasRival(ranked))
        return std::nullopt;
    const IOregService& best = *ranked.front().candidate;
    const std::vector<std::shared_ptr<AVService>> services = servicesAt(best.serviceLocation, candidates);
    return Arm64Service{.displayID = display.displayID,
                        .service = services.size() == 1 ? services.front() : nullptr,
                        .serviceLocation = best.serviceLocation,
                        .discouraged = services.size() > 1,
                        .dummy = best.edidUUID.empty(),
                        .serviceDetails = best,
                        .matchScore = ranked.front().score};
}

ServiceDiscovery::ServiceDiscovery(std::unique_ptr<ServiceRegistry> registry,
                                   std::unique_ptr<DisplaySystem> system)
    : registry(std::move(registry)), system(std::move(system))
{
}

std::vector<Route> ServiceDiscovery::find(const std::vector<DisplayInfo>& displays,
                                          std::chrono::milliseconds /*patience*/)
{
    const std::vector<IOregService> candidates = enumerateServices(*registry);
    std::vector<Route> routes;
    for (const DisplayInfo& display : displays) {
        const std::optional<Arm64Service> match = chooseService(display, *system, candidates);
        routes.push_back(match ? routeOf(*match) : Route());
    }
    return routes;
}

std::optional<std::string> ServiceDiscovery::identifier(std::uint32_t displayID)
{
    if (!system->isOnline(displayID))
        return std::nullopt;
    return stableIdentifier(system->uuid(displayID), displayID);
}

} // namespace lumenvale
