// SPDX-License-Identifier: MIT
#include "platform/posix/InstanceLock.h"

#include <QTemporaryDir>
#include <array>
#include <csignal>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace lumenvale {
namespace {

/// A process that waits for a word, tries to lock, tells how it went, and stays until it is killed.
class Contender {
public:
    explicit Contender(const std::string& folder)
    {
        EXPECT_EQ(::pipe(start.data()), 0);
        EXPECT_EQ(::pipe(result.data()), 0);
        process = ::fork();
        if (process == 0)
            compete(folder);
    }
    Contender(const Contender&) = delete;
    Contender& operator=(const Contender&) = delete;
    ~Contender()
    {
        kill();
        for (const int end : {start[0], start[1], result[0], result[1]})
            ::close(end);
    }

    void go() { EXPECT_EQ(::write(start[1], "g", 1), 1); }
    bool hasLock()
    {
        char answer = 0;
        EXPECT_EQ(::read(result[0], &answer, 1), 1);
        return answer == 'y';
    }
    void kill()
    {
        if (process > 0) {
            ::kill(process, SIGKILL);
            ::waitpid(process, nullptr, 0);
            process = -1;
        }
    }

private:
    [[noreturn]] void compete(const std::string& folder)
    {
        char word = 0;
        if (::read(start[0], &word, 1) != 1)
            ::_exit(1);
        const auto lock = InstanceLock::acquire(folder);
        if (::write(result[1], lock ? "y" : "n", 1) != 1)
            ::_exit(1);
        for (;;)
            ::pause();
    }

    std::array<int, 2> start{};
    std::array<int, 2> result{};
    pid_t process = -1;
};

TEST(InstanceLock, OneOfTwoCopiesStartedTogetherGetsItAndLeavesNothingStaleWhenKilled)
{
    const QTemporaryDir directory;
    const std::string folder = directory.path().toStdString() + "/not/there/yet";
    for (int round = 0; round < 100; ++round) {
        Contender first(folder);
        Contender second(folder);
        first.go();
        second.go();
        const bool firstHasIt = first.hasLock();
        const bool secondHasIt = second.hasLock();
        ASSERT_NE(firstHasIt, secondHasIt) << "round " << round;
        EXPECT_FALSE(InstanceLock::acquire(folder));
        (firstHasIt ? first : second).kill();
        EXPECT_TRUE(InstanceLock::acquire(folder)) << "round " << round;
    }
}

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
