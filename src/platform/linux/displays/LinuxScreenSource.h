// SPDX-License-Identifier: MIT
// The connected screens: the window system's joined with the kernel's connectors, or the connectors alone where
// there is no window system. Main thread.
#pragma once

#include "displays/ScreenSource.h"
#include "platform/linux/displays/KernelRecords.h"
#include "platform/linux/displays/ScreenJoin.h"

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace lumenvale {

class LinuxScreenSource final : public ScreenSource {
public:
    /// Where modes come from that neither the kernel's records nor `WindowSystem` know exactly.
    struct ModeSources {
        std::function<std::vector<WindowScreen>()> outputs; ///< those of the session's display server
        std::function<KernelModes(const std::set<std::string>& cards)> kernel;
    };

    /// `windowSystem` may be null, and must outlive it. Empty `modes` are not asked. Of the kernel's records those
    /// that were read last count, so that nothing is read here.
    LinuxScreenSource(std::shared_ptr<KernelRecords> records, WindowSystem* windowSystem, ModeSources modes);

    std::vector<Screen> screens() override;
    bool isAsleep(std::uint32_t displayID) override;
    std::optional<std::uint32_t> displayAt(Point point) override;

private:
    std::vector<WindowScreen> windowScreens() const;
    KernelModes kernelModes(const std::vector<Connector>& connectors,
                            const std::vector<WindowScreen>& known) const;

    std::shared_ptr<KernelRecords> records;
    WindowSystem* windowSystem;
    ModeSources modes;
};

/// The outputs of the session's display server, whichever it is; none where there is no session.
std::vector<WindowScreen> sessionOutputs();

} // namespace lumenvale
