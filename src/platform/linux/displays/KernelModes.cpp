// SPDX-License-Identifier: MIT
#include "platform/linux/displays/KernelModes.h"

#include "platform/linux/displays/ModeLine.h"
#include "platform/posix/FileDescriptor.h"

#include <fcntl.h>
#include <memory>
#include <optional>
#include <span>
#include <xf86drm.h>
#include <xf86drmMode.h>

namespace lumenvale {

namespace {

/// What libdrm hands out is given back by a function of its own.
template <typename Value>
std::unique_ptr<Value, void (*)(Value*)> owned(Value* value, void (*release)(Value*))
{
    return {value, release};
}

ModeLine modeLine(const drmModeModeInfo& mode)
{
    constexpr double kilohertz = 1000;
    return {mode.clock * kilohertz, static_cast<double>(mode.htotal), static_cast<double>(mode.vtotal),
            (mode.flags & DRM_MODE_FLAG_DBLSCAN) != 0, (mode.flags & DRM_MODE_FLAG_INTERLACE) != 0};
}

std::optional<ScreenMode> currentMode(int card, const drmModeConnector& connector)
{
    const auto encoder = owned(drmModeGetEncoder(card, connector.encoder_id), drmModeFreeEncoder);
    const auto crtc = owned(encoder ? drmModeGetCrtc(card, encoder->crtc_id) : nullptr, drmModeFreeCrtc);
    if (!crtc || crtc->mode_valid == 0)
        return std::nullopt;
    return ScreenMode{crtc->mode.hdisplay, crtc->mode.vdisplay, refreshRate(modeLine(crtc->mode))};
}

/// The display number; see displayNumber, whose types have the kernel's numbers.
std::uint32_t numberOf(std::int64_t cardIndex, const drmModeConnector& connector)
{
    return static_cast<std::uint32_t>(cardIndex) << 16 | connector.connector_type << 8 |
           connector.connector_type_id;
}

} // namespace

KernelModes readKernelModes(const SystemPaths& paths, const std::set<std::string>& cards)
{
    KernelModes modes;
    for (const std::string& card : cards) {
        const std::optional<std::int64_t> index = parseNumber(std::string_view(card).substr(4)); // after "card"
        const FileDescriptor file(::open((paths.devices / "dri" / card).c_str(), O_RDWR | O_CLOEXEC));
        if (!index || !file.isOpen())
            continue;
        // Whoever opens a card that no display server has becomes its master, and would keep a server from
        // starting.
        drmDropMaster(file.get());
        const auto resources = owned(drmModeGetResources(file.get()), drmModeFreeResources);
        if (!resources)
            continue;
        for (const std::uint32_t id :
             std::span(resources->connectors, static_cast<std::size_t>(resources->count_connectors))) {
            const auto connector = owned(drmModeGetConnectorCurrent(file.get(), id), drmModeFreeConnector);
            if (!connector || connector->connection != DRM_MODE_CONNECTED)
                continue;
            if (const std::optional<ScreenMode> mode = currentMode(file.get(), *connector))
                modes.emplace(numberOf(*index, *connector), *mode);
        }
    }
    return modes;
}

} // namespace lumenvale
