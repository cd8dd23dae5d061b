// SPDX-License-Identifier: MIT
#include "platform/qt/JsonUserDefaults.h"

#include "platform/posix/FileLock.h"
#include "platform/qt/PreferenceJson.h"

#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <filesystem>
#include <utility>

namespace lumenvale {

namespace {

/// A slider dragged in the settings changes a preset many times a second; the disk is asked twice a second.
constexpr auto writeWait = std::chrono::milliseconds(500);
/// Longer than any save takes; shorter than people wait.
constexpr auto lockWait = std::chrono::seconds(2);

struct Contents {
    OrderedJson object = OrderedJson::object(); // empty without a file
    std::string damage; // why the file holds no preferences, as a continuation of its name; else empty
};

/// The error is the system's words for why a file that exists cannot be read.
tl::expected<Contents, std::string> readFile(const std::string& path)
{
    QFile file(QString::fromStdString(path));
    if (!file.exists())
        return Contents();
    if (!file.open(QIODevice::ReadOnly))
        return tl::unexpected(file.errorString().toStdString());
    const QByteArray text = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return tl::unexpected(file.errorString().toStdString());
    auto object = parseOrderedJson({text.data(), std::size_t(text.size())});
    if (!object)
        return Contents{.damage = object.error()};
    if (!object->is_object())
        return Contents{.damage = "holds no JSON object"};
    return Contents{.object = std::move(*object)};
}

PropertyDictionary valuesIn(const OrderedJson& object)
{
    PropertyDictionary values;
    for (const auto& [key, json] : object.items()) {
        if (auto value = preferenceFromJson(key, json))
            values.emplace_back(key, std::move(*value));
    }
    return values;
}

/// Copies what is about to be replaced to a name that is not taken: `path`.damaged, .damaged.2, …
tl::expected<void, std::string> copyAside(const std::string& path)
{
    const QString original = QString::fromStdString(path);
    QString copy = original + QStringLiteral(".damaged");
    for (int number = 2; QFileInfo::exists(copy); ++number)
        copy = original + QStringLiteral(".damaged.%1").arg(number);
    QFile file(original);
    if (file.exists() && !file.copy(copy))
        return tl::unexpected(file.errorString().toStdString());
    return {};
}

struct Replacement {
    std::string text;
    bool keepsCopy = false; // of what is replaced
};

tl::expected<void, std::string> replaceFile(const std::string& path, const Replacement& next)
{
    QSaveFile file(QString::fromStdString(path));
    const auto size = qint64(next.text.size());
    if (!file.open(QIODevice::WriteOnly) || file.write(next.text.data(), size) < 0 || !file.flush())
        return tl::unexpected(path + ": " + file.errorString().toStdString());
    if (next.keepsCopy) { // only now, or each failing attempt would leave another copy
        if (auto copied = copyAside(path); !copied)
            return copied;
    }
    if (!file.commit())
        return tl::unexpected(path + ": " + file.errorString().toStdString());
    return {};
}

} // namespace

JsonUserDefaults::JsonUserDefaults(std::string path, std::string domainFolder, Clock& clock, Report report)
    : path(std::move(path)), domainFolder(std::move(domainFolder)), clock(clock), report(std::move(report))
{
    const auto contents = readFile(this->path);
    const std::string problem = contents ? contents->damage : "cannot be read: " + contents.error();
    mustKeepCopy = !problem.empty();
    if (mustKeepCopy && this->report)
        this->report(this->path + ' ' + problem + ". It is copied before anything is saved.");
    if (!contents)
        return;
    for (auto& [key, value] : valuesIn(contents->object))
        values.emplace(key, std::move(value));
}

JsonUserDefaults::~JsonUserDefaults() { flush(); }

std::optional<PropertyValue> JsonUserDefaults::value(const std::string& key) const
{
    const auto entry = values.find(key);
    return entry == values.end() ? std::nullopt : std::optional(entry->second);
}

void JsonUserDefaults::set(const std::string& key, std::optional<PropertyValue> next)
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

PropertyDictionary JsonUserDefaults::domain(const std::string& name) const
{
    if (name.find('/') != std::string::npos)
        return {};
    const auto contents = readFile(domainFolder + '/' + name + "/preferences.json");
    return contents ? valuesIn(contents->object) : PropertyDictionary();
}

Subscription JsonUserDefaults::observeFailures(std::function<void(const std::string&)> observer)
{
    return failures.subscribe(std::move(observer));
}

void JsonUserDefaults::flush()
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

tl::expected<void, std::string> JsonUserDefaults::save()
{
    const std::string folder = std::filesystem::path(path).parent_path().string();
    std::error_code failure;
    std::filesystem::create_directories(folder, failure);
    if (failure)
        return tl::unexpected(failure.message());
    const FolderLock lock(folder, lockWait);
    QLockFile lockFile(QString::fromStdString(path + ".lock")); // for file systems that cannot lock folders
    if (lock.state() == FolderLock::State::taken ||
        (lock.state() == FolderLock::State::unavailable &&
         !lockFile.tryLock(std::chrono::milliseconds(lockWait).count())))
        return tl::unexpected("another program is writing to " + folder);
    return writeChanges();
}

tl::expected<void, std::string> JsonUserDefaults::writeChanges()
{
    auto contents = readFile(path);
    if (!contents)
        return tl::unexpected(path + ": " + contents.error());
    if (!contents->damage.empty()) { // perhaps since the start: then everything is known but what another wrote
        mustKeepCopy = true;
        for (const auto& entry : values)
            changed.insert(entry.first);
    }
    for (const std::string& key : changed) {
        const auto entry = values.find(key);
        if (entry == values.end())
            contents->object.erase(key);
        else
            contents->object[key] = preferenceToJson(key, entry->second);
    }
    auto replaced = replaceFile(path, {writeJson(contents->object, 2) + '\n', mustKeepCopy});
    mustKeepCopy = mustKeepCopy && !replaced;
    return replaced;
}

} // namespace lumenvale
