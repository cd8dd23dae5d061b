// SPDX-License-Identifier: MIT
// An exclusive lock on a folder between processes. The system drops it when the process ends, however it ends, and
// it leaves no file behind. Any thread.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <chrono>
#include <string>

namespace lumenvale {

class FolderLock {
public:
    /// Waits up to `patience` for the lock.
    FolderLock(const std::string& path, std::chrono::milliseconds patience);

    enum class State {
        held,
        taken,      ///< another process did not let go
        unavailable ///< the file system cannot lock folders
    };
    State state() const { return current; }

private:
    FileDescriptor folder;
    State current = State::unavailable;
};

} // namespace lumenvale
