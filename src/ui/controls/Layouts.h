// SPDX-License-Identifier: MIT
// What views are laid out with: columns and lines without margins of their own, rounded groups of rows, and the
// lines between them.
#pragma once

#include <QHBoxLayout>
#include <QMargins>
#include <QVBoxLayout>
#include <QWidget>

namespace lumenvale {

/// The layout of `owner`, or without one a layout to be put into another.
QVBoxLayout* makeColumn(QWidget* owner, int spacing = 0, const QMargins& margins = {});
QHBoxLayout* makeLine(QWidget* owner, int spacing = 0, const QMargins& margins = {});

/// A settings page's rounded group of rows.
class Card final : public QWidget {
public:
    Card();

    QVBoxLayout* rows() const { return column; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QVBoxLayout* column;
};

/// A line of one point.
class Divider final : public QWidget {
public:
    Divider();

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace lumenvale
