// SPDX-License-Identifier: MIT
#include "platform/posix/FolderLock.h"

#include "platform/posix/FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <thread>

namespace lumenvale {

namespace {

/// flock(2) can only wait for ever; this is how often it is asked instead.
constexpr auto retryWait = std::chrono::milliseconds(5);

} // namespace

FolderLock::FolderLock(const std::string& path, std::chrono::milliseconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        tl::expected<FileDescriptor, int> locked = tryLockFile(path, O_DIRECTORY);
        if (locked) {
            folder = std::move(*locked);
            current = State::held;
            return;
        }
        current = locked.error() == EWOULDBLOCK || locked.error() == EINTR ? State::taken : State::unavailable;
        if (current == State::unavailable || std::chrono::steady_clock::now() >= end)
            return;
        std::this_thread::sleep_for(retryWait);
    }
}

} // namespace lumenvale
