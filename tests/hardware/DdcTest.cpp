// SPDX-License-Identifier: MIT
#include "hardware/DdcExchange.h"
#include "hardware/DdcMessage.h"

#include "support/FakeHardwareAccess.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace lumenvale {
namespace {

using Log = std::vector<std::string>;

const Bytes validReply = {0x6E, 0x88, 0x02, 0x00, 0x10, 0x00, 0x00, 0x64, 0x00, 0x32, 0xF2};

/// `reply` with the byte at `index` replaced, and with a checksum that is right again.
Bytes withByte(Bytes reply, std::size_t index, std::uint8_t value)
{
    reply[index] = value;
    reply.back() = 0x50;
    for (std::size_t i = 0; i + 1 < reply.size(); ++i)
        reply.back() = static_cast<std::uint8_t>(reply.back() ^ reply[i]);
    return reply;
}

TEST(DdcMessage, RequestsHaveTheirExactBytes)
{
    EXPECT_EQ(getVcpRequest(0x10), (std::array<std::uint8_t, 4>{0x82, 0x01, 0x10, 0xFD}));
    EXPECT_EQ(setVcpRequest(0x10, 50), (std::array<std::uint8_t, 6>{0x84, 0x03, 0x10, 0x00, 0x32, 0x9A}));
    EXPECT_EQ(setVcpRequest(0x10, 0xABCD), (std::array<std::uint8_t, 6>{0x84, 0x03, 0x10, 0xAB, 0xCD, 0xCE}));
}

TEST(DdcMessage, AValidReplyIsRead)
{
    EXPECT_EQ(parseVcpReply(validReply, 0x10), (VcpReading{100, 50}));
    EXPECT_EQ(parseVcpReply(withByte(validReply, 5, 0x01), 0x10), (VcpReading{100, 50})) << "any type code";
    EXPECT_EQ(parseVcpReply(luminanceReply(0xABCD, 0x1234), 0x10), (VcpReading{0xABCD, 0x1234}));
}

TEST(DdcMessage, EveryTruncationAndExtensionOfAReplyIsRefused)
{
    for (std::size_t length = 0; length < validReply.size(); ++length)
        EXPECT_FALSE(parseVcpReply(std::span(validReply).first(length), 0x10)) << length;
    Bytes longer = validReply;
    longer.push_back(0);
    EXPECT_FALSE(parseVcpReply(longer, 0x10));
    EXPECT_FALSE(hasValidChecksum({}));
}

TEST(DdcMessage, EveryDamageOfOneBitIsRefused)
{
    for (std::size_t bit = 0; bit < validReply.size() * 8; ++bit) {
        Bytes damaged = validReply;
        damaged[bit / 8] = static_cast<std::uint8_t>(damaged[bit / 8] ^ 1U << bit % 8);
        EXPECT_FALSE(hasValidChecksum(damaged)) << "bit " << bit;
        EXPECT_FALSE(parseVcpReply(damaged, 0x10)) << "bit " << bit;
    }
}

TEST(DdcMessage, AReplyThatIsWholeButMeansSomethingElseIsRefused)
{
    for (const std::size_t index : {0U, 1U, 2U, 3U, 4U})
        EXPECT_FALSE(parseVcpReply(withByte(validReply, index, 0x01), 0x10)) << "byte " << index;
    EXPECT_FALSE(parseVcpReply(validReply, 0x12)) << "another feature's reply";
    EXPECT_FALSE(parseVcpReply(luminanceReply(0, 0), 0x10));
    EXPECT_FALSE(parseVcpReply(luminanceReply(100, 101), 0x10));
    EXPECT_FALSE(parseVcpReply(Bytes{0x6E, 0x80, 0xBE, 0, 0, 0, 0, 0, 0, 0, 0}, 0x10)) << "the null message";
}

TEST(DdcExchange, AReadWritesTwiceWaitsAndReads)
{
    FakeDdcMonitor monitor;
    EXPECT_EQ(readVcp(&monitor, 0x10, {}, monitor.recordingPause()), (VcpReading{100, 50}));
    EXPECT_EQ(monitor.log,
              (Log{"wait 10000", "write 82 01 10 FD", "wait 10000", "write 82 01 10 FD", "wait 50000", "read"}));
    EXPECT_FALSE(monitor.wrongAddress);
}

TEST(DdcExchange, AWriteIsJudgedByTheLastWriteOfTheAttempt)
{
    FakeDdcMonitor monitor;
    monitor.writeStatuses = {-1, 0};
    EXPECT_TRUE(writeVcp(&monitor, 0x10, 50, {}, monitor.recordingPause()));
    EXPECT_EQ(monitor.log,
              (Log{"wait 10000", "write 84 03 10 00 32 9A", "wait 10000", "write 84 03 10 00 32 9A"}));

    monitor.log.clear();
    monitor.writeStatuses = {0, -1, 0, 0};
    EXPECT_TRUE(writeVcp(&monitor, 0x10, 50, {}, monitor.recordingPause()));
    EXPECT_EQ(monitor.log.size(), 4U + 1U + 4U);
    EXPECT_EQ(monitor.log[4], "wait 20000");
}

TEST(DdcExchange, AWholeReplyThatMeansSomethingElseIsNotAskedForAgain)
{
    FakeDdcMonitor monitor;
    monitor.replies = {luminanceReply(100, 101)};
    EXPECT_FALSE(readVcp(&monitor, 0x10, {}, monitor.recordingPause()));
    EXPECT_EQ(monitor.log.size(), 6U);
}

TEST(DdcExchange, GivesUpAfterTheLastRetryAndItsWait)
{
    FakeDdcMonitor monitor;
    monitor.silent = true;
    EXPECT_FALSE(readVcp(&monitor, 0x10, {.retries = 2}, monitor.recordingPause()));
    EXPECT_EQ(monitor.log.size(), 3U * 7U);
    EXPECT_EQ(monitor.log.back(), "wait 20000");

    monitor.log.clear();
    EXPECT_FALSE(readVcp(&monitor, 0x10, {}, monitor.recordingPause())) << "five attempts by default";
    EXPECT_EQ(monitor.log.size(), 5U * 7U);
}

TEST(DdcExchange, ADamagedReplyIsAskedForAgainFromTheBeginningInTheCallersTiming)
{
    using namespace std::chrono_literals;
    FakeDdcMonitor monitor;
    const DdcTiming timing{.writeWait = 1us, .writeCycles = 0, .readWait = 2us, .retries = 1, .retryWait = 3us};
    monitor.replies = {validReply};
    monitor.replies[0].back() ^= 0x01;
    EXPECT_TRUE(readVcp(&monitor, 0x10, timing, monitor.recordingPause()));
    EXPECT_EQ(monitor.log, (Log{"wait 1", "write 82 01 10 FD", "wait 2", "read", "wait 3", "wait 1",
                                "write 82 01 10 FD", "wait 2", "read"}));
}

TEST(DdcExchangeDeathTest, TooManyAttemptsAreTheCallersDefect)
{
    FakeDdcMonitor monitor;
    EXPECT_DEATH(readVcp(&monitor, 0x10, {.retries = 254}, monitor.recordingPause()), "");
}

} // namespace
} // namespace lumenvale
