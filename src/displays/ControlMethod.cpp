// SPDX-License-Identifier: MIT
#include "displays/ControlMethod.h"

namespace lumenvale {

std::string_view rawValue(ControlMethod method)
{
    switch (method) {
    case ControlMethod::apple:
        return "Apple native brightness";
    case ControlMethod::ddc:
        return "DDC/CI hardware backlight";
    case ControlMethod::unavailable:
        break;
    }
    return "Hardware control unavailable";
}

std::optional<ControlMethod> controlMethodFromRawValue(std::string_view text)
{
    for (const ControlMethod method : {ControlMethod::apple, ControlMethod::ddc, ControlMethod::unavailable}) {
        if (rawValue(method) == text)
            return method;
    }
    return std::nullopt;
}

} // namespace lumenvale
