// SPDX-License-Identifier: MIT
// The connected screens: the window system's joined with the kernel's connectors, or the connectors alone where
// there is no window system. Main thread.
#pragma once

#include "displays/ScreenSource.h"
#include "platform/linux/displays/KernelRecords.h"
#include "platform/linux/displays/ScreenJoin.h"

#include <memory>
#include <vector>

namespace lumenvale {

class LinuxScreenSource final : public ScreenSource {
public:
    /// `windowSystem` may be null, and must outlive it. Of the kernel's records those that were read last count,
    /// so that nothing is read here.
    LinuxScreenSource(std::shared_ptr<KernelRecords> records, WindowSystem* windowSystem);

    std::vector<Screen> screens() override;
    bool isAsleep(std::uint32_t displayID) override;
    std::optional<std::uint32_t> displayAt(Point point) override;

private:
    std::vector<WindowScreen> windowScreens() const;

    std::shared_ptr<KernelRecords> records;
    WindowSystem* windowSystem;
};

} // namespace lumenvale
