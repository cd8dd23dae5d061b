// SPDX-License-Identifier: MIT
#include "app/desktop/BuildResources.h"

#include <QCoreApplication>
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

} // namespace

const BuildInfo& sharedBuildInfo()
{
    static const BuildInfo info = readBuildInfo(
        {.version = LUMENVALE_VERSION, .number = LUMENVALE_BUILD_NUMBER, .metadata = buildMetadata()});
    return info;
}

} // namespace lumenvale
