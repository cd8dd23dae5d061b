// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace lumenvale {

/// "Lumenvale 1.0.0 (1)": version and build number; ", commit 8b63dd12" follows where it was built from one, and
/// " with changes" where the sources were not exactly the commit's.
std::string versionText();

} // namespace lumenvale
