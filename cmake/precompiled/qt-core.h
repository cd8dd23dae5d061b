// SPDX-License-Identifier: MIT
#include "std.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QString>
