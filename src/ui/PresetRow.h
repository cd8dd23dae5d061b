// SPDX-License-Identifier: MIT
// One preset in the panel's list: its name, and a checkmark while it is the active one. A press applies it.
#pragma once

#include <QAbstractButton>

namespace lumenvale {

class PresetRow final : public QAbstractButton {
public:
    explicit PresetRow(QWidget* parent = nullptr);

    void show(const QString& name, bool active);

    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    bool isActive = false;
};

} // namespace lumenvale
