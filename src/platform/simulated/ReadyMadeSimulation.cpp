// SPDX-License-Identifier: MIT
#include "base/Identity.h"
#include "platform/simulated/SimulatedPlatform.h"

#include <QDir>
#include <QOperatingSystemVersion>
#include <QSaveFile>
#include <QStandardPaths>

namespace lumenvale {

namespace {

struct ReadyMadeMonitor {
    const char* fileName;
    const char* text;
};

constexpr ReadyMadeMonitor readyMadeMonitors[] = {{"1-built-in.json", R"({
  "name": "Built-in Display", "displayID": 1, "uuid": "0B7E0D3C-5C0A-4D0B-8C1E-3A6A52F1C901",
  "isBuiltIn": true, "isMain": true, "vendor": 1552, "model": 41049, "serial": 0,
  "pixelWidth": 3024, "pixelHeight": 1964, "logicalWidth": 1512, "logicalHeight": 982, "refreshRate": 120,
  "nativePixelWidth": 3024, "nativePixelHeight": 1964,
  "native": { "brightness": 0.625 }
}
)"},
                                                  {"2-studio-27.json", R"({
  "name": "Studio 27", "displayID": 2, "uuid": "37D8832A-2D66-02CA-B9F7-8F30A301B230",
  "vendor": 4268, "model": 16589, "serial": 305419896,
  "pixelWidth": 3840, "pixelHeight": 2160, "logicalWidth": 1920, "logicalHeight": 1080, "refreshRate": 60,
  "nativePixelWidth": 3840, "nativePixelHeight": 2160, "alphanumericSerial": "QX7200143",
  "upstream": "DP", "downstream": "HDMI",
  "ddc": { "maximum": 100, "current": 42 }
}
)"},
                                                  {"3-office-4k.json", R"({
  "name": "Office 4K", "displayID": 3, "uuid": "9C1D6E0F-71B4-4E52-A2D8-6F0C4B85D713",
  "vendor": 7789, "model": 23312, "serial": 271828,
  "pixelWidth": 3840, "pixelHeight": 2160, "logicalWidth": 2560, "logicalHeight": 1440, "refreshRate": 60,
  "nativePixelWidth": 3840, "nativePixelHeight": 2160,
  "upstream": "DP", "downstream": "DP",
  "ddc": { "maximum": 100, "current": 0 }
}
)"}};

QString stateFolder()
{
    if (QOperatingSystemVersion::currentType() == QOperatingSystemVersion::MacOS)
        return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString chosen = qEnvironmentVariable("XDG_STATE_HOME");
    return QDir::isAbsolutePath(chosen) ? chosen : QDir::homePath() + QStringLiteral("/.local/state");
}

bool writeMonitor(const QDir& folder, const ReadyMadeMonitor& monitor)
{
    QSaveFile file(folder.filePath(QString::fromUtf8(monitor.fileName)));
    return file.open(QIODevice::WriteOnly) && file.write(monitor.text) >= 0 && file.commit();
}

} // namespace

tl::expected<std::string, std::string> readyMadeSimulation()
{
    const QDir folder(stateFolder() + QLatin1Char('/') + QLatin1String(simulatedIdentifier));
    const std::string path = folder.path().toStdString();
    if (folder.exists())
        return path;
    if (!folder.mkpath(QStringLiteral(".")))
        return tl::unexpected("The folder " + path + " for simulated monitors could not be made.");
    for (const ReadyMadeMonitor& monitor : readyMadeMonitors) {
        if (!writeMonitor(folder, monitor))
            return tl::unexpected("The simulated monitors could not be written to " + path + ".");
    }
    return path;
}

} // namespace lumenvale
