// SPDX-License-Identifier: MIT
#include "platform/posix/SystemError.h"

#include <system_error>

namespace lumenvale {

std::string systemErrorText(int number)
{
    return std::generic_category().message(number) + " (" + std::to_string(number) + ")";
}

} // namespace lumenvale
