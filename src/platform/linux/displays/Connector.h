// SPDX-License-Identifier: MIT
// The connectors of the graphics cards, as the kernel records them at the moment of reading. Values; any thread.
#pragma once

#include "platform/linux/displays/Edid.h"
#include "platform/linux/displays/Sysfs.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace lumenvale {

enum class ConnectorKind {
    panel,    ///< inside the machine: eDP, LVDS, DSI, DPI
    external, ///< a socket with a DDC channel: VGA, DVI, HDMI, DisplayPort
    other,    ///< shows a picture without a DDC channel of its own: virtual, television, USB
    unusable, ///< shows nothing: write-back
};

struct Connector {
    std::string card; ///< "card0"
    std::string name; ///< "DP-1", unique on the card
    std::string type; ///< "DP"
    ConnectorKind kind = ConnectorKind::other;
    std::uint32_t displayID = 0;
    std::filesystem::path path;   ///< in /sys/class/drm
    std::filesystem::path node;   ///< the same place in the tree of devices
    std::filesystem::path device; ///< the card's device, resolved
    std::string driver;           ///< of the card
    bool isConnected = false;
    bool isDriven = false; ///< shows a picture now; so does a display that is asleep
    bool isAsleep = false; ///< its picture is switched off for power saving
    std::optional<Edid> edid;
    std::vector<int> ownBuses;    ///< numbers of the I2C adapters that the driver put into the connector
    std::optional<int> linkedBus; ///< number of the adapter that the driver's `ddc` link names
    bool isTypeC = false;         ///< reached through a USB-C socket

    /// A display that people see: connected, and given a picture. A connected root of a chain of monitors and a
    /// monitor that is switched off in the settings are none.
    bool isDisplay() const { return isConnected && isDriven && kind != ConnectorKind::unusable; }
    /// A monitor is connected, and its picture is off.
    bool isDark() const { return isConnected && (isAsleep || !isDriven); }
};

/// All connectors: panels first, then in the order of their names. When none shows a picture, all connected ones
/// count as driven and asleep. Of a connector without a monitor only its name, place and adapters are read.
std::vector<Connector> readConnectors(const SystemPaths& paths);

/// Reads anew which of the connected ones show a picture.
void readPowerStates(std::vector<Connector>& connectors);

/// The same for one connector alone.
void readPowerState(Connector& connector);

/// A display number made from the connector's name alone, so that it means the same in every process and after
/// every reconnection: card, type and index in one byte each, and for names of another form a hash with the top
/// bit set. Never 0.
std::uint32_t displayNumber(const std::string& card, const std::string& connectorName);

} // namespace lumenvale
