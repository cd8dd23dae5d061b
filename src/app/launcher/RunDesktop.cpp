// SPDX-License-Identifier: MIT
#include "app/RunDesktop.h"

#include "platform/posix/ReplaceProcess.h"
#include "platform/qt/ProgramFile.h"

#include <QCoreApplication>
#include <iostream>

namespace lumenvale {

int runDesktop(const CommandLine& /*line*/, int& argc, char** argv)
{
    std::vector<std::string> arguments(argv, argv + argc);
    const QCoreApplication application(argc, argv); // knows where this file is
    if (const auto program = desktopProgramFile()) {
        const std::string failure = replaceProcess(*program, std::move(arguments));
        std::cerr << "The desktop program, " << *program << ", could not be started: " << failure << ".\n";
    } else {
        std::cerr << "The desktop program is not installed: it comes with the package lumenvale.\n"
                     "For the command line, run "
                  << programFile() << " --help.\n";
    }
    return exitMisused;
}

} // namespace lumenvale
