// SPDX-License-Identifier: MIT
#include "app/RunDesktop.h"
#include "app/RunVerb.h"

#include <iostream>

int main(int argc, char** argv)
{
    using namespace lumenvale;
    const auto line = parseCommandLine({argv + 1, argv + argc}, argv[0]);
    if (!line) {
        std::cerr << line.error() << '\n';
        return exitMisused;
    }
    if (!line->answer.empty()) {
        std::cout << line->answer;
        return exitDone;
    }
    if (!line->verb)
        return runDesktop(*line, argc, argv);
    return runVerb(*line, argc, argv, std::cout, std::cerr);
}
