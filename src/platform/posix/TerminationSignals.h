// SPDX-License-Identifier: MIT
// Ends the application's loop when the process is asked to end (SIGTERM, SIGINT, SIGHUP), so that the program
// shuts down as when the user quits. A signal that was ignored before stays so. One at a time; main thread, after
// the application object.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <QSocketNotifier>
#include <memory>

namespace lumenvale {

class TerminationSignals {
public:
    TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;
    /// Gives the signals their usual meaning back.
    ~TerminationSignals();

private:
    FileDescriptor readEnd; ///< of the pipe that the signal handler writes to
    FileDescriptor writeEnd;
    std::unique_ptr<QSocketNotifier> notifier;
};

} // namespace lumenvale
