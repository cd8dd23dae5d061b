// SPDX-License-Identifier: MIT
// The machine's displays in the shape of a registry: for each connector that shows a picture a framebuffer entry,
// followed by the entry of its I2C channel. Both are made anew from the kernel's records in each walk. Hardware
// thread only.
//
// A framebuffer's "EDID UUID" is laid out from the EDID's bytes so that each fact stands where matching looks for
// it: bytes 8 to 11 (vendor, product), two empty groups, 16 and 17 (week, year), and 18 to 23 (version, video
// input, width and height in centimetres, gamma).
#pragma once

#include "hardware/Pause.h"
#include "hardware/ServiceRegistry.h"
#include "platform/Platform.h"
#include "platform/linux/displays/Connector.h"
#include "platform/linux/displays/I2cDriver.h"
#include "platform/linux/displays/Sysfs.h"

#include <memory>
#include <string>

namespace lumenvale {

class LinuxServiceRegistry final : public ServiceRegistry {
public:
    LinuxServiceRegistry(SystemPaths paths, std::shared_ptr<I2cDriver> driver, Pause pause, LogSink log);

    void forEachEntry(const std::function<void(const RegistryEntry&)>& visit) override;

private:
    SystemPaths paths;
    std::shared_ptr<I2cDriver> driver;
    Pause pause;
    LogSink log;
};

/// The text under "EDID UUID".
std::string edidUuid(const Edid& edid);

/// What people call the connection; the second text is what the monitor itself speaks, where that differs.
struct Transport {
    std::string upstream;
    std::string downstream;

    bool operator==(const Transport& other) const = default;
};
Transport transportOf(const Connector& connector);

} // namespace lumenvale
