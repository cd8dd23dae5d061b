// SPDX-License-Identifier: MIT
// The models behind the views, over displays that the test plugs in.
#pragma once

#include "presets/PresetEditor.h"
#include "support/StoreFixture.h"
#include "support/Views.h"
#include "ui/controls/LevelSlider.h"

namespace lumenvale {

struct ViewFixture : StoreFixture {
    ViewFixture()
    {
        hardware.holdsAnswers = false;
        store->brightnessObserved = [this](const auto& changed) { editor.displaysChanged(changed); };
    }
    /// Lets the store read what is plugged in.
    void replug()
    {
        store->requestRefresh();
        turnLoop();
    }
    /// Lets the write tasks' waits pass and the views redraw.
    void settle()
    {
        for (int i = 0; i < 5; ++i, turnLoop())
            clock.advance(std::chrono::milliseconds(200));
    }
    static LevelSlider* slider(const QWidget& window, const QString& id)
    {
        return named<LevelSlider>(window, "Name of " + id + " brightness");
    }

    PresetStore presets{defaults};
    PresetEditor editor{*store, presets, defaults};
};

} // namespace lumenvale
