// SPDX-License-Identifier: MIT
// What a screen reader sees of a PresetRow: a button whose value is "Active" while its preset is.
#pragma once

namespace lumenvale {

/// Makes the accessible side known to the toolkit; more calls do nothing.
void installPresetRowAccessibility();

} // namespace lumenvale
