// SPDX-License-Identifier: MIT
// Makes the part of the platform that is simulated. Main thread, after the application object.
#pragma once

#include "platform/Platform.h"

#include <string>
#include <tl/expected.hpp>

namespace lumenvale {

/// A platform over the folder that the options name. The error is a whole sentence for the user.
tl::expected<Platform, std::string> makeSimulatedPlatform(const PlatformOptions& options, Clock& clock);

/// The folder of the ready-made monitors, in the user's state directory; made and filled when it does not exist.
/// An existing one is left as it is.
tl::expected<std::string, std::string> readyMadeSimulation();

} // namespace lumenvale
