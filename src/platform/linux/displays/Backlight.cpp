// SPDX-License-Identifier: MIT
#include "platform/linux/displays/Backlight.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace lumenvale {

namespace {

bool isOn(const Backlight& backlight, const Connector& connector) { return backlight.parent == connector.node; }

/// Screens on boards without PCI graphics have a backlight of their own that names no connector.
bool isBoardDevice(const Backlight& backlight)
{
    constexpr std::array<const char*, 3> subsystems = {"platform", "mipi-dsi", "spi"};
    return std::find(subsystems.begin(), subsystems.end(), backlight.parentSubsystem) != subsystems.end();
}

/// How well a device fits; the smallest wins. None: it has nothing to do with the panel.
std::optional<int> rank(const Backlight& backlight, const Connector& panel, bool isOnlyPanel)
{
    const bool isOwn = isOn(backlight, panel);
    if (!isOnlyPanel && isOwn)
        return 0;
    switch (backlight.type) {
    case Backlight::Type::firmware:
        return 1;
    case Backlight::Type::platform:
        return 2;
    case Backlight::Type::raw:
        if (isOwn)
            return 3;
        if (backlight.parent == panel.device)
            return 4;
        return isBoardDevice(backlight) ? std::optional(5) : std::nullopt;
    }
    return std::nullopt;
}

std::optional<Backlight> readBacklight(const std::filesystem::path& path)
{
    const std::optional<std::int64_t> maximum = readNumber(path / "max_brightness");
    const std::string type = readAttribute(path / "type").value_or("");
    if (!maximum || *maximum < 1 || *maximum > 0xFFFFFFFF)
        return std::nullopt;
    Backlight backlight;
    backlight.name = path.filename().string();
    backlight.path = path;
    backlight.maximum = *maximum;
    if (type == "firmware")
        backlight.type = Backlight::Type::firmware;
    else if (type == "platform")
        backlight.type = Backlight::Type::platform;
    backlight.parent = linkTarget(linkTarget(path) / "device");
    backlight.parentSubsystem = linkTarget(backlight.parent / "subsystem").filename().string();
    return backlight;
}

} // namespace

std::int64_t Backlight::minimum() const
{
    constexpr std::int64_t share = 100;
    return std::min(std::max<std::int64_t>(1, maximum / share), maximum - 1);
}

std::int64_t Backlight::rawValue(double level) const
{
    const auto range = static_cast<double>(maximum - minimum());
    return minimum() + std::llround(std::clamp(level, 0.0, 1.0) * range);
}

double Backlight::level(std::int64_t raw) const
{
    const auto range = static_cast<double>(maximum - minimum());
    return std::clamp(static_cast<double>(raw - minimum()) / range, 0.0, 1.0);
}

std::vector<Backlight> readBacklights(const SystemPaths& paths)
{
    const std::filesystem::path directory = paths.sysfs / "class/backlight";
    std::vector<Backlight> backlights;
    for (const std::string& name : entryNames(directory)) {
        if (std::optional<Backlight> backlight = readBacklight(directory / name))
            backlights.push_back(std::move(*backlight));
    }
    return backlights;
}

std::optional<Backlight> chooseBacklight(const Connector& panel, const std::vector<Connector>& all,
                                         const std::vector<Backlight>& backlights)
{
    if (panel.kind != ConnectorKind::panel)
        return std::nullopt;
    const auto panels = std::count_if(all.begin(), all.end(), [](const Connector& each) {
        return each.kind == ConnectorKind::panel && each.isConnected;
    });
    const Backlight* best = nullptr;
    std::optional<int> bestRank;
    for (const Backlight& backlight : backlights) {
        const bool isOthers = std::any_of(all.begin(), all.end(), [&](const Connector& other) {
            return other.path != panel.path && isOn(backlight, other);
        });
        const std::optional<int> fit = isOthers ? std::nullopt : rank(backlight, panel, panels < 2);
        if (fit && (!bestRank || *fit < *bestRank)) {
            best = &backlight;
            bestRank = fit;
        }
    }
    return best ? std::optional(*best) : std::nullopt;
}

} // namespace lumenvale
