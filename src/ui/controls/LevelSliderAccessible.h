// SPDX-License-Identifier: MIT
// What a screen reader sees of a LevelSlider: a slider from 0 to 1 that can be set.
#pragma once

namespace lumenvale {

class LevelSlider;

/// Makes the accessible side known to Qt; more calls do nothing.
void installLevelSliderAccessibility();

/// Tells a running screen reader that the value changed.
void notifyLevelChanged(LevelSlider& slider);

} // namespace lumenvale
