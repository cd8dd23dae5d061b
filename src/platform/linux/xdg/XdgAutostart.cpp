// SPDX-License-Identifier: MIT
#include "platform/linux/xdg/XdgAutostart.h"

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>
#include <sstream>
#include <utility>

namespace lumenvale {

namespace {

bool listsOneOf(const std::string& list, char separator, const std::string& desktops)
{
    std::istringstream names(list);
    for (std::string name; std::getline(names, name, separator);) {
        std::istringstream present(desktops);
        for (std::string desktop; std::getline(present, desktop, ':');) {
            if (!name.empty() && name == desktop)
                return true;
        }
    }
    return false;
}

bool isSwitchedOff(const DesktopEntry& entry)
{
    const auto enabled = entry.value(DesktopEntry::mainGroup, "X-GNOME-Autostart-enabled");
    return entry.flag(DesktopEntry::mainGroup, "Hidden") ||
           (enabled && !entry.flag(DesktopEntry::mainGroup, "X-GNOME-Autostart-enabled"));
}

} // namespace

AutostartPlace autostartPlace(const std::string& identifier, const std::string& name,
                              std::vector<std::string> command)
{
    AutostartPlace place;
    place.identifier = identifier;
    place.name = name;
    place.command = std::move(command);
    const QString own = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    if (!own.isEmpty())
        place.userFolder = own.toStdString() + "/autostart";
    for (const QString& each : QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation)) {
        if (each != own)
            place.systemFolders.push_back(each.toStdString() + "/autostart");
    }
    place.desktop = qEnvironmentVariable("XDG_CURRENT_DESKTOP").toStdString();
    place.isSandboxed = QFile::exists("/.flatpak-info") || qEnvironmentVariableIsSet("SNAP");
    return place;
}

XdgAutostart::XdgAutostart(AutostartPlace place) : place(std::move(place)) {}

std::string XdgAutostart::userFile() const { return place.userFolder + "/" + place.identifier + ".desktop"; }

bool XdgAutostart::canWrite() const
{
    if (place.userFolder.empty() || place.command.empty() || place.isSandboxed)
        return false;
    QFileInfo folder(QString::fromStdString(place.userFolder));
    while (!folder.exists() && !folder.isRoot())
        folder.setFile(folder.path());
    return folder.isDir() && folder.isWritable();
}

bool XdgAutostart::appliesHere(const DesktopEntry& entry) const
{
    const auto only = entry.value(DesktopEntry::mainGroup, "OnlyShowIn");
    const auto never = entry.value(DesktopEntry::mainGroup, "NotShowIn");
    if ((only && !listsOneOf(*only, ';', place.desktop)) || (never && listsOneOf(*never, ';', place.desktop)))
        return false;
    const auto program = entry.value(DesktopEntry::mainGroup, "TryExec");
    return !program || !QStandardPaths::findExecutable(QString::fromStdString(*program)).isEmpty();
}

std::optional<DesktopEntry> XdgAutostart::systemEntry() const
{
    for (const std::string& folder : place.systemFolders) {
        if (const auto text = readTextFile(folder + "/" + place.identifier + ".desktop"))
            return DesktopEntry::parse(*text);
    }
    return std::nullopt;
}

void XdgAutostart::renew() const
{
    const auto text = readTextFile(userFile());
    if (!text || place.formerCommand.empty() || !canWrite())
        return;
    DesktopEntry entry = DesktopEntry::parse(*text);
    if (entry.value(DesktopEntry::mainGroup, "Exec") != execLine(place.formerCommand))
        return; // up to date, or the user's own
    entry.set(DesktopEntry::mainGroup, "Exec", execLine(place.command));
    // When that fails the program still starts at login, only less quietly.
    (void)writeTextFile(userFile(), entry.toString());
}

StartupStatus XdgAutostart::status()
{
    if (!canWrite())
        return StartupStatus::unavailable;
    const auto own = readTextFile(userFile());
    const std::optional<DesktopEntry> entry = own ? DesktopEntry::parse(*own) : systemEntry();
    if (!entry || !entry->value(DesktopEntry::mainGroup, "Exec"))
        return StartupStatus::off;
    return !isSwitchedOff(*entry) && appliesHere(*entry) ? StartupStatus::enabled : StartupStatus::off;
}

tl::expected<void, std::string> XdgAutostart::setEnabled(bool enabled)
{
    if (!canWrite())
        return tl::unexpected<std::string>(place.isSandboxed
                                               ? "Programs inside a sandbox cannot be started at login this way."
                                               : "The folder for programs that start at login (" +
                                                     place.userFolder + ") cannot be written to.");
    DesktopEntry entry;
    entry.set(DesktopEntry::mainGroup, "Type", "Application");
    entry.set(DesktopEntry::mainGroup, "Name", escapeEntryText(place.name));
    entry.set(DesktopEntry::mainGroup, "Icon", "app.lumenvale.Lumenvale");
    entry.set(DesktopEntry::mainGroup, "Exec", execLine(place.command));
    if (enabled) {
        entry.set(DesktopEntry::mainGroup, "TryExec", escapeEntryText(place.command.front()));
        entry.set(DesktopEntry::mainGroup, "Terminal", "false");
        entry.set(DesktopEntry::mainGroup, "X-GNOME-Autostart-enabled",
                  "true"); // some settings programs only flip this
        entry.set(DesktopEntry::mainGroup, "X-KDE-autostart-after", "panel"); // the status item finds its bar
        return writeTextFile(userFile(), entry.toString());
    }
    if (systemEntry()) { // only a hidden entry of the user's own stands before it
        entry.set(DesktopEntry::mainGroup, "Hidden", "true");
        return writeTextFile(userFile(), entry.toString());
    }
    QFile file(QString::fromStdString(userFile()));
    if (file.exists() && !file.remove())
        return tl::unexpected(file.errorString().toStdString());
    return {};
}

} // namespace lumenvale
