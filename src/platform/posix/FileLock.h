// SPDX-License-Identifier: MIT
// The advisory lock of a file or folder (flock), which programs agree to respect. The system drops it when its
// descriptor is closed or the process ends, however it ends; that of a folder leaves no file behind. Any thread.
#pragma once

#include "hardware/Hold.h"
#include "platform/posix/FileDescriptor.h"

#include <chrono>
#include <string>
#include <tl/expected.hpp>

namespace lumenvale {

/// Opens `path` for reading, and with `flags` of open(2) beside that (O_CREAT makes it readable and writable for
/// all, within the user's mask), and locks it for this descriptor alone. Never waits. The error is the system's
/// number: EWOULDBLOCK while another descriptor has the lock.
tl::expected<FileDescriptor, int> tryLockFile(const std::string& path, int flags = 0);

/// The same as a hold: null while another descriptor has the lock, a hold of nothing where the file cannot be
/// locked.
Hold tryHoldFile(const std::string& path, int flags = 0);

/// A folder's lock, for which it is worth waiting.
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
