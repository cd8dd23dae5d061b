// SPDX-License-Identifier: MIT
#include "platform/simulated/SimulatedFolder.h"

#include <QDir>
#include <set>

namespace lumenvale {

namespace {

/// A number that stays with the file whatever comes and goes around it (FNV-1a, 31 bits).
std::uint32_t numberFromName(const std::string& fileName)
{
    std::uint32_t hash = 2166136261U;
    for (const char each : fileName)
        hash = (hash ^ static_cast<unsigned char>(each)) * 16777619U;
    return (hash >> 1U) | 1U;
}

tl::expected<SimulatedDisplay, std::string> readDisplay(const std::string& folder, const std::string& fileName)
{
    SimulatedMonitor file(folder + '/' + fileName);
    auto monitor = file.read();
    if (!monitor)
        return tl::unexpected(monitor.error());
    const std::uint32_t displayID = monitor->displayID.value_or(numberFromName(fileName));
    return SimulatedDisplay{fileName, displayID, std::move(*monitor), std::move(file)};
}

} // namespace

std::vector<std::string> SimulatedFolder::list() const
{
    std::vector<std::string> names;
    const QDir directory(QString::fromStdString(folder));
    for (const QString& each : directory.entryList({QStringLiteral("*.json")}, QDir::Files, QDir::Name)) {
        if (each != QLatin1String("preferences.json"))
            names.push_back(each.toStdString());
    }
    return names;
}

FolderContents SimulatedFolder::read()
{
    FolderContents contents;
    fileNames.clear();
    std::map<std::string, std::string> uuids;
    for (const std::string& fileName : list()) {
        auto display = readDisplay(folder, fileName);
        if (!display) {
            contents.problems.push_back(display.error());
            continue;
        }
        const auto [number, isNewNumber] = fileNames.emplace(display->displayID, fileName);
        if (!isNewNumber) {
            contents.problems.push_back(fileName + ": the \"displayID\" " + std::to_string(display->displayID) +
                                        " is taken by " + number->second + '.');
            continue;
        }
        if (display->monitor.uuid) {
            const auto [uuid, isNewUuid] = uuids.emplace(*display->monitor.uuid, fileName);
            if (!isNewUuid) {
                contents.problems.push_back(fileName + ": the \"uuid\" is taken by " + uuid->second + '.');
                fileNames.erase(number);
                continue;
            }
        }
        contents.displays.push_back(std::move(*display));
    }
    return contents;
}

std::optional<SimulatedDisplay> SimulatedFolder::find(std::uint32_t displayID)
{
    if (const auto known = fileNames.find(displayID); known != fileNames.end()) {
        auto display = readDisplay(folder, known->second);
        if (display && display->displayID == displayID)
            return std::move(*display);
    }
    for (SimulatedDisplay& display : read().displays) {
        if (display.displayID == displayID)
            return std::move(display);
    }
    return std::nullopt;
}

} // namespace lumenvale
