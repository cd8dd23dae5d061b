// SPDX-License-Identifier: MIT
// Tells when displays were connected, removed or changed, as long as it exists. Main thread only, on whose run
// loop the system calls.
#pragma once

#include <CoreGraphics/CoreGraphics.h>
#include <functional>

namespace lumenvale {

class DisplayReconfiguration {
public:
    /// `changed` is called once per display and change, after the change.
    explicit DisplayReconfiguration(std::function<void()> changed);
    DisplayReconfiguration(const DisplayReconfiguration&) = delete;
    DisplayReconfiguration& operator=(const DisplayReconfiguration&) = delete;
    ~DisplayReconfiguration();

private:
    static void reconfigured(CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags, void* self);

    std::function<void()> changed;
    bool isRegistered;
};

} // namespace lumenvale
