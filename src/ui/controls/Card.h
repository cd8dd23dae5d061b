// SPDX-License-Identifier: MIT
// A settings page's rounded group of rows.
#pragma once

#include <QWidget>

class QVBoxLayout;

namespace lumenvale {

class Card final : public QWidget {
public:
    explicit Card(QWidget* parent = nullptr);

    QVBoxLayout* rows() const { return column; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVBoxLayout* column;
};

} // namespace lumenvale
