// SPDX-License-Identifier: MIT
#include "platform/linux/displays/I2cBus.h"

#include <array>
#include <cerrno>
#include <utility>
#include <vector>

namespace lumenvale {

namespace {

constexpr std::uint8_t edidAddress = 0x50; // VESA E-DDC 1.2, section 2
constexpr std::uint32_t highestAddress = 0x77;
constexpr std::size_t longestMessage = 128;

} // namespace

I2cBus::I2cBus(I2cAdapter adapter, std::shared_ptr<I2cDriver> driver, Pause pause)
    : adapter(std::move(adapter)), driver(std::move(driver)), pause(std::move(pause))
{
}

int I2cBus::writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<const std::uint8_t> bytes)
{
    if (chipAddress > highestAddress || dataAddress > 0xFF || bytes.size() >= longestMessage)
        return EINVAL;
    std::vector<std::uint8_t> message = {static_cast<std::uint8_t>(dataAddress)};
    message.insert(message.end(), bytes.begin(), bytes.end());
    const std::array<I2cMessage, 1> messages = {{{static_cast<std::uint8_t>(chipAddress), false, message}}};
    return transact(messages);
}

int I2cBus::readI2C(std::uint32_t chipAddress, std::uint32_t, std::span<std::uint8_t> bytes)
{
    if (chipAddress > highestAddress || bytes.size() > longestMessage)
        return EINVAL;
    const std::array<I2cMessage, 1> messages = {{{static_cast<std::uint8_t>(chipAddress), true, bytes}}};
    return transact(messages);
}

tl::expected<EdidBlock, int> I2cBus::readEdid()
{
    std::array<std::uint8_t, 1> offset = {0};
    EdidBlock block{};
    const std::array<I2cMessage, 2> messages = {{{edidAddress, false, offset}, {edidAddress, true, block}}};
    const int error = transact(messages, edidLockAttempts);
    return error == 0 ? tl::expected<EdidBlock, int>(block) : tl::unexpected(error);
}

int I2cBus::transact(std::span<const I2cMessage> messages, int attempts)
{
    const tl::expected<FileDescriptor, int> file = driver->open(adapter.number);
    if (!file)
        return file.error();
    if (currentIncarnation(adapter.device) != adapter.incarnation)
        return ENODEV; // the number has passed to another adapter
    if (const int error = acquire(*file, attempts); error != 0)
        return error;
    int error = driver->transfer(*file, messages);
    if (error != EINVAL && error != EOPNOTSUPP)
        return error;
    // Some drivers refuse every transaction of messages with flags that they do not know.
    error = 0;
    for (const I2cMessage& message : messages) {
        if (error == 0)
            error = driver->transferSingle(*file, message);
    }
    return error;
}

int I2cBus::acquire(const FileDescriptor& file, int attempts)
{
    int error = driver->lock(file);
    for (int attempt = 1; error == EAGAIN && attempt < attempts; ++attempt) {
        pause(lockInterval);
        error = driver->lock(file);
    }
    return error;
}

} // namespace lumenvale
