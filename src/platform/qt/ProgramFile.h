// SPDX-License-Identifier: MIT
// The file that starts this program.
#pragma once

#include <QCoreApplication>
#include <string>

namespace lumenvale {

/// Absolute. Main thread, after the application object.
inline std::string programFile()
{
    // A program packed into one file runs from a folder that goes with it; that file is what starts it again.
    const QString packed = qEnvironmentVariable("APPIMAGE");
    return (packed.isEmpty() ? QCoreApplication::applicationFilePath() : packed).toStdString();
}

} // namespace lumenvale
