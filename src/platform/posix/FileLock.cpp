// SPDX-License-Identifier: MIT
#include "platform/posix/FileLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <utility>

namespace lumenvale {

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

} // namespace lumenvale
