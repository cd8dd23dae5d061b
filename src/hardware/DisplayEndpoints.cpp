// SPDX-License-Identifier: MIT
#include "hardware/DisplayEndpoints.h"

#include "hardware/DdcExchange.h"

#include <cmath>
#include <utility>

namespace lumenvale {

namespace {

using namespace std::chrono_literals;

constexpr DdcTiming probeTiming{.retries = 2};
constexpr DdcTiming writeTiming{.retries = 2};
/// A display that does not answer at once is left alone until the next round.
constexpr DdcTiming monitoringTiming{.retries = 0};
/// What the user has not asked for gives way to what others do with the display: requests must not wait behind it.
constexpr auto monitoringPatience = 200ms;
/// Monitors need it to take a value over before they report it.
constexpr auto settleWait = 80ms;
/// How far a native value may differ from the requested one and still count as verified: the system's 32-bit
/// floating-point numbers differ by less, and panels on macOS have finer steps than this.
constexpr double nativeTolerance = 0.0001;

double fraction(const VcpReading& reading) { return static_cast<double>(reading.current) / reading.maximum; }

void describe(DisplayInfo& display, const Route& route)
{
    const bool hasBothEnds = !route.upstream.empty() && !route.downstream.empty();
    const std::string connection = route.upstream + (hasBothEnds ? " → " : "") + route.downstream;
    if (!connection.empty())
        display.connection = connection;
    if (!route.serialNumber.empty())
        display.hardwareSerial = route.serialNumber;
    if (route.nativeFormat)
        display.nativeResolution =
            std::to_string(route.nativeFormat->width) + " × " + std::to_string(route.nativeFormat->height);
    if (display.isBuiltIn)
        display.connection = "Internal";
}

} // namespace

DisplayEndpoints::DisplayEndpoints(HardwareAccess access)
    : holdWait{access.pause, access.log, access.stopping}, access(guarded(std::move(access))),
      native(std::move(this->access.native))
{
}

std::vector<DisplayInfo> DisplayEndpoints::inspect(const std::vector<DisplayInfo>& displays)
{
    endpoints.clear();
    return probeAll(displays, holdPatience);
}

std::vector<DisplayInfo> DisplayEndpoints::inspectAgain(std::vector<DisplayInfo> displays)
{
    access.routes->beginRound();
    std::erase_if(displays, [this](const DisplayInfo& each) { return access.routes->isDark(each.displayID); });
    return probeAll(displays, monitoringPatience);
}

std::vector<DisplayInfo> DisplayEndpoints::probeAll(const std::vector<DisplayInfo>& displays,
                                                    std::chrono::milliseconds patience)
{
    if (displays.empty())
        return {};
    std::vector<DisplayInfo> inspected;
    const std::vector<Route> routes = access.routes->find(displays, patience);
    for (std::size_t i = 0; i < displays.size() && !access.stopping.isCancelled(); ++i)
        inspected.push_back(probe(displays[i], routes.at(i), patience).display);
    return inspected;
}

std::vector<BrightnessChange> DisplayEndpoints::changeBrightness(
    const std::vector<DisplayInfo>& displays, const std::function<double(const DisplayInfo&)>& levelFor)
{
    endpoints.clear();
    if (displays.empty())
        return {};
    std::vector<BrightnessChange> changes;
    const std::vector<Route> routes = access.routes->find(displays, holdPatience);
    for (std::size_t i = 0; i < displays.size() && !access.stopping.isCancelled(); ++i) {
        const Probe probed = probe(displays[i], routes.at(i), holdPatience);
        const std::string& id = probed.display.id;
        changes.push_back({probed.display, tl::unexpected(BrightnessError::writeFailed)});
        if (!probed.hold)
            continue;
        access.routes->beginRound(); // much may have happened while others were waited for
        changes.back().outcome = write(endpoints.at(id), levelFor(probed.display), id);
    }
    return changes;
}

DisplayEndpoints::Probe DisplayEndpoints::probe(DisplayInfo display, const Route& route,
                                                std::chrono::milliseconds patience)
{
    describe(display, route);
    Hold hold = holdNative(display, patience);
    if (const std::optional<double> value = native.read(display.displayID)) {
        display.method = ControlMethod::apple;
        display.levels = native.levels(display.displayID);
        display.brightness = quantise(display, *value);
        display.status = "Current hardware brightness read successfully.";
    } else if (route.service) {
        hold.reset(); // it may lock the same file as the channel's does
        hold = holdChannel(*route.service, patience);
        if (hold)
            readLuminance(display, *route.service);
        else
            display.status = "Another program keeps this display's connection busy. Try again when it has ended.";
    } else {
        display.status =
            "No accessible hardware brightness service. The connection or App Sandbox may restrict access.";
    }
    const bool isControlled = display.method != ControlMethod::unavailable;
    if (std::string cause = isControlled ? "" : access.routes->obstacle(display); !cause.empty())
        display.status = std::move(cause);
    endpoints.insert_or_assign(display.id, Endpoint{display, route.service});
    return {std::move(display), std::move(hold)};
}

void DisplayEndpoints::readLuminance(DisplayInfo& display, AVService& service) const
{
    const auto reading = readVcp(&service, luminanceVcpCode, probeTiming, access.pause);
    if (!reading) {
        display.status = "No valid DDC brightness reply. Enable DDC/CI in the monitor menu and refresh.";
        return;
    }
    display.method = ControlMethod::ddc;
    display.maximum = reading->maximum;
    display.brightness = fraction(*reading);
    display.status = "DDC luminance (VCP 0x10) responded. Range: 0–" + std::to_string(reading->maximum) + ".";
}

Hold DisplayEndpoints::holdNative(const DisplayInfo& display, std::chrono::milliseconds patience) const
{
    return waitForHold([&] { return native.tryHold(display.displayID); }, holdWait, patience);
}

Hold DisplayEndpoints::holdChannel(AVService& service, std::chrono::milliseconds patience) const
{
    return waitForHold([&] { return service.tryHold(); }, holdWait, patience);
}

bool DisplayEndpoints::isStillTheSame(const Endpoint& endpoint, const std::string& id) const
{
    return access.routes->identifier(endpoint.info.displayID) == id;
}

/// Reading this display could wake it.
bool DisplayEndpoints::mayWake(const Endpoint& endpoint) const
{
    return endpoint.info.method == ControlMethod::ddc && access.routes->isDark(endpoint.info.displayID);
}

std::map<std::string, double> DisplayEndpoints::currentBrightness(const std::vector<std::string>& ids,
                                                                  const CancellationToken& token)
{
    access.routes->beginRound();
    std::map<std::string, double> result;
    for (const std::string& id : ids) {
        if (token.isCancelled())
            break;
        const auto endpoint = endpoints.find(id);
        if (endpoint == endpoints.end() || !isStillTheSame(endpoint->second, id) || mayWake(endpoint->second))
            continue;
        if (const std::optional<double> value = read(endpoint->second))
            result.emplace(id, *value);
    }
    return result;
}

std::optional<double> DisplayEndpoints::read(const Endpoint& endpoint) const
{
    switch (endpoint.info.method) {
    case ControlMethod::apple:
        if (const std::optional<double> value = native.read(endpoint.info.displayID))
            return quantise(endpoint.info, *value);
        return std::nullopt;
    case ControlMethod::ddc: {
        const Hold hold = endpoint.service ? holdChannel(*endpoint.service, monitoringPatience) : nullptr;
        if (!hold)
            return std::nullopt;
        if (const auto reading = readVcp(endpoint.service.get(), luminanceVcpCode, monitoringTiming, access.pause))
            return fraction(*reading);
        return std::nullopt;
    }
    case ControlMethod::unavailable:
        break;
    }
    return std::nullopt;
}

tl::expected<double, BrightnessError> DisplayEndpoints::setBrightness(double value, const std::string& id)
{
    const auto found = endpoints.find(id);
    if (found == endpoints.end())
        return tl::unexpected(BrightnessError::disconnected);
    const Endpoint& endpoint = found->second;
    Hold hold = holdOfNothing();
    if (endpoint.info.method == ControlMethod::apple)
        hold = holdNative(endpoint.info, holdPatience);
    else if (endpoint.service)
        hold = holdChannel(*endpoint.service, holdPatience);
    if (!hold)
        return tl::unexpected(BrightnessError::writeFailed);
    access.routes->beginRound();
    return write(endpoint, value, id);
}

/// While the display is held, in a round that has begun.
tl::expected<double, BrightnessError> DisplayEndpoints::write(const Endpoint& endpoint, double value,
                                                              const std::string& id) const
{
    const bool isKnown = endpoint.info.method != ControlMethod::unavailable && endpoint.info.brightness;
    if (!std::isfinite(value) || !isKnown || !isStillTheSame(endpoint, id))
        return tl::unexpected(BrightnessError::disconnected);
    const double target = quantise(endpoint.info, value);
    return endpoint.info.method == ControlMethod::apple ? writeNative(endpoint.info, target)
                                                        : writeDdc(endpoint, target);
}

tl::expected<double, BrightnessError> DisplayEndpoints::writeNative(const DisplayInfo& display,
                                                                    double target) const
{
    if (!native.setter() || native.setter()(display.displayID, static_cast<float>(target)) != 0)
        return tl::unexpected(BrightnessError::writeFailed);
    const std::optional<double> reported = native.read(display.displayID);
    if (!reported)
        return tl::unexpected(BrightnessError::readFailed);
    if (std::abs(*reported - target) > nativeTolerance)
        return tl::unexpected(BrightnessError::mismatch);
    return quantise(display, *reported);
}

tl::expected<double, BrightnessError> DisplayEndpoints::writeDdc(const Endpoint& endpoint, double target) const
{
    const auto raw = static_cast<std::uint16_t>(std::lround(target * endpoint.info.maximum));
    AVService* service = endpoint.service.get();
    if (!writeVcp(service, luminanceVcpCode, raw, writeTiming, access.pause))
        return tl::unexpected(BrightnessError::writeFailed);
    access.pause(settleWait);
    const auto reading = readVcp(service, luminanceVcpCode, probeTiming, access.pause);
    if (!reading)
        return tl::unexpected(BrightnessError::readFailed);
    if (reading->current != raw)
        return tl::unexpected(BrightnessError::mismatch);
    return fraction(*reading);
}

} // namespace lumenvale
