// SPDX-License-Identifier: MIT
#include "platform/qt/IniUserDefaults.h"

#include "platform/posix/FolderLock.h"
#include "platform/qt/PropertyText.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStringList>
#include <QTemporaryFile>
#include <filesystem>
#include <utility>

namespace lumenvale {

namespace {

/// A slider dragged in the settings changes a preset many times a second; the disk is asked twice a second.
constexpr auto writeWait = std::chrono::milliseconds(500);
/// Longer than any save takes; shorter than people wait.
constexpr auto lockWait = std::chrono::seconds(2);

PropertyValue fromVariant(const QVariant& stored)
{
    if (stored.userType() != QMetaType::QStringList)
        return decodeProperty(stored.toString().toStdString());
    PropertyArray list; // someone wrote "A, B" by hand
    for (const QString& each : stored.toStringList())
        list.emplace_back(each.toStdString());
    return list;
}

struct Contents {
    std::map<std::string, PropertyValue> values;
    bool isDamaged = false; // a line of it is none
};

Contents readFile(const std::string& path)
{
    Contents contents;
    const QSettings settings(QString::fromStdString(path), QSettings::IniFormat);
    for (const QString& key : settings.allKeys())
        contents.values.emplace(key.toStdString(), fromVariant(settings.value(key)));
    contents.isDamaged = settings.status() == QSettings::FormatError;
    return contents;
}

/// Keeps what a person has damaged before it is replaced; the first such copy stays.
void copyAside(const QString& path) { QFile::copy(path, path + QStringLiteral(".damaged")); }

/// Why nothing can be written at `path`, in the system's words: found out by trying.
std::string writeFailure(const QString& path)
{
    QTemporaryFile probe(path + QStringLiteral(".XXXXXX"));
    const QByteArray content(qsizetype(QFileInfo(path).size()) + 4096, ' ');
    if (!probe.open() || probe.write(content) != content.size() || !probe.flush())
        return probe.errorString().toStdString();
    const QFileInfo file(path);
    if (file.isDir())
        return path.toStdString() + " is a folder";
    return path.toStdString() + (file.isWritable() ? " could not be replaced" : " is write-protected");
}

/// QSettings tells by size and time, in milliseconds, whether another process has written since it read. Called
/// under the lock, this sees to it that no two versions of the file share a time.
void keepTimeMoving(const QString& path, const QDateTime& before)
{
    QFile file(path);
    if (before.isValid() && QFileInfo(path).lastModified() <= before &&
        file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        file.setFileTime(before.addMSecs(1), QFileDevice::FileModificationTime);
}

} // namespace

IniUserDefaults::IniUserDefaults(std::string file, std::string folder, Clock& source)
    : path(std::move(file)), domainFolder(std::move(folder)), clock(source)
{
    Contents contents = readFile(path);
    values = std::move(contents.values);
    isDamaged = contents.isDamaged;
}

IniUserDefaults::~IniUserDefaults() { flush(); }

std::optional<PropertyValue> IniUserDefaults::value(const std::string& key) const
{
    const auto entry = values.find(key);
    return entry == values.end() ? std::nullopt : std::optional(entry->second);
}

void IniUserDefaults::set(const std::string& key, std::optional<PropertyValue> next)
{
    if (next)
        values.insert_or_assign(key, std::move(*next));
    else
        values.erase(key);
    changed.insert(key);
    if (timer == 0) {
        timer = clock.callAfter(writeWait, [this] {
            timer = 0;
            flush();
        });
    }
}

PropertyDictionary IniUserDefaults::domain(const std::string& name) const
{
    PropertyDictionary dictionary;
    const std::string file = domainFolder + '/' + name + ".ini";
    if (name.find('/') != std::string::npos || !QFileInfo::exists(QString::fromStdString(file)))
        return dictionary;
    Contents contents = readFile(file);
    for (auto& [key, value] : contents.values)
        dictionary.emplace_back(key, std::move(value));
    return dictionary;
}

Subscription IniUserDefaults::observeFailures(std::function<void(const std::string&)> observer)
{
    return failures.subscribe(std::move(observer));
}

void IniUserDefaults::flush()
{
    clock.cancel(std::exchange(timer, 0));
    if (changed.empty())
        return;
    const auto saved = save();
    const bool hadFailed = std::exchange(hasFailed, !saved);
    if (!saved) {
        failures.emit(saved.error());
        return;
    }
    changed.clear();
    if (hadFailed)
        failures.emit("");
}

tl::expected<void, std::string> IniUserDefaults::save()
{
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    if (failure)
        return tl::unexpected(failure.message());
    const FolderLock lock(folder.string(), lockWait);
    if (lock.state() == FolderLock::State::taken)
        return tl::unexpected("another program is writing to " + folder.string());

    const QString file = QString::fromStdString(path);
    if (lock.state() == FolderLock::State::held)
        QFile::remove(file + QStringLiteral(".lock")); // QSettings would wait half a minute for a killed process
    const QDateTime before = QFileInfo(file).lastModified();
    if (isDamaged)
        copyAside(file);
    writeChanges(file);
    const QSettings written(file, QSettings::IniFormat); // the writer's own status may tell of the damage
    if (written.status() == QSettings::AccessError)
        return tl::unexpected(writeFailure(file));
    isDamaged = false;
    keepTimeMoving(file, before);
    return {};
}

void IniUserDefaults::writeChanges(const QString& file) const
{
    QSettings settings(file, QSettings::IniFormat);
    for (const std::string& key : changed) {
        const auto entry = values.find(key);
        if (entry == values.end())
            settings.remove(QString::fromStdString(key));
        else
            settings.setValue(QString::fromStdString(key), QString::fromStdString(encodeProperty(entry->second)));
    }
    settings.sync();
}

} // namespace lumenvale
