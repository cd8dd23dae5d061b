// SPDX-License-Identifier: MIT
#include "platform/posix/FolderLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>

namespace lumenvale {

namespace {

/// flock(2) can only wait for ever; this is how often it is asked instead.
constexpr auto retryWait = std::chrono::milliseconds(5);

} // namespace

FolderLock::FolderLock(const std::string& path, std::chrono::milliseconds patience)
    : folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (folder.isOpen()) {
        if (flock(folder.get(), LOCK_EX | LOCK_NB) == 0) {
            current = State::held;
            return;
        }
        current = errno == EWOULDBLOCK || errno == EINTR ? State::taken : State::unavailable;
        if (current == State::unavailable || std::chrono::steady_clock::now() >= end)
            return;
        std::this_thread::sleep_for(retryWait);
    }
}

} // namespace lumenvale
