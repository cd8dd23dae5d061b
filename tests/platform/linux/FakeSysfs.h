// SPDX-License-Identifier: MIT
// A tree of device records in a temporary folder, laid out as the kernel does it: real folders below devices/,
// links to them below class/ and bus/.
#pragma once

#include "EdidBuilder.h"
#include "platform/linux/displays/Connector.h"
#include "platform/linux/displays/I2cAdapter.h"
#include "platform/linux/displays/Sysfs.h"

#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

namespace lumenvale {

class FakeSysfs {
public:
    FakeSysfs()
    {
        for (const char* each :
             {"class/drm", "class/backlight", "class/i2c-dev", "bus/i2c/devices", "bus/pci/drivers"})
            std::filesystem::create_directories(root() / each);
        std::filesystem::create_directories(paths().devices);
    }

    using Path = std::filesystem::path;

    SystemPaths paths() const { return {root(), top() / "dev", top() / "proc"}; }

    /// A PCI device; class 0x030000 is a display controller.
    Path addPciDevice(const std::string& address, const std::string& driver, const std::string& pciClass)
    {
        const Path device = root() / "devices/pci0000:00" / address;
        write(device / "class", pciClass);
        link(root() / "bus/pci", device / "subsystem");
        std::filesystem::create_directories(root() / "bus/pci/drivers" / driver);
        link(root() / "bus/pci/drivers" / driver, device / "driver");
        return device;
    }

    /// A graphics card; returns its PCI device.
    Path addCard(const std::string& card = "card0", const std::string& driver = "i915",
                 const std::string& address = "0000:00:02.0", const std::string& pciClass = "0x030000")
    {
        const Path device = addPciDevice(address, driver, pciClass);
        std::filesystem::create_directories(device / "drm" / card);
        link(device, device / "drm" / card / "device");
        link(device / "drm" / card, root() / "class/drm" / card);
        return device;
    }

    /// A connector of the card on `device`, connected when there is an EDID.
    Path addConnector(const Path& device, const std::string& name, std::optional<EdidBlock> edid = std::nullopt,
                      const std::string& card = "card0")
    {
        const Path connector = device / "drm" / card / (card + "-" + name);
        write(connector / "status", edid ? "connected" : "disconnected");
        write(connector / "enabled", edid ? "enabled" : "disabled");
        write(connector / "dpms", edid ? "On" : "Off");
        write(connector / "edid", edid ? std::string(edid->begin(), edid->end()) : std::string(), false);
        link(connector, root() / "class/drm" / (card + "-" + name));
        return connector;
    }

    /// An I2C adapter below `parent`.
    Path addAdapter(const Path& parent, int number, const std::string& name)
    {
        const std::string entry = "i2c-" + std::to_string(number);
        const Path adapter = parent / entry;
        write(adapter / "name", name);
        link(adapter, root() / "bus/i2c/devices" / entry);
        std::filesystem::create_directories(root() / "class/i2c-dev" / entry);
        write(paths().devices / entry, "");
        return adapter;
    }

    void linkDdc(const Path& connector, const Path& adapter) { link(adapter, connector / "ddc"); }

    Path addBacklight(const Path& parent, const std::string& name, const std::string& type, int maximum,
                      int current)
    {
        const Path backlight = parent / name;
        write(backlight / "type", type);
        write(backlight / "max_brightness", std::to_string(maximum));
        write(backlight / "brightness", std::to_string(current));
        link(parent, backlight / "device");
        link(backlight, root() / "class/backlight" / name);
        return backlight;
    }

    static void write(const Path& file, const std::string& text, bool endsLine = true)
    {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text << (endsLine ? "\n" : "");
    }

    static void link(const Path& target, const Path& name)
    {
        std::filesystem::create_directories(name.parent_path());
        std::filesystem::create_directories(target);
        std::filesystem::create_directory_symlink(target, name);
    }

    Path root() const { return top() / "sys"; }

    /// The connector with this name as the code reads it.
    Connector connector(const std::string& name) const
    {
        for (Connector& each : readConnectors(paths())) {
            if (each.name == name)
                return std::move(each);
        }
        return {};
    }

private:
    Path top() const { return folder.path().toStdString(); }

    QTemporaryDir folder;
};

} // namespace lumenvale
