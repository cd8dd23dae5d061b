// SPDX-License-Identifier: MIT
#include "platform/posix/InstanceLock.h"

#include <QStandardPaths>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>

namespace lumenvale {

std::optional<InstanceLock> InstanceLock::acquire(const std::string& folder)
{
    if (folder.empty())
        return std::nullopt;
    std::error_code error;
    if (std::filesystem::create_directories(folder, error))
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
    // Closed in programs that this one starts: they must not keep the lock when it ends.
    FileDescriptor file(::open((folder + "/instance.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!file.isOpen() || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return std::nullopt;
    return InstanceLock(std::move(file));
}

std::string supportFolder(const std::string& identifier)
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return base.isEmpty() ? std::string() : base.toStdString() + "/" + identifier;
}

} // namespace lumenvale
