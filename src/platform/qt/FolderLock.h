// SPDX-License-Identifier: MIT
// An exclusive lock on a folder between processes. The system drops it when the process ends, however it ends, and
// it leaves no file behind. Any thread.
#pragma once

#include <chrono>
#include <string>

namespace lumenvale {

class FolderLock {
public:
    /// Waits up to `patience` for the lock.
    FolderLock(const std::string& folder, std::chrono::milliseconds patience);
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    ~FolderLock();

    enum class State {
        held,
        taken,      ///< another process did not let go
        unavailable ///< the file system cannot lock folders
    };
    State state() const { return current; }

private:
    int descriptor = -1;
    State current = State::unavailable;
};

} // namespace lumenvale
