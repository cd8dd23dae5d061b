// SPDX-License-Identifier: MIT
// Machines as literal tables, and the trees of device records that their kernels would show: real folders below
// devices/, links to them below class/ and bus/, all in a temporary folder.
#pragma once

#include "platform/linux/displays/Edid.h"
#include "platform/linux/displays/KernelRecords.h"
#include "platform/linux/displays/Sysfs.h"

#include <QTemporaryDir>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <numeric>
#include <sstream>
#include <string>
#include <vector>

namespace lumenvale {

inline std::vector<std::uint8_t> edidFile(const std::string& name)
{
    std::ifstream file(std::string(LUMENVALE_EDID_FOLDER) + "/" + name + ".bin", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

/// Makes EDID base blocks: that of one of the files, with what it says changed.
struct EdidBuilder {
    std::string name = "Studio 27";
    std::uint8_t serial = 0;
    std::string serialText = {};
    std::uint8_t revision = 4;
    std::uint8_t videoInput = 0xB5; ///< digital, 10 bits, DisplayPort

    EdidBlock build() const
    {
        EdidBlock block{};
        std::ranges::copy(edidFile("studio-27-displayport"), block.begin());
        std::fill_n(block.begin() + 12, 4, std::uint8_t{0});
        block[12] = serial;
        block[19] = revision;
        block[20] = videoInput;
        const auto writeText = [&block](std::size_t at, std::string text) {
            text += '\n';
            text.resize(13, ' ');
            std::ranges::copy(text, block.begin() + static_cast<std::ptrdiff_t>(at));
        };
        writeText(77, name);
        writeText(95, serialText);
        block[127] = 0;
        block[127] = static_cast<std::uint8_t>(0U - std::accumulate(block.begin(), block.end(), 0U));
        return block;
    }
};

/// The monitors of the tables: Studio, Office, a Panel, and a Twin without a serial number.
inline EdidBlock edidOf(char monitor)
{
    const std::map<char, EdidBuilder> monitors = {{'S', {.serial = 1, .serialText = "QX7"}},
                                                  {'O', {.name = "Office 24", .serial = 2}},
                                                  {'P', {.name = "B140"}},
                                                  {'T', {.name = "Twin"}}};
    return monitors.at(monitor).build();
}

class FakeSysfs {
public:
    using Path = std::filesystem::path;

    /// A line for each graphics card: its driver, with "@" its PCI class where it is no display controller; its
    /// connectors, "DP-1=S/4>5" with a monitor, the adapter that the driver put into it, and the one that `ddc`
    /// names; then the adapters, "4 S AUX B", with the monitor that answers there, or "-".
    explicit FakeSysfs(const std::string& machine = "")
    {
        for (const char* each : {"sys/class/drm", "sys/class/i2c-dev", "sys/bus/i2c/devices", "dev"})
            std::filesystem::create_directories(top() / each);
        std::istringstream lines(machine);
        int index = 0;
        for (std::string line; std::getline(lines, line); ++index)
            addCard("card" + std::to_string(index), line);
    }

    Path addPciDevice(const std::string& name, const std::string& driver, const std::string& pciClass)
    {
        const Path device = root() / "devices" / name;
        write(device / "class", pciClass);
        link(root() / "bus/pci", device / "subsystem");
        link(root() / "bus/pci/drivers" / driver, device / "driver");
        return device;
    }
    /// A connector in the notation above.
    void addConnector(const std::string& card, const std::string& text)
    {
        const std::string name = card + "-" + text.substr(0, text.find_first_of("=/>"));
        const Path connector = root() / "devices" / card / "drm" / card / name;
        const bool isConnected = text.find('=') != std::string::npos;
        link(connector, root() / "class/drm" / name);
        write(connector / "status", isConnected ? "connected" : "disconnected");
        write(connector / "enabled", isConnected ? "enabled" : "disabled");
        write(connector / "dpms", isConnected ? "On" : "Off");
        plug(connector, isConnected ? edidOf(text[text.find('=') + 1]) : EdidBlock{});
        if (const int number = numberAfter(text, '>'); number >= 0)
            link(resolved(root() / "bus/i2c/devices" / ("i2c-" + std::to_string(number))), connector / "ddc");
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
    /// They never hold: every question reads the tree.
    std::shared_ptr<KernelRecords> records() const { return std::make_shared<KernelRecords>(paths()); }
    SystemPaths paths() const { return {root(), top() / "dev", top() / "proc"}; }
    Path operator[](const std::string& connector) const { return root() / "class/drm" / ("card0-" + connector); }

    std::map<int, EdidBlock> answers; ///< at 0x50, by bus

private:
    static int numberAfter(const std::string& text, char sign)
    {
        const std::size_t place = text.find(sign);
        return place == std::string::npos ? -1 : std::stoi(text.substr(place + 1));
    }
    void addCard(const std::string& card, const std::string& text)
    {
        std::istringstream parts(text);
        std::string part;
        std::getline(parts, part, ';');
        std::istringstream words(part);
        std::string driver;
        words >> driver;
        const std::size_t at = std::min(driver.find('@'), driver.size());
        const Path device =
            addPciDevice(card, driver.substr(0, at), at < driver.size() ? driver.substr(at + 1) : "0x030000");
        link(device, device / "drm" / card / "device");
        link(device / "drm" / card, root() / "class/drm" / card);
        const std::vector<std::string> connectors(std::istream_iterator<std::string>(words), {});
        while (std::getline(parts, part, ';')) {
            std::istringstream adapter(part);
            int number = 0;
            char monitor = ' ';
            std::string name;
            std::getline(adapter >> number >> monitor >> std::ws, name);
            Path parent = device;
            for (const std::string& each : connectors) {
                if (numberAfter(each, '/') == number)
                    parent = device / "drm" / card / (card + "-" + each.substr(0, each.find_first_of("=/>")));
            }
            addAdapter(parent, number, name);
            if (monitor != '-')
                answers[number] = edidOf(monitor);
        }
        for (const std::string& each : connectors)
            addConnector(card, each);
    }

    Path top() const { return folder.path().toStdString(); }

    QTemporaryDir folder;
};

} // namespace lumenvale
