// SPDX-License-Identifier: MIT
#include "platform/posix/FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <thread>
#include <utility>

namespace lumenvale {

namespace {

/// flock(2) can only wait for ever; this is how often it is asked instead.
constexpr auto retryWait = std::chrono::milliseconds(5);

} // namespace

tl::expected<FileDescriptor, int> tryLockFile(const std::string& path, int flags)
{
    constexpr unsigned mode = 0666;
    // Closed in programs that this one starts: they must not keep the lock when it ends.
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | flags, mode));
    if (!file.isOpen() || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return tl::unexpected(errno);
    return file;
}

Hold tryHoldFile(const std::string& path, int flags)
{
    tl::expected<FileDescriptor, int> file = tryLockFile(path, flags);
    if (!file)
        return file.error() == EWOULDBLOCK ? nullptr : holdOfNothing();
    return std::make_shared<FileDescriptor>(std::move(*file));
}

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
