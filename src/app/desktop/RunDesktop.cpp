// SPDX-License-Identifier: MIT
#include "app/RunDesktop.h"

#include "app/RunVerb.h"
#include "app/desktop/LumenvaleApp.h"

#include <iostream>

namespace lumenvale {

int runDesktop(const CommandLine& line, int& argc, char** argv)
{
    const auto folder = simulationFolder(line);
    if (!folder) {
        std::cerr << folder.error() << '\n';
        return exitMisused;
    }
    LumenvaleApp::Options options;
    options.simulationFolder = *folder;
    options.request = line.request;
    if (line.isVerbose)
        options.log = standardErrorLog();
    return LumenvaleApp(options).run(argc, argv);
}

} // namespace lumenvale
