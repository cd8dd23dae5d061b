// SPDX-License-Identifier: MIT
// Where a program's build information comes from: the version from the build, its moment from a file that the
// build leaves among the program's resources. Main thread, after the application object.
#pragma once

#include "preferences/BuildInfo.h"

namespace lumenvale {

/// Read on first use.
const BuildInfo& sharedBuildInfo();

} // namespace lumenvale
