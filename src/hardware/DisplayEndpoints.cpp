// SPDX-License-Identifier: MIT
#include "hardware/DisplayEndpoints.h"

#include "hardware/DdcExchange.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace lumenvale {

namespace {

using namespace std::chrono_literals;

constexpr DdcTiming probeTiming{.retries = 2};
constexpr DdcTiming writeTiming{.retries = 2};
/// A display that does not answer at once is left alone until the next round.
constexpr DdcTiming monitoringTiming{.retries = 0};
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
    : access(withLogging(std::move(access))), native(std::move(this->access.native))
{
}

std::vector<DisplayInfo> DisplayEndpoints::inspect(const std::vector<DisplayInfo>& displays,
                                                   const CancellationToken& stopping)
{
    endpoints.clear();
    if (displays.empty())
        return {};
    std::vector<DisplayInfo> inspected;
    const std::vector<Route> routes = access.routes->find(displays);
    for (std::size_t i = 0; i < displays.size() && !stopping.isCancelled(); ++i)
        inspected.push_back(probe(displays[i], routes.at(i)));
    return inspected;
}

DisplayInfo DisplayEndpoints::probe(DisplayInfo display, const Route& route)
{
    describe(display, route);
    if (const std::optional<double> value = native.read(display.displayID)) {
        display.method = ControlMethod::apple;
        display.brightness = value;
        display.status = "Current hardware brightness read successfully.";
    } else if (route.service) {
        readLuminance(display, *route.service);
    } else {
        display.status =
            "No accessible hardware brightness service. The connection or App Sandbox may restrict access.";
    }
    endpoints.insert_or_assign(display.id, Endpoint{display, route.service});
    return display;
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
            result.insert_or_assign(id, *value);
        else
            result.erase(id);
    }
    return result;
}

std::optional<double> DisplayEndpoints::read(const Endpoint& endpoint) const
{
    switch (endpoint.info.method) {
    case ControlMethod::apple:
        return native.read(endpoint.info.displayID);
    case ControlMethod::ddc:
        if (const auto reading = readVcp(endpoint.service.get(), luminanceVcpCode, monitoringTiming, access.pause))
            return fraction(*reading);
        return std::nullopt;
    case ControlMethod::unavailable:
        break;
    }
    return std::nullopt;
}

tl::expected<double, BrightnessError> DisplayEndpoints::setBrightness(double value, const std::string& id)
{
    const auto found = endpoints.find(id);
    if (!std::isfinite(value) || found == endpoints.end())
        return tl::unexpected(BrightnessError::disconnected);
    const Endpoint& endpoint = found->second;
    if (endpoint.info.method == ControlMethod::unavailable || !endpoint.info.brightness)
        return tl::unexpected(BrightnessError::disconnected);
    access.routes->beginRound();
    if (!isStillTheSame(endpoint, id))
        return tl::unexpected(BrightnessError::disconnected);
    const double target = value >= 0.0 ? std::min(value, 1.0) : 0.0;
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
    return *reported;
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
