// SPDX-License-Identifier: MIT
#include "presets/ShortcutRecorder.h"

namespace lumenvale {

ShortcutRecorder::ShortcutRecorder(PresetStore& presets) : presets(presets) {}

void ShortcutRecorder::start(const Uuid& id)
{
    if (presets.preset(id))
        record(id);
}

void ShortcutRecorder::cancel() { record(std::nullopt); }

void ShortcutRecorder::record(std::optional<Uuid> id)
{
    if (id == recordingShortcutID.get())
        return;
    recordingShortcutID.set(id);
    if (const auto call = shortcutRecordingChanged) // a copy: it may replace itself
        call();
}

bool ShortcutRecorder::handleKeyEvent(const KeyEvent& event)
{
    const std::optional<Uuid> recording = recordingShortcutID.get();
    if (!recording)
        return false;
    if (event.keyCode == escapeKeyCode && (event.modifiers & KeyModifier::mask) == 0) {
        cancel();
        return true;
    }
    const std::optional<PresetShortcut> shortcut = shortcutFromKeyEvent(event);
    if (shortcut && presets.setShortcut(shortcut, *recording))
        cancel();
    return true;
}

} // namespace lumenvale
