// SPDX-License-Identifier: MIT
#include "platform/posix/ReplaceProcess.h"

#include "platform/posix/SystemError.h"

#include <cerrno>
#include <unistd.h>

namespace lumenvale {

std::string replaceProcess(const std::string& path, std::vector<std::string> arguments)
{
    std::vector<char*> pointers;
    pointers.reserve(arguments.size() + 1);
    for (std::string& each : arguments)
        pointers.push_back(each.data());
    pointers.push_back(nullptr);
    execv(path.c_str(), pointers.data());
    return systemErrorText(errno);
}

} // namespace lumenvale
