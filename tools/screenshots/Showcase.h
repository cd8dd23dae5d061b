// SPDX-License-Identifier: MIT
// The program's models over three simulated monitors and three presets: what the pictures show.
#pragma once

#include "displays/DisplayStore.h"
#include "hardware/DisplayHardware.h"
#include "platform/Platform.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtMainThread.h"
#include "preferences/GeneralPreferences.h"
#include "presets/PresetEditor.h"
#include "presets/PresetStore.h"
#include "support/FakeStartupService.h"

#include <QTemporaryDir>
#include <memory>

namespace lumenvale {

class Showcase {
public:
    /// Ends the program with a message when the monitors cannot be made.
    Showcase();

    QTemporaryDir folder;
    QtClock clock;
    QtMainThread mainThread;
    Platform platform;
    std::unique_ptr<DisplayHardware> hardware;
    std::unique_ptr<DisplayStore> store;
    std::unique_ptr<PresetStore> presets;
    FakeStartupService startup;
    std::unique_ptr<GeneralPreferences> preferences;
    std::unique_ptr<PresetEditor> editor;

    Uuid evening; ///< the active preset
    static constexpr char studio[] = "37D8832A-2D66-02CA-B9F7-8F30A301B230";
};

} // namespace lumenvale
