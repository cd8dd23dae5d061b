// SPDX-License-Identifier: MIT
#include "app/InstanceLock.h"

#include <QTemporaryDir>
#include <filesystem>
#include <gtest/gtest.h>

namespace lumenvale {
namespace {

TEST(InstanceLock, IsHeldOnceAndByOneUserAndFreeAgainWhenLetGo)
{
    const QTemporaryDir directory;
    const std::string folder = directory.path().toStdString() + "/not/there/yet";
    {
        const auto held = InstanceLock::acquire(folder);
        ASSERT_TRUE(held);
        EXPECT_FALSE(InstanceLock::acquire(folder));
    }
    EXPECT_TRUE(InstanceLock::acquire(folder));
    const auto permissions = std::filesystem::status(folder + "/instance.lock").permissions();
    EXPECT_EQ(permissions, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    EXPECT_FALSE(InstanceLock::acquire(folder + "/instance.lock")); // a file stands where the folder should
    EXPECT_FALSE(InstanceLock::acquire(""));
}

} // namespace
} // namespace lumenvale
