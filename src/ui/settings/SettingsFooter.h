// SPDX-License-Identifier: MIT
// The strip under every settings page: which build this is, the editor's message, and the refresh of the displays.
#pragma once

#include "base/Clock.h"
#include "displays/DisplayStore.h"
#include "preferences/BuildInfo.h"
#include "presets/PresetEditor.h"
#include "ui/controls/LaterCall.h"

#include <QDateTime>
#include <QLocale>
#include <QTimer>
#include <QWidget>

namespace lumenvale {

class TextLabel;

/// Abbreviated date and time to the second, as the locale writes them.
QString buildTimeText(const QDateTime& time, const QLocale& locale);

class SettingsFooter final : public QWidget {
public:
    /// The references must outlive the view.
    SettingsFooter(DisplayStore& store, PresetEditor& editor, Clock& clock, const BuildInfo& build);

protected:
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void redraw();

    DisplayStore& store;
    PresetEditor& editor;
    Clock& clock;
    BuildInfo build;
    TextLabel* version;
    TextLabel* built;
    TextLabel* message;
    QWidget* progress;
    QTimer everyMinute; // the time of the build ages, and goes after a week
    LaterCall later;
};

} // namespace lumenvale
