// SPDX-License-Identifier: MIT
#include "platform/linux/displays/Uevent.h"

#include <array>
#include <cerrno>
#include <linux/netlink.h>
#include <sys/socket.h>

namespace lumenvale {

namespace {

constexpr unsigned kernelGroup = 1; // the other groups carry what the device manager passes on

std::string_view value(const Uevent& event, std::string_view key)
{
    const auto entry = event.find(key);
    return entry == event.end() ? std::string_view() : std::string_view(entry->second);
}

} // namespace

std::optional<Uevent> parseUevent(std::string_view message)
{
    Uevent event;
    const std::size_t summary = message.find('\0');
    if (summary == std::string_view::npos || message.substr(0, summary).find('@') == std::string_view::npos)
        return std::nullopt;
    message.remove_prefix(summary + 1);
    while (!message.empty()) {
        const std::string_view line = message.substr(0, message.find('\0'));
        message.remove_prefix(std::min(line.size() + 1, message.size()));
        if (const std::size_t equals = line.find('='); equals != std::string_view::npos)
            event.emplace(line.substr(0, equals), line.substr(equals + 1));
    }
    return event;
}

bool concernsDisplays(const Uevent& event)
{
    const std::string_view subsystem = value(event, "SUBSYSTEM");
    const std::string_view action = value(event, "ACTION");
    if (subsystem == "i2c-dev" || subsystem == "backlight")
        return action == "add";
    if (subsystem != "drm")
        return false;
    // A changed property, such as content protection, is announced as a hot plug too.
    return action != "change" || (value(event, "HOTPLUG") == "1" && value(event, "PROPERTY").empty());
}

bool changesRecords(const Uevent& event)
{
    const std::string_view subsystem = value(event, "SUBSYSTEM");
    const bool isBus = subsystem == "i2c" || subsystem == "i2c-dev" || subsystem == "backlight";
    return concernsDisplays(event) || (isBus && value(event, "ACTION") != "change");
}

UeventSocket::UeventSocket()
{
    FileDescriptor opened(::socket(AF_NETLINK, SOCK_RAW | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_KOBJECT_UEVENT));
    sockaddr_nl address = {};
    address.nl_family = AF_NETLINK;
    address.nl_groups = kernelGroup;
    const auto* generic = reinterpret_cast<const sockaddr*>(&address);
    if (opened.isOpen() && ::bind(opened.get(), generic, sizeof address) == 0)
        socket = std::move(opened);
}

bool UeventSocket::takeIn(bool (*isOfTheKind)(const Uevent&))
{
    bool isNews = false;
    while (const std::optional<Uevent> event = receive(isNews))
        isNews = isNews || isOfTheKind(*event);
    return isNews;
}

std::optional<Uevent> UeventSocket::receive(bool& areSomeLost)
{
    std::array<char, 8192> buffer; // the kernel's own limit is 2048 bytes
    while (socket.isOpen()) {
        sockaddr_nl sender = {};
        socklen_t senderSize = sizeof sender;
        const ssize_t length = ::recvfrom(socket.get(), buffer.data(), buffer.size(), 0,
                                          reinterpret_cast<sockaddr*>(&sender), &senderSize);
        if (length < 0 && (errno == EINTR || errno == ENOBUFS)) {
            areSomeLost = areSomeLost || errno == ENOBUFS;
            continue;
        }
        if (length < 0)
            return std::nullopt;
        const bool isKernel = senderSize == sizeof sender && sender.nl_pid == 0;
        if (!isKernel)
            continue;
        if (std::optional<Uevent> event = parseUevent({buffer.data(), static_cast<std::size_t>(length)}))
            return event;
    }
    return std::nullopt;
}

} // namespace lumenvale
