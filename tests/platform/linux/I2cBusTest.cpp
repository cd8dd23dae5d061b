// SPDX-License-Identifier: MIT
#include "FakeI2cDriver.h"
#include "FakeSysfs.h"
#include "support/FakeHardwareAccess.h"

#include "platform/linux/displays/DisplayTroubles.h"
#include "platform/linux/displays/I2cBus.h"

#include <gtest/gtest.h>

namespace lumenvale {
namespace {

using Log = std::vector<std::string>;

struct I2cBusTest : testing::Test {
    int write() { return bus.writeI2C(0x37, 0x51, request); }
    Log takeLog() { return std::exchange(driver->log, {}); }

    FakeSysfs system{"i915; 3 S AUX B/DDI B/PHY B"};
    std::shared_ptr<FakeI2cDriver> driver = std::make_shared<FakeI2cDriver>();
    I2cBus bus{readDisplayAdapters(system.paths()).at(0), driver};
    const std::array<std::uint8_t, 4> request = {0x82, 0x01, 0x10, 0xFD};
    std::array<std::uint8_t, 200> buffer{};
};

TEST_F(I2cBusTest, TheBytesOnTheWire)
{
    driver->monitors = system.answers;
    EXPECT_EQ(write(), 0);
    EXPECT_EQ(takeLog(), (Log{"open 3", "lock", "W37 51 82 01 10 fd"}));
    EXPECT_EQ(bus.readI2C(0x37, 0x51, std::span(buffer).first(3)), EPROTO);
    EXPECT_EQ(takeLog(), (Log{"open 3", "lock", "R37 3"}));
    EXPECT_EQ(bus.readEdid().value(), edidOf('S'));
    EXPECT_EQ(takeLog(), (Log{"open 3", "lock", "W50 00", "R50 128"})) << "nothing is written but the offset";
    driver->transferError = EINVAL; // a driver that refuses transactions gets the messages one by one
    EXPECT_EQ(bus.readEdid().value(), edidOf('S'));
    EXPECT_EQ(takeLog(), (Log{"open 3", "lock", "single W50 00", "single R50 128"}));
    driver->transferError = EIO; // a bus error is no refusal
    EXPECT_EQ(write(), EIO);
    driver->transferError = 0;
    driver->monitors.clear();
    EXPECT_EQ(bus.readEdid().error(), ENXIO);
}

TEST_F(I2cBusTest, OneLockIsHeldFromTheRequestToTheReplyAndNothingIsDoneOnABusyBus)
{
    Hold hold = bus.tryHold();
    EXPECT_EQ(bus.tryHold(), hold);
    EXPECT_EQ(write(), 0);
    EXPECT_EQ(bus.readI2C(0x37, 0x51, std::span(buffer).first(11)), EPROTO);
    EXPECT_EQ(takeLog(), (Log{"open 3", "lock", "W37 51 82 01 10 fd", "R37 11"}));
    const auto isFailure = [&](const Bytes& reply) {
        driver->reply = reply;
        return bus.readI2C(0x37, 0x51, std::span(buffer).first(11)) == EPROTO;
    };
    EXPECT_TRUE(isFailure({0x6E, 0x80, 0xBE, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF})) << "a null message";
    EXPECT_TRUE(isFailure(sealed({0x6E, 0x88, 0x02, 0x00, 0x12, 0, 0, 100, 0, 50}))) << "somebody else's";
    EXPECT_FALSE(isFailure(luminanceReply(100, 50)) || isFailure({0x6E, 0x88, 0x02, 0x01, 0x10})) << "unsupported";
    const auto troubles = std::make_shared<DisplayTroubles>();
    const auto noting = notingTroubles(std::shared_ptr<AVService>(&bus, [](AVService*) {}), 7, troubles);
    driver->reply = {0x6E, 0x80, 0xBE};
    EXPECT_EQ(noting->readI2C(0x37, 0x51, std::span(buffer).first(11)), EPROTO);
    EXPECT_EQ(troubles->of(7)->kind, DisplayTrouble::Kind::withoutValue);
    hold.reset();
    takeLog();
    driver->busyLocks = 2;
    EXPECT_FALSE(bus.tryHold());
    EXPECT_EQ(write(), EAGAIN);
    EXPECT_EQ(takeLog(), (Log{"open 3", "lock", "open 3", "lock"}));
    driver->openError = EACCES;
    EXPECT_TRUE(bus.tryHold()) << "no permission is nothing to wait for";
    EXPECT_EQ(write(), EACCES);
}

TEST_F(I2cBusTest, NeitherAnotherAdapterNorAnotherFileNorAnAddressBeyondTheBusIsUsed)
{
    EXPECT_EQ(bus.writeI2C(0x78, 0x51, request), EINVAL);
    EXPECT_EQ(bus.writeI2C(0x37, 0x100, request), EINVAL);
    EXPECT_EQ(bus.writeI2C(0x37, 0x51, buffer), EINVAL);
    EXPECT_EQ(bus.readI2C(0x37, 0x51, buffer), EINVAL);
    EXPECT_TRUE(takeLog().empty());
    const auto adapter = resolved(system.root() / "bus/i2c/devices/i2c-3");
    FakeSysfs::write(system.root() / "other/name", "AUX C/DDI C/PHY C");
    std::filesystem::remove_all(adapter);
    EXPECT_EQ(write(), ENODEV);
    std::filesystem::rename(system.root() / "other", adapter); // the number has passed to it
    EXPECT_EQ(write(), ENODEV);
    EXPECT_EQ(takeLog(), (Log{"open 3", "open 3"}));
    const auto kernel = makeI2cDriver(system.paths().devices); // where an ordinary file stands
    EXPECT_EQ(kernel->open(3).error(), ENODEV);
    EXPECT_EQ(kernel->open(4).error(), ENOENT);
}

} // namespace
} // namespace lumenvale
