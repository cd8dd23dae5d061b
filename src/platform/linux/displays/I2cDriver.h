// SPDX-License-Identifier: MIT
// The kernel's I2C device files, call by call, so that what is built on them can be tested without a bus.
// Hardware thread only.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <tl/expected.hpp>

namespace lumenvale {

/// One message on the bus, from its start condition to the next.
struct I2cMessage {
    std::uint8_t address = 0; ///< 7 bits
    bool isRead = false;
    std::span<std::uint8_t> bytes; ///< written, or filled
};

/// Every operation returns 0, or the system's error number.
class I2cDriver {
public:
    virtual ~I2cDriver() = default;

    /// Opens the file of the adapter with this number.
    virtual tl::expected<FileDescriptor, int> open(int adapterNumber) = 0;
    /// Takes the file's advisory lock, which other programs respect too; EAGAIN while one of them has it. It is
    /// released when the file is closed.
    virtual int lock(const FileDescriptor& file) = 0;
    /// One transaction of all messages: a stop condition only at its end.
    virtual int transfer(const FileDescriptor& file, std::span<const I2cMessage> messages) = 0;
    /// One transaction of a single message, by the interface that every driver has.
    virtual int transferSingle(const FileDescriptor& file, const I2cMessage& message) = 0;
};

/// The real ones below `devices`, normally "/dev".
std::shared_ptr<I2cDriver> makeI2cDriver(const std::filesystem::path& devices);

} // namespace lumenvale
