// SPDX-License-Identifier: MIT
// Machines as literal tables, and the trees of device records that their kernels would show: real folders below
// devices/, links to them below class/ and bus/, all in a temporary folder.
#pragma once

#include "EdidBuilder.h"
#include "platform/linux/displays/Connector.h"
#include "platform/linux/displays/Sysfs.h"

#include <QTemporaryDir>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace lumenvale {

/// The monitors of the tables: Studio, Office, a Panel, and a Twin that says no serial number; ' ' is none.
inline EdidBlock edidOf(char monitor)
{
    switch (monitor) {
    case 'S':
        return EdidBuilder{.name = "Studio 27", .serial = 1, .serialText = "QX7"}.build();
    case 'O':
        return EdidBuilder{.name = "Office 24", .serial = 2}.build();
    case 'P':
        return EdidBuilder{.name = "B140"}.build();
    default:
        return EdidBuilder{.name = "Twin"}.build();
    }
}

struct Socket {
    const char* name;
    char monitor = ' ';
    int child = -1; ///< the adapter that the driver put into the connector
    int link = -1;  ///< the adapter that `ddc` names
};

struct Bus {
    int number;
    const char* name;
    char monitor = ' '; ///< what answers there at 0x50
};

/// A graphics card and what hangs off it.
struct Card {
    const char* driver = "i915";
    std::vector<Socket> sockets = {};
    std::vector<Bus> buses = {};
    std::string pciClass = "0x030000";
    std::string name = "card0";
};

class FakeSysfs {
public:
    using Path = std::filesystem::path;

    explicit FakeSysfs(const std::vector<Card>& cards = {})
    {
        for (const char* each : {"sys/class/drm", "sys/class/i2c-dev", "sys/bus/i2c/devices", "dev"})
            std::filesystem::create_directories(top() / each);
        for (const Card& each : cards)
            add(each);
    }

    void add(const Card& card)
    {
        const Path device = addPciDevice(card.name, card.driver, card.pciClass);
        link(device, device / "drm" / card.name / "device");
        link(device / "drm" / card.name, root() / "class/drm" / card.name);
        for (const Bus& bus : card.buses) {
            Path parent = device;
            for (const Socket& socket : card.sockets) {
                if (socket.child == bus.number)
                    parent = device / "drm" / card.name / (card.name + "-" + socket.name);
            }
            addAdapter(parent, bus.number, bus.name);
            if (bus.monitor != ' ')
                answers[bus.number] = edidOf(bus.monitor);
        }
        for (const Socket& socket : card.sockets)
            addConnector(card.name, socket);
    }

    Path addPciDevice(const std::string& name, const std::string& driver, const std::string& pciClass)
    {
        const Path device = root() / "devices" / ("pci-" + name);
        write(device / "class", pciClass);
        link(root() / "bus/pci", device / "subsystem");
        link(root() / "bus/pci/drivers" / driver, device / "driver");
        return device;
    }
    void addConnector(const std::string& card, const Socket& socket)
    {
        const Path connector = root() / "devices" / ("pci-" + card) / "drm" / card / (card + "-" + socket.name);
        const bool isConnected = socket.monitor != ' ';
        link(connector, root() / "class/drm" / (card + "-" + socket.name));
        write(connector / "status", isConnected ? "connected" : "disconnected");
        write(connector / "enabled", isConnected ? "enabled" : "disabled");
        write(connector / "dpms", isConnected ? "On" : "Off");
        plug(connector, isConnected ? edidOf(socket.monitor) : EdidBlock{});
        if (socket.link >= 0)
            link(resolved(root() / "bus/i2c/devices" / ("i2c-" + std::to_string(socket.link))), connector / "ddc");
    }
    void addAdapter(const Path& parent, int number, const std::string& name)
    {
        const std::string entry = "i2c-" + std::to_string(number);
        write(parent / entry / "name", name);
        link(parent / entry, root() / "bus/i2c/devices" / entry);
        link(parent / entry, root() / "class/i2c-dev" / entry);
        write(paths().devices / entry, "");
    }
    Path addBacklight(const Path& parent, const std::string& name, const std::string& type,
                      const std::string& maximum)
    {
        write(parent / name / "type", type);
        write(parent / name / "max_brightness", maximum);
        write(parent / name / "brightness", "50");
        link(parent, parent / name / "device");
        link(parent / name, root() / "class/backlight" / name);
        return parent / name / "brightness";
    }

    static void write(const Path& file, const std::string& text)
    {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << text << '\n';
    }
    static void plug(const Path& connector, const EdidBlock& edid)
    {
        std::ofstream(connector / "edid", std::ios::binary).write(reinterpret_cast<const char*>(edid.data()), 128);
    }
    static void link(const Path& target, const Path& name)
    {
        std::filesystem::create_directories(name.parent_path());
        std::filesystem::create_directories(target);
        std::filesystem::create_directory_symlink(target, name);
    }

    Path root() const { return top() / "sys"; }
    SystemPaths paths() const { return {root(), top() / "dev", top() / "proc"}; }
    Path operator[](const std::string& connector) const { return root() / "class/drm" / ("card0-" + connector); }

    std::map<int, EdidBlock> answers; ///< at 0x50, by bus

private:
    Path top() const { return folder.path().toStdString(); }

    QTemporaryDir folder;
};

} // namespace lumenvale
