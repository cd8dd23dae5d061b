// SPDX-License-Identifier: MIT
#include "platform/linux/xdg/LauncherEntry.h"

#include "platform/linux/xdg/DesktopEntry.h"
#include <QFile>
#include <QStandardPaths>
#include <algorithm>
#include <utility>

namespace lumenvale {

namespace {

constexpr auto* mainGroup = DesktopEntry::mainGroup;
constexpr char generatedKey[] = "X-Lumenvale-Generated"; // tells our file from one the user made

DesktopEntry entryOfOurOwn(const ProgramIdentity& identity)
{
    DesktopEntry entry;
    entry.set(mainGroup, "Type", "Application");
    entry.set(mainGroup, "Name", escapeEntryText(identity.name));
    entry.set(mainGroup, "GenericName", "Display Brightness");
    entry.set(mainGroup, "Comment", "Control the brightness of each display");
    entry.set(mainGroup, "Icon", "app.lumenvale.Lumenvale");
    entry.set(mainGroup, "Exec", execLine(identity.command));
    entry.set(mainGroup, "Terminal", "false");
    entry.set(mainGroup, "Categories", "Settings;HardwareSettings;");
    entry.set(mainGroup, "StartupNotify", "false");
    entry.set(mainGroup, "StartupWMClass", identity.identifier);
    entry.set(mainGroup, "SingleMainWindow", "true");
    return entry;
}

bool isOurs(const std::optional<std::string>& text)
{
    return text && DesktopEntry::parse(*text).flag(mainGroup, generatedKey);
}

std::string actionIdentifiers(const Menu& menu)
{
    std::string list;
    for (const MenuEntry& each : menu) {
        if (!each.arguments.empty())
            list += each.id + ";";
    }
    return list;
}

} // namespace

ApplicationFolders applicationFolders()
{
    ApplicationFolders folders;
    const QStringList all = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
    const QString own = QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation);
    folders.user = own.toStdString();
    for (const QString& each : all) {
        if (each != own)
            folders.system.push_back(each.toStdString());
    }
    return folders;
}

LauncherEntry::LauncherEntry(ProgramIdentity identity, ApplicationFolders folders)
    : identity(std::move(identity)), folders(std::move(folders))
{
}

std::string LauncherEntry::path() const { return folders.user + "/" + identity.identifier + ".desktop"; }

std::string LauncherEntry::installedText() const
{
    for (const std::string& folder : folders.system) {
        if (auto text = readTextFile(folder + "/" + identity.identifier + ".desktop"))
            return *std::move(text);
    }
    return {};
}

std::string LauncherEntry::text(const std::string& installed, const Menu& menu) const
{
    DesktopEntry entry = installed.empty() ? entryOfOurOwn(identity) : DesktopEntry::parse(installed);
    entry.removeGroups("Desktop Action ");
    entry.set(mainGroup, "TryExec", escapeEntryText(identity.command.front())); // gone with the program
    entry.set(mainGroup, generatedKey, "true");
    entry.set(mainGroup, "Actions", actionIdentifiers(menu));
    for (const MenuEntry& each : menu) {
        if (each.arguments.empty())
            continue;
        std::vector<std::string> command = identity.command;
        command.insert(command.end(), each.arguments.begin(), each.arguments.end());
        const std::string group = "Desktop Action " + each.id;
        entry.set(group, "Name", escapeEntryText(each.title));
        entry.set(group, "Exec", execLine(command));
    }
    return entry.toString();
}

void LauncherEntry::update(const Menu& menu, bool shown) const
{
    const std::string installed = installedText();
    const bool saysTheSame = DesktopEntry::parse(installed).value(mainGroup, "Actions") == actionIdentifiers(menu);
    if ((installed.empty() && !shown) || saysTheSame) {
        withdraw();
        return;
    }
    const auto present = readTextFile(path());
    const std::string wanted = text(installed, menu);
    if ((present && !isOurs(present)) || present == wanted)
        return;
    // When that fails the launcher lacks the presets, and nothing else depends on the file.
    (void)writeTextFile(path(), wanted);
}

void LauncherEntry::withdraw() const
{
    if (isOurs(readTextFile(path())))
        QFile::remove(QString::fromStdString(path()));
}

} // namespace lumenvale
