// SPDX-License-Identifier: MIT
// The kernel's announcements about devices, over its netlink socket. Main thread.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace lumenvale {

/// The keys of one announcement: "ACTION", "SUBSYSTEM", …
using Uevent = std::map<std::string, std::string, std::less<>>;

/// Reads "action@path\0KEY=value\0…" as the kernel sends it (lib/kobject_uevent.c); none for anything else.
std::optional<Uevent> parseUevent(std::string_view message);

/// True for what may change the displays or how they can be reached: a monitor connected or removed, a connector
/// or graphics card that comes or goes, an I2C device file or a backlight device that appears.
bool concernsDisplays(const Uevent& event);

/// True for what may make the kernel's records of the displays differ from those that were read before.
bool changesRecords(const Uevent& event);

class UeventSocket {
public:
    /// Opens the socket; without the right to it nothing is ever received.
    UeventSocket();

    bool isOpen() const { return socket.isOpen(); }
    int descriptor() const { return socket.get(); }

    /// Takes in what has arrived. True when one of the announcements is of the kind, or some were lost.
    bool takeIn(bool (*isOfTheKind)(const Uevent&));

private:
    /// The next announcement of the kernel itself; none when there is no other.
    std::optional<Uevent> receive(bool& areSomeLost);

    FileDescriptor socket;
};

} // namespace lumenvale
