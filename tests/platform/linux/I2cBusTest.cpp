// SPDX-License-Identifier: MIT
#include "FakeI2cDriver.h"
#include "FakeSysfs.h"

#include "platform/linux/displays/I2cBus.h"

#include <chrono>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using Log = std::vector<std::string>;

class I2cBusTest : public testing::Test {
protected:
    I2cBusTest()
    {
        const auto device = system.addCard();
        adapterFolder = system.addAdapter(device, 3, "AUX B/DDI B/PHY B");
        bus = std::make_unique<I2cBus>(readDisplayAdapters(system.paths()).at(0), driver,
                                       [this](std::chrono::microseconds time) { waited += time; });
    }

    int write() { return bus->writeI2C(0x37, 0x51, request); }

    FakeSysfs system;
    FakeSysfs::Path adapterFolder;
    std::shared_ptr<FakeI2cDriver> driver = std::make_shared<FakeI2cDriver>();
    std::unique_ptr<I2cBus> bus;
    std::chrono::microseconds waited{};
    const std::array<std::uint8_t, 4> request = {0x82, 0x01, 0x10, 0xFD};
};

TEST_F(I2cBusTest, TheDataAddressGoesInFrontOfWrittenBytesAndIsNoPartOfAReading)
{
    driver->reply = {0x6E, 0x88, 0x02};
    std::array<std::uint8_t, 11> reply{};
    EXPECT_EQ(write(), 0);
    EXPECT_EQ(bus->readI2C(0x37, 0x51, reply), 0);
    EXPECT_EQ(reply[1], 0x88);
    EXPECT_EQ(driver->log, (Log{"open 3", "lock", "W37 51 82 01 10 fd", "open 3", "lock", "R37 11"}));
    EXPECT_EQ(waited.count(), 0);
}

TEST_F(I2cBusTest, ReadingTheEdidWritesNothingButTheOffset)
{
    const EdidBlock edid = EdidBuilder{}.build();
    driver->monitors = {{3, edid}};
    EXPECT_EQ(bus->readEdid().value(), edid);
    EXPECT_EQ(driver->log, (Log{"open 3", "lock", "W50 00", "R50 128"}));
    driver->monitors.clear();
    EXPECT_EQ(bus->readEdid().error(), ENXIO);
}

TEST_F(I2cBusTest, MessagesGoOneByOneToDriversThatRefuseTransactions)
{
    const EdidBlock edid = EdidBuilder{}.build();
    driver->monitors = {{3, edid}};
    driver->transferError = EINVAL;
    EXPECT_EQ(bus->readEdid().value(), edid);
    EXPECT_EQ(driver->log, (Log{"open 3", "lock", "single W50 00", "single R50 128"}));
    driver->transferError = EIO; // a bus error is no refusal
    driver->log.clear();
    EXPECT_EQ(write(), EIO);
    EXPECT_EQ(driver->log, (Log{"open 3", "lock"}));
}

TEST_F(I2cBusTest, ABusyBusIsWaitedForAShortWhileOnly)
{
    driver->lockErrors = {EAGAIN, EAGAIN};
    EXPECT_EQ(write(), 0);
    EXPECT_EQ(driver->log, (Log{"open 3", "lock", "lock", "lock", "W37 51 82 01 10 fd"}));
    EXPECT_EQ(waited, 2 * I2cBus::lockInterval);

    driver->lockErrors.assign(1000, EAGAIN);
    waited = {};
    EXPECT_EQ(write(), EAGAIN);
    EXPECT_EQ(waited, (I2cBus::lockAttempts - 1) * I2cBus::lockInterval);
    EXPECT_EQ(bus->readEdid().error(), EAGAIN);
    EXPECT_LT(waited, std::chrono::seconds(1));

    driver->log.clear();
    driver->openError = EACCES;
    EXPECT_EQ(write(), EACCES);
    EXPECT_EQ(driver->log, Log{"open 3"}) << "no permission is nothing to wait for";
}

TEST_F(I2cBusTest, ANumberThatPassedToAnotherAdapterIsNotUsed)
{
    FakeSysfs::write(system.root() / "other/name", "AUX C/DDI C/PHY C");
    std::filesystem::remove_all(adapterFolder);
    EXPECT_EQ(write(), ENODEV);
    std::filesystem::rename(system.root() / "other", adapterFolder);
    EXPECT_EQ(write(), ENODEV);
    EXPECT_EQ(driver->log, (Log{"open 3", "open 3"}));
}

TEST_F(I2cBusTest, AddressesBeyondTheBusAreRefusedWithoutOpeningIt)
{
    std::array<std::uint8_t, 200> tooMuch{};
    EXPECT_EQ(bus->writeI2C(0x78, 0x51, request), EINVAL);
    EXPECT_EQ(bus->writeI2C(0x37, 0x100, request), EINVAL);
    EXPECT_EQ(bus->writeI2C(0x37, 0x51, tooMuch), EINVAL);
    EXPECT_EQ(bus->readI2C(0x37, 0x51, tooMuch), EINVAL);
    EXPECT_TRUE(driver->log.empty());
}

TEST(KernelI2cDriver, OnlyTheAdaptersOwnDeviceFileIsTaken)
{
    FakeSysfs system;
    system.addAdapter(system.addCard(), 3, "DPMST"); // an ordinary file stands in its place
    const auto driver = makeI2cDriver(system.paths().devices);
    EXPECT_EQ(driver->open(3).error(), ENODEV);
    EXPECT_EQ(driver->open(4).error(), ENOENT);
}

} // namespace
} // namespace lumenvale
