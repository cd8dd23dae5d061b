// SPDX-License-Identifier: MIT
#include "app/RunVerb.h"
#include "app/cli/CommandLine.h"
#include "app/desktop/LumenvaleApp.h"

#include <iostream>

namespace {

using namespace lumenvale;

int runProgram(const CommandLine& line, int& argc, char** argv)
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

} // namespace

int main(int argc, char** argv)
{
    const auto line = parseCommandLine({argv + 1, argv + argc});
    if (!line) {
        std::cerr << line.error() << '\n';
        return exitMisused;
    }
    if (!line->answer.empty()) {
        std::cout << line->answer;
        return exitDone;
    }
    if (!line->verb)
        return runProgram(*line, argc, argv);
    return runVerb(*line, argc, argv, std::cout, std::cerr);
}
