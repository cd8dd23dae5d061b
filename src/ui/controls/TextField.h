// SPDX-License-Identifier: MIT
// A line of text to edit, in the program's look.
#pragma once

#include <QLineEdit>

namespace lumenvale {

class TextField final : public QLineEdit {
public:
    explicit TextField(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void clearGround();
};

} // namespace lumenvale
