// SPDX-License-Identifier: MIT
// The strip under every settings page: which build this is, the editor's message, and the refresh of the displays.
#pragma once

#include "base/Clock.h"
#include "displays/DisplayStore.h"
#include "preferences/BuildInfo.h"
#include "presets/PresetEditor.h"
#include "ui/look/LaterCall.h"

#include <QDateTime>
#include <QLocale>
#include <QTimer>
#include <QWidget>
#include <vector>

namespace lumenvale {

class ProgressIndicator;
class SmallButton;
class TextLabel;

/// Abbreviated date and time to the second, as the locale writes them.
QString buildTimeText(const QDateTime& time, const QLocale& locale);

class SettingsFooter final : public QWidget {
public:
    /// The references must outlive the view.
    SettingsFooter(DisplayStore& store, PresetEditor& editor, Clock& clock, BuildInfo build);

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
    ProgressIndicator* progress;
    SmallButton* refresh;
    QTimer everyMinute; // the label goes when the build is a week old
    LaterCall redrawLater;
    std::vector<Subscription> subscriptions;
};

} // namespace lumenvale
