// SPDX-License-Identifier: MIT
// The connected screens: the window system's joined with the kernel's connectors, or the connectors alone where
// there is no window system. Nothing is kept between calls. Main thread.
#pragma once

#include "displays/ScreenSource.h"
#include "platform/linux/displays/ScreenJoin.h"
#include "platform/linux/displays/Sysfs.h"

#include <vector>

namespace lumenvale {

class LinuxScreenSource final : public ScreenSource {
public:
    /// `windowSystem` may be null, and must outlive it.
    LinuxScreenSource(SystemPaths paths, WindowSystem* windowSystem);

    std::vector<Screen> screens() override;
    /// The connector's power state as the kernel recorded it; asking the kernel does not touch the monitor.
    bool isAsleep(std::uint32_t displayID) override;
    std::optional<std::uint32_t> displayAt(Point point) override;

private:
    std::vector<WindowScreen> windowScreens() const;

    SystemPaths paths;
    WindowSystem* windowSystem;
};

} // namespace lumenvale
