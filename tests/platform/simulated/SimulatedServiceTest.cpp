// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedService.h"
#include "support/MonitorFolder.h"

#include <bit>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using Bytes = std::vector<std::uint8_t>;

const Bytes getLuminance{0x82, 0x01, 0x10, 0xFD};
const Bytes setTo50{0x84, 0x03, 0x10, 0x00, 0x32, 0x9A};
const Bytes luminance42{0x6E, 0x88, 0x02, 0x00, 0x10, 0x00, 0x00, 0x64, 0x00, 0x2A, 0xEA};
const Bytes nullReply{0x6E, 0x80, 0xBE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};

struct SimulatedServiceTest : testing::Test {
    SimulatedServiceTest() { describe(""); }

    void describe(const std::string& fault)
    {
        folder.write("x.json", R"({"name": "X", "ddc": {"current": 42)" + fault + "}}");
    }
    int write(const Bytes& bytes) { return service.writeI2C(0x37, 0x51, bytes); }
    /// What is read; empty when it fails.
    Bytes read()
    {
        Bytes bytes(11, 0);
        return service.readI2C(0x37, 0x51, bytes) == 0 ? bytes : Bytes{};
    }
    int current() const { return folder.monitor("x.json").at("ddc").at("current"); }

    MonitorFolder folder;
    std::vector<std::chrono::microseconds> waits;
    SimulatedService service{SimulatedMonitor(folder.path() + "/x.json"),
                             [this](auto time) { waits.push_back(time); }};
};

TEST_F(SimulatedServiceTest, TakesWholeMessagesOnlyAndAnswersEachRequestOnce)
{
    for (const Bytes& request : {getLuminance, Bytes{0x82, 0x01, 0x10, 0xAC}}) { // either checksum
        EXPECT_EQ(write(request), 0);
        EXPECT_EQ(read(), luminance42);
        EXPECT_EQ(read(), nullReply);
    }
    EXPECT_EQ(write({0x82, 0x01, 0x12, 0xFF}), 0); // contrast
    EXPECT_EQ(read(), (Bytes{0x6E, 0x88, 0x02, 0x01, 0x12, 0, 0, 0, 0, 0, 0xA7}));
    for (std::size_t size = 0; size < getLuminance.size(); ++size) {
        EXPECT_EQ(write(Bytes(getLuminance.begin(), getLuminance.begin() + static_cast<std::ptrdiff_t>(size))), 0);
        EXPECT_EQ(read(), nullReply);
    }
    for (std::size_t bit = 0; bit < setTo50.size() * 8; ++bit) {
        Bytes damaged = setTo50;
        damaged[bit / 8] ^= static_cast<std::uint8_t>(1U << bit % 8);
        EXPECT_EQ(write(damaged), 0);
        EXPECT_EQ(current(), 42) << "bit " << bit;
    }
    EXPECT_EQ(write(setTo50), 0);
    EXPECT_EQ(current(), 50);
    EXPECT_NE(service.writeI2C(0x50, 0x51, getLuminance), 0);
    EXPECT_NE(service.writeI2C(0x37, 0x50, getLuminance), 0);
    EXPECT_TRUE(waits.empty());
}

TEST_F(SimulatedServiceTest, FailsAsItsFileAsks)
{
    describe(R"(, "silent": true, "delayMs": 30)");
    EXPECT_NE(write(setTo50), 0);
    EXPECT_EQ(read(), Bytes{});
    EXPECT_EQ(current(), 42);
    EXPECT_EQ(waits, std::vector(2, std::chrono::microseconds(30'000)));
    describe(R"(, "failNextTransfers": 2)");
    EXPECT_NE(write(setTo50), 0);
    EXPECT_EQ(folder.monitor("x.json").at("ddc").at("failNextTransfers").get<int>(), 1);
    EXPECT_EQ(read(), Bytes{});
    describe(R"(, "corruptEvery": 3)");
    for (int reply = 1; reply <= 30; ++reply) {
        write(getLuminance);
        const Bytes bytes = read();
        int damagedBits = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i)
            damagedBits += std::popcount(static_cast<unsigned>(bytes[i] ^ luminance42[i]));
        EXPECT_EQ(damagedBits, reply % 3 == 0 ? 1 : 0) << "reply " << reply;
    }
    folder.remove("x.json");
    EXPECT_NE(write(setTo50), 0);
}

} // namespace
} // namespace lumenvale
