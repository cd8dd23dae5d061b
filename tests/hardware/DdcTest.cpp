// SPDX-License-Identifier: MIT
#include "hardware/DdcExchange.h"
#include "support/FakeHardwareAccess.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using namespace std::chrono_literals;
using Log = std::vector<std::string>;

const Bytes validReply = {0x6E, 0x88, 0x02, 0x00, 0x10, 0x00, 0x00, 0x64, 0x00, 0x32, 0xF2};

TEST(DdcMessage, AReplyIsReadOnlyWhenItIsWholeAndMeansTheFeatureThatWasAskedFor)
{
    EXPECT_EQ(parseVcpReply(validReply, 0x10), (VcpReading{100, 50}));
    EXPECT_EQ(parseVcpReply(luminanceReply(0xABCD, 0x1234), 0x10), (VcpReading{0xABCD, 0x1234}));
    EXPECT_FALSE(parseVcpReply(validReply, 0x12));
    EXPECT_FALSE(parseVcpReply(luminanceReply(0, 0), 0x10));
    EXPECT_FALSE(parseVcpReply(luminanceReply(100, 101), 0x10));
    EXPECT_FALSE(parseVcpReply(Bytes{0x6E, 0x80, 0xBE, 0, 0, 0, 0, 0, 0, 0, 0}, 0x10)) << "the null message";
    for (std::size_t index = 0; index <= 5; ++index) {
        Bytes other(validReply.begin(), validReply.end() - 1);
        other[index] = 0x01;
        const bool isType = index == 5; // which may be anything
        EXPECT_EQ(parseVcpReply(sealed(other), 0x10).has_value(), isType) << "byte " << index;
    }
}

TEST(DdcMessage, EveryTruncationExtensionAndDamageOfAReplyIsRefused)
{
    for (std::size_t length = 0; length < validReply.size(); ++length)
        EXPECT_FALSE(parseVcpReply(std::span(validReply).first(length), 0x10)) << length;
    EXPECT_FALSE(parseVcpReply(sealed(validReply), 0x10));
    EXPECT_FALSE(hasValidChecksum({}));
    for (std::size_t bit = 0; bit < validReply.size() * 8; ++bit) {
        Bytes damaged = validReply;
        damaged[bit / 8] = static_cast<std::uint8_t>(damaged[bit / 8] ^ 1U << bit % 8);
        EXPECT_FALSE(hasValidChecksum(damaged) || parseVcpReply(damaged, 0x10)) << "bit " << bit;
    }
}

const Log attempt = {"wait 10000", "write 82 01 10 FD", "wait 10000", "write 82 01 10 FD", "wait 50000", "read"};

/// `attempts` failed ones with the wait after each, then `last`.
Log after(int attempts, Log failed, Log last = {})
{
    failed.emplace_back("wait 20000");
    for (int i = 0; i < attempts; ++i)
        last.insert(last.begin(), failed.begin(), failed.end());
    return last;
}

TEST(DdcExchange, ReadsAgainUntilAReplyIsWhole)
{
    const Bytes senseless = luminanceReply(100, 101);
    Bytes wrong = validReply;
    wrong.back() ^= 1;
    struct {
        std::deque<Bytes> replies; ///< and then the true one; with none at all the monitor is silent
        DdcTiming timing;
        bool isRead;
        Log log;
    } const rows[] = {
        {{validReply}, {}, true, attempt},
        {{wrong, wrong}, {}, true, after(2, attempt, attempt)}, // a bad checksum is asked for again
        {{senseless}, {}, false, attempt},                      // a whole reply that makes no sense is not
        {{}, {}, false, after(5, attempt)},
        {{}, {.retries = 2}, false, after(3, attempt)},
        {{},
         {.writeWait = 1us, .writeCycles = 0, .readWait = 2us, .retries = 0, .retryWait = 3us},
         false,
         {"wait 1", "write 82 01 10 FD", "wait 2", "read", "wait 3"}},
    };
    for (const auto& row : rows) {
        FakeDdcMonitor monitor;
        monitor.silent = row.replies.empty();
        monitor.replies = row.replies;
        EXPECT_EQ(readVcp(&monitor, 0x10, row.timing, monitor.recordingPause()).has_value(), row.isRead);
        EXPECT_EQ(monitor.log, row.log) << "row " << &row - rows;
        EXPECT_FALSE(monitor.wrongAddress);
    }
}

TEST(DdcExchange, AWriteIsJudgedByTheLastWriteOfTheAttempt)
{
    const Log writes = {"wait 10000", "write 84 03 10 00 32 9A", "wait 10000", "write 84 03 10 00 32 9A"};
    FakeDdcMonitor monitor;
    monitor.writeStatuses = {-1, 0, 0, -1, 0, 0};
    EXPECT_TRUE(writeVcp(&monitor, 0x10, 50, {}, monitor.recordingPause()));
    EXPECT_EQ(monitor.log, writes);
    monitor.log.clear();
    EXPECT_TRUE(writeVcp(&monitor, 0x10, 50, {}, monitor.recordingPause()));
    EXPECT_EQ(monitor.log, after(1, writes, writes));
    EXPECT_EQ(setVcpRequest(0x10, 0xABCD), (std::array<std::uint8_t, 6>{0x84, 0x03, 0x10, 0xAB, 0xCD, 0xCE}));
    EXPECT_DEATH(readVcp(&monitor, 0x10, {.retries = 254}, {}), "") << "the caller's defect";
}

} // namespace
} // namespace lumenvale
