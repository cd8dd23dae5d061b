// SPDX-License-Identifier: MIT
// A button that steps once when pressed and goes on stepping while it is held. Its owner decides what a step is.
#pragma once

#include "base/Clock.h"
#include "ui/controls/Buttons.h"

#include <functional>

namespace lumenvale {

class HoldRepeatButton final : public SmallButton {
public:
    /// `clock` must outlive the button.
    explicit HoldRepeatButton(Clock& clock);
    ~HoldRepeatButton() override;

    std::function<void()> onStep; ///< one step

    /// One step, as a press by keyboard or by a screen reader makes it.
    void activate();
    /// Ends a hold; safe at any time.
    void stopRepeating();

    static constexpr Clock::Duration initialDelay{350};
    static constexpr Clock::Duration repeatInterval{80};

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    void paintContent(QPainter& painter, const QColor& colour) override;

private:
    void schedule(Clock::Duration delay);
    void tick();

    Clock& clock;
    Clock::TimerId repeatTimer = 0;
    bool pressed = false;
};

/// What a step button shows and does, as a value to be set on the button at every change.
struct RepeatingStepButton {
    QString symbol;
    QString label; ///< the accessible name
    QString help;
    bool enabled = false;
    std::function<void()> action; ///< one step

    void update(HoldRepeatButton& button) const;
};

} // namespace lumenvale
