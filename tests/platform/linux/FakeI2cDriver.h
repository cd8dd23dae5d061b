// SPDX-License-Identifier: MIT
// Buses with monitors on them, at the level of the kernel's calls: keeps a log, fails on demand.
#pragma once

#include "platform/linux/displays/Edid.h"
#include "platform/linux/displays/I2cDriver.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <map>
#include <string>
#include <vector>

namespace lumenvale {

struct FakeI2cDriver final : I2cDriver {
    std::map<int, EdidBlock> monitors; ///< what answers at 0x50, by bus; everything answers `reply` at 0x37
    std::vector<std::string> log;      ///< "open 3", "lock", "W37 51 82", "R37 11", "single W50 00"
    std::vector<std::uint8_t> reply;
    int openError = 0;
    int busyLocks = 0;     ///< how many attempts to lock still fail
    int transferError = 0; ///< of every combined transfer
    int damagedReads = 0;  ///< how many EDIDs still arrive with a wrong byte

    tl::expected<FileDescriptor, int> open(int adapterNumber) override
    {
        log.push_back("open " + std::to_string(adapterNumber));
        bus = adapterNumber;
        if (openError != 0)
            return tl::unexpected(openError);
        return FileDescriptor(::open("/dev/null", O_RDWR | O_CLOEXEC));
    }
    int lock(const FileDescriptor&) override
    {
        log.emplace_back("lock");
        return busyLocks > 0 && busyLocks-- > 0 ? EAGAIN : 0;
    }
    int transfer(const FileDescriptor&, std::span<const I2cMessage> messages) override
    {
        int error = transferError;
        for (const I2cMessage& message : messages)
            error = error != 0 ? error : perform(message, "");
        return error;
    }
    int transferSingle(const FileDescriptor&, const I2cMessage& message) override
    {
        return perform(message, "single ");
    }

private:
    int perform(const I2cMessage& message, const std::string& prefix)
    {
        char text[8];
        std::snprintf(text, sizeof text, "%c%02x", message.isRead ? 'R' : 'W', message.address);
        std::string& line = log.emplace_back(prefix + text);
        if (message.isRead)
            line += ' ' + std::to_string(message.bytes.size());
        for (std::size_t i = 0; !message.isRead && i < message.bytes.size(); ++i) {
            std::snprintf(text, sizeof text, " %02x", message.bytes[i]);
            line += text;
        }
        if (message.address != 0x37 && !monitors.contains(bus))
            return ENXIO;
        if (message.isRead && message.address == 0x37)
            std::copy_n(reply.begin(), std::min(reply.size(), message.bytes.size()), message.bytes.begin());
        if (message.isRead && message.address == 0x50)
            std::copy_n(monitors[bus].begin(), message.bytes.size(), message.bytes.begin());
        if (message.isRead && message.address == 0x50 && damagedReads > 0 && damagedReads-- > 0)
            message.bytes[20] ^= 1;
        return 0;
    }

    int bus = -1;
};

} // namespace lumenvale
