// SPDX-License-Identifier: MIT
// Lets one copy of the program run per folder: an exclusive file lock that the system drops when the process
// ends, however it ends.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <string>
#include <system_error>
#include <tl/expected.hpp>
#include <utility>

namespace lumenvale {

class InstanceLock {
public:
    /// Locks "instance.lock" in `folder`, which is made where it is missing (mode 0700). The error is empty when
    /// another process holds the lock, else a whole sentence for the user: folder or file cannot be made. Never
    /// waits.
    static tl::expected<InstanceLock, std::string> acquire(const std::string& folder);

private:
    explicit InstanceLock(FileDescriptor locked) : file(std::move(locked)) {}

    FileDescriptor file; ///< the lock lasts as long as it is open
};

/// Makes it where it is missing, for its user alone (mode 0700).
std::error_code makeFolder(const std::string& folder);

/// The folder of the program's own files: `identifier` in the user's data folder (macOS: Application Support;
/// elsewhere XDG_DATA_HOME).
std::string supportFolder(const std::string& identifier);

} // namespace lumenvale
