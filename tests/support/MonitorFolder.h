// SPDX-License-Identifier: MIT
// A folder of simulated monitors that lasts as long as the test.
#pragma once

#include "base/Json.h"

#include <QFile>
#include <QTemporaryDir>
#include <stdexcept>
#include <string>

namespace lumenvale {

class MonitorFolder {
public:
    std::string path() const { return folder.path().toStdString(); }

    /// Makes or replaces a file, in place.
    void write(const std::string& name, const std::string& text)
    {
        QFile file(pathOf(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), qint64(text.size())) < 0)
            throw std::runtime_error("cannot write " + name);
    }

    void remove(const std::string& name)
    {
        if (!QFile::remove(pathOf(name)))
            throw std::runtime_error("cannot remove " + name);
    }

    std::string text(const std::string& name) const
    {
        QFile file(pathOf(name));
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("cannot read " + name);
        return file.readAll().toStdString();
    }

    /// What the file says now.
    Json monitor(const std::string& name) const { return parseJson(text(name)).value(); }

private:
    QString pathOf(const std::string& name) const { return folder.filePath(QString::fromStdString(name)); }

    QTemporaryDir folder;
};

} // namespace lumenvale
