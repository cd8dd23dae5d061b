// SPDX-License-Identifier: MIT
#include "platform/posix/InstanceLock.h"

#include <QTemporaryDir>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace lumenvale {
namespace {

/// Starts a process that tries for the lock, writes "y" or "n" to the file, and stays until it is killed.
pid_t startCopy(const std::string& folder, int answers)
{
    const pid_t process = ::fork();
    if (process != 0)
        return process;
    const auto lock = InstanceLock::acquire(folder);
    if (::write(answers, lock ? "y" : "n", 1) != 1)
        ::_exit(1);
    for (;;)
        ::pause();
}

TEST(InstanceLock, SlowOneOfTwoCopiesStartedTogetherGetsItAndLeavesNothingStaleWhenKilled)
{
    const QTemporaryDir directory;
    const std::string folder = directory.path().toStdString() + "/not/there/yet";
    int pipe[2];
    ASSERT_EQ(::pipe(pipe), 0);
    for (int round = 0; round < 100; ++round) {
        const pid_t copies[] = {startCopy(folder, pipe[1]), startCopy(folder, pipe[1])};
        char answers[2] = {};
        for (char& each : answers)
            EXPECT_EQ(::read(pipe[0], &each, 1), 1);
        EXPECT_NE(answers[0], answers[1]) << "round " << round;
        EXPECT_FALSE(InstanceLock::acquire(folder));
        for (const pid_t each : copies) {
            ::kill(each, SIGKILL);
            ::waitpid(each, nullptr, 0);
        }
        ASSERT_TRUE(InstanceLock::acquire(folder)) << "round " << round;
    }
    using std::filesystem::perms, std::filesystem::status;
    EXPECT_EQ(status(folder + "/instance.lock").permissions(), perms::owner_read | perms::owner_write);
    EXPECT_EQ(status(folder).permissions(), perms::owner_all);
    EXPECT_FALSE(InstanceLock::acquire(folder + "/instance.lock")) << "a file stands where the folder should";
}

} // namespace
} // namespace lumenvale
