// SPDX-License-Identifier: MIT
// Records the keyboard shortcut of one preset at a time. Main thread only.
#pragma once

#include "base/Published.h"
#include "presets/PresetStore.h"

#include <functional>
#include <optional>

namespace lumenvale {

class ShortcutRecorder {
public:
    /// `presets` must outlive the recorder.
    explicit ShortcutRecorder(PresetStore& presets);

    Published<std::optional<Uuid>> recordingShortcutID{std::nullopt};

    /// Called whenever `recordingShortcutID` changes.
    std::function<void()> shortcutRecordingChanged;

    /// Records for this preset from now on; does nothing when it does not exist.
    void start(const Uuid& id);
    void cancel();
    /// True when the event was consumed, as each is while recording. Escape cancels. A shortcut that another
    /// preset has is refused, with a message in `PresetStore::shortcutErrors`, and recording goes on.
    bool handleKeyEvent(const KeyEvent& event);

private:
    void record(std::optional<Uuid> id);

    PresetStore& presets;
};

} // namespace lumenvale
