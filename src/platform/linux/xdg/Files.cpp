// SPDX-License-Identifier: MIT
#include "platform/linux/xdg/Files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace lumenvale {

std::optional<std::string> readTextFile(const std::string& path)
{
    QFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll().toStdString();
}

tl::expected<void, std::string> writeTextFile(const std::string& path, const std::string& text)
{
    const QString name = QString::fromStdString(path);
    QDir().mkpath(QFileInfo(name).path());
    QSaveFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), qint64(text.size())) != qint64(text.size()) ||
        !file.commit())
        return tl::unexpected(file.errorString().toStdString());
    return {};
}

} // namespace lumenvale
