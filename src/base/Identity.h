// SPDX-License-Identifier: MIT
// The names under which systems know the program.
#pragma once

namespace lumenvale {

constexpr char applicationName[] = "Lumenvale";
/// Bundle identifier, desktop entry, session-bus name, configuration folder; also the second legacy domain.
constexpr char applicationIdentifier[] = "app.lumenvale.Lumenvale";
/// Owned instead by a program that controls simulated monitors.
constexpr char simulatedIdentifier[] = "app.lumenvale.Lumenvale.Simulated";
constexpr char applicationObjectPath[] = "/app/lumenvale/Lumenvale";
constexpr char simulatedObjectPath[] = "/app/lumenvale/Lumenvale/Simulated";
/// Preference domains of earlier releases, in the order in which they are read.
constexpr const char* legacyDomains[] = {"com.lumenvale.Lumenvale", "app.lumenvale.Lumenvale"};

} // namespace lumenvale
