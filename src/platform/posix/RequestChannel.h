// SPDX-License-Identifier: MIT
// Carries requests, a line of text each, from later copies of the program to the one that runs: a named pipe
// beside the instance lock. Every process that can lock the folder can reach it, with or without a session bus and
// whatever the length of its path. The receiver lives on the main thread, in the copy that holds the lock.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <QSocketNotifier>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace lumenvale {

class RequestReceiver {
public:
    using Handler = std::function<void(std::string_view line)>;

    /// Makes the pipe in `folder` and calls `handler` for each line from now on, without its end. Where the file
    /// system has no pipes nothing arrives. What stands in the pipe may come from any program of the user.
    RequestReceiver(const std::string& folder, Handler handler);
    RequestReceiver(const RequestReceiver&) = delete;
    RequestReceiver& operator=(const RequestReceiver&) = delete;
    ~RequestReceiver();

private:
    void readPending();

    Handler handler;
    FileDescriptor pipe;
    std::string received;                      ///< up to an unfinished line
    std::unique_ptr<QSocketNotifier> notifier; ///< after the pipe, which it watches
};

/// Hands a line (without its end, and with none inside) to the copy that holds the lock of `folder`. A copy that
/// is still starting has `patience` to open its end. False when no copy took it, or it is longer than a pipe takes
/// as a whole (4,096 bytes on Linux, 512 on macOS). From then on the process ignores SIGPIPE. Any thread; blocks.
bool sendRequest(const std::string& folder, std::string_view line, std::chrono::milliseconds patience);

} // namespace lumenvale
