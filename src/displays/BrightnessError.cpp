// SPDX-License-Identifier: MIT
#include "displays/BrightnessError.h"

namespace lumenvale {

std::string_view description(BrightnessError error)
{
    switch (error) {
    case BrightnessError::disconnected:
        return "The display connection changed. Refresh displays and try again.";
    case BrightnessError::writeFailed:
        return "The display did not accept the brightness command. Check DDC/CI in its on-screen menu.";
    case BrightnessError::readFailed:
        return "The command was sent, but brightness could not be read back. Refresh to retry.";
    case BrightnessError::mismatch:
        break;
    }
    return "The display reported a different brightness. Another app or a monitor preset may be overriding it.";
}

} // namespace lumenvale
