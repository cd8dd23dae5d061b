// SPDX-License-Identifier: MIT
#include "platform/linux/xdg/DesktopEntry.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <algorithm>

namespace lumenvale {

namespace {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r";
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

std::string quotedArgument(std::string_view argument)
{
    std::string quoted = "\"";
    for (const char each : argument) {
        if (each == '"' || each == '`' || each == '$' || each == '\\')
            quoted += '\\';
        else if (each == '%')
            quoted += '%';
        quoted += each;
    }
    return quoted + '"';
}

} // namespace

DesktopEntry DesktopEntry::parse(std::string_view text)
{
    DesktopEntry entry;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.size() > 2 && line.front() == '[' && line.back() == ']') {
            entry.groups.push_back({std::string(line.substr(1, line.size() - 2)), {}});
            continue;
        }
        const std::size_t equals = line.find('=');
        if (line.empty() || line.front() == '#' || equals == std::string_view::npos || entry.groups.empty())
            continue;
        entry.groups.back().keys.emplace_back(trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }
    return entry;
}

std::string DesktopEntry::toString() const
{
    std::string text;
    for (const Group& group : groups) {
        text += (text.empty() ? "[" : "\n[") + group.name + "]\n";
        for (const auto& [key, value] : group.keys)
            text += key + "=" + value + "\n";
    }
    return text;
}

const DesktopEntry::Group* DesktopEntry::find(std::string_view name) const
{
    const auto found =
        std::find_if(groups.begin(), groups.end(), [name](const Group& each) { return each.name == name; });
    return found != groups.end() ? &*found : nullptr;
}

std::optional<std::string> DesktopEntry::value(std::string_view group, std::string_view key) const
{
    if (const Group* found = find(group)) {
        for (const auto& [name, value] : found->keys) {
            if (name == key)
                return value;
        }
    }
    return std::nullopt;
}

bool DesktopEntry::flag(std::string_view group, std::string_view key) const
{
    const auto text = value(group, key);
    return text && (*text == "true" || *text == "1");
}

void DesktopEntry::set(const std::string& group, const std::string& key, std::string value)
{
    auto place = std::find_if(groups.begin(), groups.end(), [&](const Group& each) { return each.name == group; });
    if (place == groups.end())
        place = groups.insert(groups.end(), {group, {}});
    for (auto& [name, present] : place->keys) {
        if (name == key) {
            present = std::move(value);
            return;
        }
    }
    place->keys.emplace_back(key, std::move(value));
}

void DesktopEntry::removeGroups(std::string_view prefix)
{
    std::erase_if(groups, [prefix](const Group& each) { return each.name.starts_with(prefix); });
}

std::string escapeEntryText(std::string_view text)
{
    std::string escaped;
    for (const char each : text) {
        if (each == '\\')
            escaped += "\\\\";
        else if (each == '\n')
            escaped += "\\n";
        else if (each == '\r')
            escaped += "\\r";
        else if (each == '\t')
            escaped += "\\t";
        else if (each == ' ' && escaped.empty())
            escaped += "\\s"; // blanks around the equals sign do not count
        else
            escaped += each;
    }
    return escaped;
}

std::string execLine(const std::vector<std::string>& command)
{
    std::string line;
    for (const std::string& argument : command)
        line += (line.empty() ? "" : " ") + quotedArgument(argument);
    return escapeEntryText(line);
}

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
