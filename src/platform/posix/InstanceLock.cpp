// SPDX-License-Identifier: MIT
#include "platform/posix/InstanceLock.h"

#include "platform/posix/SystemError.h"

#include <QStandardPaths>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <system_error>

namespace lumenvale {

tl::expected<InstanceLock, std::string> InstanceLock::acquire(const std::string& folder)
{
    if (folder.empty())
        return tl::unexpected<std::string>("There is no home folder to keep the program's data in.");
    const auto unusable = [&folder](int error) {
        return tl::unexpected("The folder " + folder + " cannot be used: " + systemErrorText(error) + ".");
    };
    if (const std::error_code error = makeFolder(folder))
        return unusable(error.value());
    // Closed in programs that this one starts: they must not keep the lock when it ends.
    FileDescriptor file(::open((folder + "/instance.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (!file.isOpen())
        return unusable(errno);
    if (::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return errno == EWOULDBLOCK ? tl::unexpected(std::string()) : unusable(errno);
    return InstanceLock(std::move(file));
}

std::error_code makeFolder(const std::string& folder)
{
    std::error_code error;
    if (std::filesystem::create_directories(folder, error))
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
    return error;
}

std::string supportFolder(const std::string& identifier)
{
    const QString base = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return base.isEmpty() ? std::string() : base.toStdString() + "/" + identifier;
}

} // namespace lumenvale
