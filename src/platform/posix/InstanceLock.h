// SPDX-License-Identifier: MIT
// Lets one copy of the program run per folder: an exclusive file lock that the system drops when the process
// ends, however it ends.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <optional>
#include <string>
#include <utility>

namespace lumenvale {

class InstanceLock {
public:
    /// Locks "instance.lock" in `folder`, which is made where it is missing (mode 0700). None when another
    /// process holds it, or when folder or file cannot be made. Never waits.
    static std::optional<InstanceLock> acquire(const std::string& folder);

private:
    explicit InstanceLock(FileDescriptor locked) : file(std::move(locked)) {}

    FileDescriptor file; ///< the lock lasts as long as it is open
};

/// The folder of the program's own files: `identifier` in the user's data folder (macOS: Application Support;
/// elsewhere XDG_DATA_HOME).
std::string supportFolder(const std::string& identifier);

} // namespace lumenvale
