// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LinuxBrightness.h"

#include "platform/posix/FileLock.h"
#include "platform/posix/SystemError.h"

#include <cerrno>
#include <cmath>
#include <utility>

namespace lumenvale {

namespace {

class LinuxBrightness {
public:
    LinuxBrightness(std::shared_ptr<const DisplaySnapshot> snapshot, BacklightWriters writers,
                    std::shared_ptr<DisplayTroubles> troubles, LogSink log)
        : snapshot(std::move(snapshot)), writers(std::move(writers)), troubles(std::move(troubles)),
          log(std::move(log))
    {
    }

    std::int32_t read(std::uint32_t displayID, float& brightness) const
    {
        const std::optional<Backlight> backlight = backlightOf(displayID);
        if (!backlight)
            return ENODEV;
        const std::optional<std::int64_t> raw = readNumber(backlight->path / "brightness");
        if (!raw) {
            snapshot->forget();
            return EIO;
        }
        brightness = static_cast<float>(backlight->level(*raw));
        return 0;
    }

    std::int32_t write(std::uint32_t displayID, float brightness) const
    {
        const std::optional<Backlight> backlight = backlightOf(displayID);
        if (!backlight)
            return ENODEV;
        if (!std::isfinite(brightness))
            return EINVAL;
        const std::int64_t raw = backlight->rawValue(static_cast<double>(brightness));
        int error = writers.file(backlight->path / "brightness", raw);
        const bool isForbidden = error == EACCES || error == EPERM || error == EROFS;
        if (isForbidden && writers.service)
            error = writers.service(backlight->name, raw);
        if (log)
            log(backlight->name + ": set " + std::to_string(raw) + " of " + std::to_string(backlight->maximum) +
                (isForbidden ? " through the login service" : "") +
                (error == 0 ? "" : ": " + systemErrorText(error)));
        using enum DisplayTrouble::Kind;
        if (error == 0)
            troubles->clear(displayID);
        else
            troubles->note(displayID, {isForbidden ? refusedService : refusedWrite, error});
        return error;
    }

    std::optional<LevelRange> levels(std::uint32_t displayID) const
    {
        const std::optional<Backlight> backlight = backlightOf(displayID);
        if (!backlight)
            return std::nullopt;
        return LevelRange{static_cast<std::uint32_t>(backlight->minimum()),
                          static_cast<std::uint32_t>(backlight->maximum)};
    }

    Hold tryHold(std::uint32_t displayID) const
    {
        const std::optional<Backlight> backlight = backlightOf(displayID);
        return backlight ? tryHoldFile(backlight->path / "brightness") : holdOfNothing();
    }

private:
    std::optional<Backlight> backlightOf(std::uint32_t displayID) const
    {
        const Connector* display = snapshot->display(displayID);
        return display ? chooseBacklight(*display, snapshot->connectors(), snapshot->backlights()) : std::nullopt;
    }

    std::shared_ptr<const DisplaySnapshot> snapshot;
    BacklightWriters writers;
    std::shared_ptr<DisplayTroubles> troubles;
    LogSink log;
};

} // namespace

NativeFunctions makeLinuxBrightness(std::shared_ptr<const DisplaySnapshot> snapshot, BacklightWriters writers,
                                    std::shared_ptr<DisplayTroubles> troubles, LogSink log)
{
    const auto brightness = std::make_shared<LinuxBrightness>(std::move(snapshot), std::move(writers),
                                                              std::move(troubles), std::move(log));
    NativeFunctions functions;
    functions.handle = brightness;
    functions.getter = [brightness](std::uint32_t displayID, float* level) {
        return brightness->read(displayID, *level);
    };
    functions.setter = [brightness](std::uint32_t displayID, float level) {
        return brightness->write(displayID, level);
    };
    functions.levels = [brightness](std::uint32_t displayID) { return brightness->levels(displayID); };
    functions.tryHold = [brightness](std::uint32_t displayID) { return brightness->tryHold(displayID); };
    return functions;
}

} // namespace lumenvale
