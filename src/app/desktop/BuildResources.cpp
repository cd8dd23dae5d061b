// SPDX-License-Identifier: MIT
#include "app/desktop/BuildResources.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>

namespace lumenvale {

namespace {

/// From the folder of the program: a build tree, an application bundle, an installation.
constexpr const char* resourceFolders[] = {".", "../Resources", "../share/lumenvale"};

std::optional<std::string> buildMetadata()
{
    const QDir program(QCoreApplication::applicationDirPath());
    for (const char* folder : resourceFolders) {
        QFile file(program.filePath(QString(folder) + "/BuildMetadata.json"));
        if (file.open(QIODevice::ReadOnly))
            return file.readAll().toStdString();
    }
    return std::nullopt;
}

/// Qt reads less exactly than asked for; what names no zone would be local time.
std::optional<BuildInfo::Time> parseTime(const std::string& text)
{
    const QDateTime time = QDateTime::fromString(QString::fromStdString(text), Qt::ISODate);
    const int year = time.date().year();
    if (!time.isValid() || time.timeSpec() == Qt::LocalTime || year < 1970 ||
        year > 2261) // what the clock can count
        return std::nullopt;
    return std::chrono::system_clock::from_time_t(time.toSecsSinceEpoch());
}

} // namespace

const BuildInfo& sharedBuildInfo()
{
    static const BuildInfo info = readBuildInfo(
        {.version = LUMENVALE_VERSION, .number = LUMENVALE_BUILD_NUMBER, .metadata = buildMetadata()}, parseTime);
    return info;
}

} // namespace lumenvale
