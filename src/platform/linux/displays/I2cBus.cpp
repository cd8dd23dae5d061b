// SPDX-License-Identifier: MIT
#include "platform/linux/displays/I2cBus.h"

#include "hardware/DdcMessage.h"

#include <array>
#include <cerrno>
#include <utility>

namespace lumenvale {

namespace {

constexpr std::uint8_t edidAddress = 0x50; // VESA E-DDC 1.2, section 2
constexpr std::uint32_t highestAddress = 0x77;
constexpr std::size_t longestMessage = 128;

} // namespace

I2cBus::I2cBus(I2cAdapter adapter, std::shared_ptr<I2cDriver> driver)
    : adapter(std::move(adapter)), driver(std::move(driver))
{
}

int I2cBus::writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<const std::uint8_t> bytes)
{
    if (chipAddress > highestAddress || dataAddress > 0xFF || bytes.size() >= longestMessage)
        return EINVAL;
    std::vector<std::uint8_t> message = {static_cast<std::uint8_t>(dataAddress)};
    message.insert(message.end(), bytes.begin(), bytes.end());
    lastMessage.assign(bytes.begin(), bytes.end());
    const std::array<I2cMessage, 1> messages = {{{static_cast<std::uint8_t>(chipAddress), false, message}}};
    return transact(messages);
}

int I2cBus::readI2C(std::uint32_t chipAddress, std::uint32_t, std::span<std::uint8_t> bytes)
{
    if (chipAddress > highestAddress || bytes.size() > longestMessage)
        return EINVAL;
    const std::array<I2cMessage, 1> messages = {{{static_cast<std::uint8_t>(chipAddress), true, bytes}}};
    const int error = transact(messages);
    return error == 0 && !isReplyTo(lastMessage, bytes) ? EPROTO : error;
}

tl::expected<EdidBlock, int> I2cBus::readEdid()
{
    std::array<std::uint8_t, 1> offset = {0};
    EdidBlock block{};
    const std::array<I2cMessage, 2> messages = {{{edidAddress, false, offset}, {edidAddress, true, block}}};
    const int error = transact(messages);
    return error == 0 ? tl::expected<EdidBlock, int>(block) : tl::unexpected(error);
}

Hold I2cBus::tryHold()
{
    if (Hold current = held.lock())
        return current;
    const auto file = open();
    if (!file)
        return file.error() == EAGAIN ? nullptr : holdOfNothing(); // the transactions will say what is wrong
    held = *file;
    return *file;
}

/// The device file, locked.
tl::expected<std::shared_ptr<FileDescriptor>, int> I2cBus::open()
{
    tl::expected<FileDescriptor, int> file = driver->open(adapter.number);
    if (!file)
        return tl::unexpected(file.error());
    if (currentIncarnation(adapter.device) != adapter.incarnation)
        return tl::unexpected(ENODEV); // the number has passed to another adapter
    if (const int error = driver->lock(*file); error != 0)
        return tl::unexpected(error);
    return std::make_shared<FileDescriptor>(std::move(*file));
}

int I2cBus::transact(std::span<const I2cMessage> messages)
{
    std::shared_ptr<FileDescriptor> file = held.lock();
    if (!file) {
        const auto opened = open();
        if (!opened)
            return opened.error();
        file = *opened;
    }
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

} // namespace lumenvale
