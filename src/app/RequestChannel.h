// SPDX-License-Identifier: MIT
// Carries requests from later copies of the program to the one that runs: a named pipe beside the instance
// lock. Who can lock the folder can reach it, with or without a session bus and whatever the path's length.
// The receiver lives on the main thread, in the copy that holds the lock.
#pragma once

#include "app/DesktopRequest.h"

#include <QSocketNotifier>
#include <chrono>
#include <functional>
#include <memory>
#include <string>

namespace lumenvale {

class RequestReceiver {
public:
    using Handler = std::function<void(const DesktopRequest&)>;

    /// Makes the pipe in `folder` and calls `handler` for each request from now on. Where the file system has
    /// no pipes nothing arrives.
    RequestReceiver(const std::string& folder, Handler handler);
    RequestReceiver(const RequestReceiver&) = delete;
    RequestReceiver& operator=(const RequestReceiver&) = delete;
    ~RequestReceiver();

private:
    void readPending();

    Handler handler;
    int pipe = -1;
    std::string received; // up to an unfinished line
    std::unique_ptr<QSocketNotifier> notifier;
};

/// Hands a request to the copy that holds the lock of `folder`. A copy that is only just starting has `patience`
/// to open its end. False when nobody took it. Any thread; blocks.
bool sendRequest(const std::string& folder, const DesktopRequest& request, std::chrono::milliseconds patience);

} // namespace lumenvale
