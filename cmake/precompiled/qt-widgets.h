// SPDX-License-Identifier: MIT
#include "std.h"

#include <QApplication>
#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QWidget>
#include <QWindow>
