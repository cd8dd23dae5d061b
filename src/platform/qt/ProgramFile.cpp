// SPDX-License-Identifier: MIT
#include "platform/qt/ProgramFile.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <initializer_list>

namespace lumenvale {

namespace {

/// The first of the places, from this program's folder, that has a file.
std::optional<std::string> findProgram(std::initializer_list<const char*> places)
{
    const QDir folder(QCoreApplication::applicationDirPath());
    for (const char* place : places) {
        const QFileInfo file(folder, place);
        if (file.isFile())
            return QDir::cleanPath(file.absoluteFilePath()).toStdString();
    }
    return std::nullopt;
}

} // namespace

std::string programFile()
{
    return findProgram({LUMENVALE_PROGRAM_PLACES}).value_or(QCoreApplication::applicationFilePath().toStdString());
}

std::string programCommand()
{
    const QString file = QString::fromStdString(programFile());
    const QString name = QStringLiteral("lumenvale");
    const QFileInfo found(QStandardPaths::findExecutable(name));
    if (found.exists() && found.canonicalFilePath() == QFileInfo(file).canonicalFilePath())
        return name.toStdString();
    return (file.contains(' ') ? '\'' + file + '\'' : file).toStdString();
}

std::optional<std::string> desktopProgramFile() { return findProgram({LUMENVALE_DESKTOP_PROGRAM_PLACES}); }

} // namespace lumenvale
