// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedService.h"

#include <algorithm>
#include <vector>

namespace lumenvale {

namespace {

// DDC/CI (VESA, version 1.1): 7-bit address, the host's source address, opcodes, checksum seeds.
constexpr std::uint32_t monitorAddress = 0x37;
constexpr std::uint32_t hostAddress = 0x51;
constexpr std::uint8_t getOpcode = 0x01;
constexpr std::uint8_t replyOpcode = 0x02;
constexpr std::uint8_t setOpcode = 0x03;
constexpr std::uint8_t luminanceCode = 0x10;
constexpr std::uint8_t replySeed = 0x50;
constexpr std::uint8_t requestSeed = 0x6E ^ 0x51;
/// Monitors also answer requests whose sender left its own address out of the checksum.
constexpr std::uint8_t tolerantSeed = 0x6E;

constexpr int notAcknowledged = 6; // what an I2C driver reports: no such device or address

std::uint8_t checksum(std::uint8_t seed, std::span<const std::uint8_t> bytes)
{
    for (const std::uint8_t byte : bytes)
        seed ^= byte;
    return seed;
}

bool isWhole(std::span<const std::uint8_t> message)
{
    if (message.size() < 3 || message[0] != (0x80U | (message.size() - 2)))
        return false;
    const auto content = message.first(message.size() - 1);
    return message.back() == checksum(requestSeed, content) ||
           (message[1] == getOpcode && message.back() == checksum(tolerantSeed, content));
}

std::vector<std::uint8_t> sealed(std::vector<std::uint8_t> reply)
{
    reply.push_back(checksum(replySeed, reply));
    return reply;
}

std::vector<std::uint8_t> nullReply() { return sealed({0x6E, 0x80}); }

std::vector<std::uint8_t> featureReply(const DdcControl& ddc, std::uint8_t code)
{
    if (code != luminanceCode) // result 1: unsupported
        return sealed({0x6E, 0x88, replyOpcode, 0x01, code, 0, 0, 0, 0, 0});
    const auto high = [](std::uint16_t word) { return static_cast<std::uint8_t>(word >> 8U); };
    const auto low = [](std::uint16_t word) { return static_cast<std::uint8_t>(word & 0xFFU); };
    return sealed({0x6E, 0x88, replyOpcode, 0x00, code, 0x00, high(ddc.maximum), low(ddc.maximum),
                   high(ddc.current), low(ddc.current)});
}

} // namespace

int SimulatedService::writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                               std::span<const std::uint8_t> bytes)
{
    const std::optional<DdcControl> ddc = acknowledge(chipAddress, dataAddress);
    if (!ddc)
        return notAcknowledged;
    requestedCode.reset();
    if (!isWhole(bytes))
        return 0; // acknowledged byte by byte, and thrown away
    if (bytes[1] == getOpcode && bytes.size() == 4)
        requestedCode = bytes[2];
    else if (bytes[1] == setOpcode && bytes.size() == 6 && bytes[2] == luminanceCode)
        setLuminance(*ddc, static_cast<std::uint16_t>(bytes[3] * 256U + bytes[4]));
    return 0;
}

int SimulatedService::readI2C(std::uint32_t chipAddress, std::uint32_t dataAddress, std::span<std::uint8_t> bytes)
{
    const std::optional<DdcControl> ddc = acknowledge(chipAddress, dataAddress);
    if (!ddc)
        return notAcknowledged;
    std::vector<std::uint8_t> reply = requestedCode ? featureReply(*ddc, *requestedCode) : nullReply();
    requestedCode.reset();
    ++replies;
    if (ddc->corruptEvery != 0 && replies % ddc->corruptEvery == 0) {
        const std::size_t bit = std::size_t{replies} * 7 % (reply.size() * 8); // another one each time
        reply[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
    }
    reply.resize(bytes.size(), 0xFF); // nobody drives the bus after the reply
    std::copy(reply.begin(), reply.end(), bytes.begin());
    return 0;
}

Hold SimulatedService::tryHold()
{
    Hold hold = held.lock();
    if (!hold)
        hold = monitor.tryHold();
    held = hold;
    return hold;
}

/// What every transfer begins with: the monitor's state if it answers its address, else none.
std::optional<DdcControl> SimulatedService::acknowledge(std::uint32_t chipAddress, std::uint32_t dataAddress)
{
    const auto file = monitor.read();
    if (!file || !file->ddc)
        return std::nullopt;
    const DdcControl& ddc = *file->ddc;
    if (ddc.delayMs != 0)
        pause(std::chrono::milliseconds(ddc.delayMs));
    if (ddc.failNextTransfers != 0) {
        monitor.setFailNextTransfers(ddc.failNextTransfers - 1);
        return std::nullopt;
    }
    if (ddc.silent || chipAddress != monitorAddress || dataAddress != hostAddress)
        return std::nullopt;
    return ddc;
}

void SimulatedService::setLuminance(const DdcControl& ddc, std::uint16_t value)
{
    if (ddc.ignoresWrites)
        return;
    const std::uint16_t next = ddc.overridesTo.value_or(std::min(value, ddc.maximum));
    if (next != ddc.current)
        monitor.setDdcCurrent(next);
}

} // namespace lumenvale
