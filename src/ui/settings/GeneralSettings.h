// SPDX-License-Identifier: MIT
// The General page: where the program shows itself, and whether it starts at login.
#pragma once

#include "base/Words.h"
#include "preferences/GeneralPreferences.h"
#include "ui/controls/LaterCall.h"

#include <QWidget>

namespace lumenvale {

class SegmentedControl;
class TextLabel;
class ToggleSwitch;

class GeneralSettings final : public QWidget {
public:
    /// `preferences` must outlive the view.
    GeneralSettings(GeneralPreferences& preferences, const Words& words);

private:
    QWidget* makePresentationCard(const Words& words);
    QWidget* makeStartupCard(const Words& words);
    void redraw();

    GeneralPreferences& preferences;
    SegmentedControl* presentation = nullptr;
    ToggleSwitch* startup = nullptr;
    QWidget* approval = nullptr;
    TextLabel* noStatusArea = nullptr;
    TextLabel* unavailable = nullptr;
    TextLabel* failure = nullptr;
    LaterCall later;
};

} // namespace lumenvale
