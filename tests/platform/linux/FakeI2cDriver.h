// SPDX-License-Identifier: MIT
// Buses with monitors on them, at the level of the kernel's calls: keeps a log, fails on demand.
#pragma once

#include "platform/linux/displays/I2cDriver.h"

#include "platform/linux/displays/Edid.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <deque>
#include <fcntl.h>
#include <map>
#include <string>
#include <vector>

namespace lumenvale {

class FakeI2cDriver final : public I2cDriver {
public:
    std::map<int, EdidBlock> monitors; ///< what answers at 0x50, by bus
    std::vector<std::uint8_t> reply;   ///< what a read of 0x37 gives
    std::vector<std::string> log;      ///< "open 3", "lock", "W37 51 82", "R37 11", "single W50 00"
    int openError = 0;
    std::deque<int> lockErrors; ///< one per attempt; then it succeeds
    int transferError = 0;      ///< of every combined transfer

    tl::expected<FileDescriptor, int> open(int number) override
    {
        log.push_back("open " + std::to_string(number));
        bus = number;
        if (openError != 0)
            return tl::unexpected(openError);
        return FileDescriptor(::open("/dev/null", O_RDWR | O_CLOEXEC));
    }

    int lock(const FileDescriptor&) override
    {
        log.emplace_back("lock");
        if (lockErrors.empty())
            return 0;
        const int error = lockErrors.front();
        lockErrors.pop_front();
        return error;
    }

    int transfer(const FileDescriptor&, std::span<const I2cMessage> messages) override
    {
        if (transferError != 0)
            return transferError;
        for (const I2cMessage& message : messages) {
            if (const int error = perform(message, ""); error != 0)
                return error;
        }
        return 0;
    }

    int transferSingle(const FileDescriptor&, const I2cMessage& message) override
    {
        return perform(message, "single ");
    }

    /// The buses that were opened, each once.
    std::vector<int> opened() const
    {
        std::vector<int> numbers;
        for (const std::string& line : log) {
            if (!line.starts_with("open "))
                continue;
            const int number = std::stoi(line.substr(5));
            if (std::find(numbers.begin(), numbers.end(), number) == numbers.end())
                numbers.push_back(number);
        }
        return numbers;
    }

private:
    int perform(const I2cMessage& message, const std::string& prefix)
    {
        char text[8];
        std::snprintf(text, sizeof text, "%c%02x", message.isRead ? 'R' : 'W', message.address);
        std::string line = prefix + text;
        if (message.isRead)
            line += ' ' + std::to_string(message.bytes.size());
        for (const std::uint8_t byte : message.isRead ? std::span<std::uint8_t>() : message.bytes) {
            std::snprintf(text, sizeof text, " %02x", byte);
            line += text;
        }
        log.push_back(line);
        const bool isThere = message.address == 0x37 || monitors.contains(bus);
        if (!isThere)
            return ENXIO;
        if (message.isRead && message.address == 0x37)
            std::copy_n(reply.begin(), std::min(reply.size(), message.bytes.size()), message.bytes.begin());
        else if (message.isRead)
            std::copy_n(monitors[bus].begin(), std::min<std::size_t>(128, message.bytes.size()),
                        message.bytes.begin());
        return 0;
    }

    int bus = -1;
};

} // namespace lumenvale
