// SPDX-License-Identifier: MIT
// A slider for a fraction from 0.0 to 1.0, in the program's own look. While the user drags it, values from outside
// wait, so that the knob never leaves the pointer.
#pragma once

#include <QWidget>
#include <functional>
#include <optional>

namespace lumenvale {

class LevelSlider final : public QWidget {
public:
    LevelSlider();

    double value() const { return shown; }
    /// Shows a value without calling `onChange`.
    void setValue(double fraction);
    /// One step of the arrow keys, and the least that the wheel moves by; above 0.
    void setStep(double fraction);
    double step() const { return stepSize; }
    /// What a screen reader says for the value ("42%").
    void setValueText(const QString& text);
    QString valueText() const { return text; }

    /// Why the slider is disabled, which it then shows instead of track and knob; empty: it shows these.
    void setReason(const QString& next);

    /// The user asks for a value; called for every move.
    std::function<void(double)> onChange;

    /// Asks for a value as the user does, for screen readers.
    void request(double fraction);

    /// The widget is wider than its track by this much at either end, where the knob's shadow and ring have room.
    static constexpr int overhang = 3;

    QSize sizeHint() const override { return {160, 24}; }
    QSize minimumSizeHint() const override { return {80, 24}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QRectF track() const;
    double knobCentre() const;
    double fractionAt(double x) const;
    bool leavesWheelToPage() const;
    void showFraction(double fraction);
    void endDrag();

    double shown = 0.0;
    double stepSize = 0.01;
    QString text;
    QString reason;
    bool dragging = false;
    double grabOffset = 0.0;            // from the knob's centre to where it was taken
    std::optional<double> valueWaiting; // arrived during a drag, after the latest request
    double wheelRest = 0.0;             // turned, but less than a step
};

} // namespace lumenvale
