// SPDX-License-Identifier: MIT
// The General page: where the program shows itself, and whether it starts at login.
#pragma once

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
    explicit GeneralSettings(GeneralPreferences& preferences);

private:
    QWidget* makePresentationCard();
    QWidget* makeStartupCard();
    void redraw();

    GeneralPreferences& preferences;
    SegmentedControl* presentation = nullptr;
    ToggleSwitch* startup = nullptr;
    QWidget* approval = nullptr;
    TextLabel* unavailable = nullptr;
    TextLabel* failure = nullptr;
    LaterCall later;
};

} // namespace lumenvale
