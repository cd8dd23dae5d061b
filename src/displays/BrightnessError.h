// SPDX-License-Identifier: MIT
// Why a brightness could not be set or confirmed.
#pragma once

#include <string_view>

namespace lumenvale {

enum class BrightnessError { disconnected, writeFailed, readFailed, mismatch };

/// A whole sentence for the user.
std::string_view description(BrightnessError error);

} // namespace lumenvale
