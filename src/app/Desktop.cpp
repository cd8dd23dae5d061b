// SPDX-License-Identifier: MIT
#include "app/Desktop.h"

#include <cstdio>

namespace lumenvale {

int runDesktop(const DesktopOptions& /*options*/, int& /*argc*/, char** /*argv*/)
{
    std::fputs("The desktop program is not built yet. Run lumenvale --help for the commands.\n", stderr);
    return 1;
}

} // namespace lumenvale
