// SPDX-License-Identifier: MIT
// The desktop program, from the instance lock to the end of the event loop.
#pragma once

#include "app/cli/DesktopRequest.h"
#include "platform/Platform.h"

#include <optional>
#include <string>

namespace lumenvale {

class LumenvaleApp {
public:
    struct Options {
        std::optional<std::string> simulationFolder; ///< monitors, preferences and instance lock are in it
        LogSink log;                                 ///< empty: nothing is logged
        /// What to do once running, or what the copy that runs already is asked to do; none asks that copy, and
        /// no fresh one, to show the panel.
        std::optional<DesktopRequest> request;
    };

    explicit LumenvaleApp(Options options);

    /// Runs the program and returns its exit status. A second copy hands its request over, for which it
    /// waits up to 3 s. What cannot be done (no folder for the lock, no such preset, a request that is not taken)
    /// is said on standard error; a second copy that was asked for nothing ends silently.
    int run(int& argc, char** argv);

private:
    int runApplication(const std::string& folder, int& argc, char** argv);
    int findPreset(int& argc, char** argv);
    /// False when the copy that runs already did not take the request.
    bool handOver(const std::string& folder) const;

    Options options;
};

} // namespace lumenvale
