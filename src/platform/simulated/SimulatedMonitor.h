// SPDX-License-Identifier: MIT
// One simulated monitor: its file, read at each access and replaced whole when a command changes it, so that
// editing the file is turning the monitor's own buttons. Any thread; who changes it reads it first.
#pragma once

#include "hardware/Hold.h"
#include "platform/simulated/MonitorFile.h"

#include <string>
#include <tl/expected.hpp>

namespace lumenvale {

class SimulatedMonitor {
public:
    explicit SimulatedMonitor(std::string path) : path(std::move(path)) {}

    /// What the file says now. The error is a whole sentence.
    tl::expected<MonitorFile, std::string> read() const;

    // Each returns false when the file cannot be read or replaced, or lacks the section.
    bool setNativeBrightness(double brightness) const;
    bool setDdcCurrent(std::uint16_t current) const;
    bool setFailNextTransfers(std::uint32_t count) const;

    /// Keeps other copies of the program from the monitor: the lock of a hidden file beside the monitor's own,
    /// which is replaced at each change. Never waits: null while another copy has it.
    Hold tryHold() const;

    bool operator==(const SimulatedMonitor& other) const = default;

private:
    std::string path;
};

} // namespace lumenvale
