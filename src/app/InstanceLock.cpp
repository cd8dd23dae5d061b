// SPDX-License-Identifier: MIT
#include "app/InstanceLock.h"

#include <QStandardPaths>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>
#include <utility>

namespace lumenvale {

std::optional<InstanceLock> InstanceLock::acquire(const std::string& folder)
{
    if (folder.empty())
        return std::nullopt;
    std::error_code error;
    if (std::filesystem::create_directories(folder, error))
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
    // Closed in programs that this one starts: they must not keep the lock when it ends.
    const int file = ::open((folder + "/instance.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0)
        return std::nullopt;
    if (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        ::close(file);
        return std::nullopt;
    }
    return InstanceLock(file);
}

InstanceLock::InstanceLock(InstanceLock&& other) noexcept : descriptor(std::exchange(other.descriptor, -1)) {}

InstanceLock::~InstanceLock()
{
    if (descriptor >= 0)
        ::close(descriptor);
}

std::string supportFolder(const std::string& identifier)
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return base.isEmpty() ? std::string() : base.toStdString() + "/" + identifier;
}

} // namespace lumenvale
