// SPDX-License-Identifier: MIT
#include "screenshots/Showcase.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextStream>
#include <cstdlib>
#include <utility>

namespace lumenvale {

namespace {

constexpr std::pair<const char*, const char*> monitors[] = {
    {"1-built-in.json", R"({ "name": "Built-in Display", "displayID": 1, "isBuiltIn": true, "isMain": true,
        "uuid": "0B7E0D3C-5C0A-4D0B-8C1E-3A6A52F1C901", "pixelWidth": 3024, "pixelHeight": 1964,
        "logicalWidth": 1512, "logicalHeight": 982, "refreshRate": 120, "native": { "brightness": 0.625 } })"},
    {"2-studio-27.json", R"({ "name": "Studio 27", "displayID": 2, "vendor": 4268, "model": 16589,
        "serial": 305419896, "uuid": "37D8832A-2D66-02CA-B9F7-8F30A301B230", "pixelWidth": 3840,
        "pixelHeight": 2160, "nativePixelWidth": 3840, "nativePixelHeight": 2160, "refreshRate": 60,
        "alphanumericSerial": "QX7200143", "upstream": "DP", "downstream": "HDMI",
        "ddc": { "maximum": 100, "current": 42 } })"},
    {"3-office-4k.json", R"({ "name": "Office 4K", "displayID": 3, "vendor": 7789, "model": 23312,
        "serial": 271828, "uuid": "9C1D6E0F-71B4-4E52-A2D8-6F0C4B85D713", "pixelWidth": 3840,
        "pixelHeight": 2160, "refreshRate": 60, "ddc": { "maximum": 100, "current": 0, "overridesTo": 20 } })"},
};
constexpr char builtIn[] = "0B7E0D3C-5C0A-4D0B-8C1E-3A6A52F1C901";
constexpr char office[] = "9C1D6E0F-71B4-4E52-A2D8-6F0C4B85D713";
constexpr char livingRoom[] = "5D0C2A47-93E1-4B7C-8F26-1B9E04C7A8F3";

[[noreturn]] void fail(const QString& message)
{
    QTextStream(stderr) << message << '\n';
    std::exit(1);
}

void writeMonitors(const QTemporaryDir& folder)
{
    for (const auto& [name, text] : monitors) {
        QFile file(folder.filePath(QString::fromUtf8(name)));
        if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
            fail(file.errorString());
    }
}

/// Returns the second one.
Uuid addPresets(PresetStore& presets)
{
    const std::map<std::string, std::string> names = {
        {builtIn, "Built-in Display"}, {Showcase::studio, "Studio 27"}, {livingRoom, "Living room TV"}};
    presets.rename(presets.addPreset({{builtIn, 0.9}, {Showcase::studio, 0.8}}, names).id, "Day");
    const BrightnessPreset evening =
        presets.addPreset({{builtIn, 0.625}, {Showcase::studio, 0.42}, {livingRoom, 0.456}}, names);
    presets.rename(evening.id, "Evening");
    PresetShortcut shortcut{.functionKey = 17};
    shortcut.control = shortcut.option = true;
    presets.setShortcut(shortcut, evening.id);
    const BrightnessPreset untitled = presets.addPreset({{builtIn, 0.2}}, names);
    presets.rename(untitled.id, " ");
    presets.setShortcut(std::nullopt, untitled.id);
    return evening.id;
}

} // namespace

Showcase::Showcase()
{
    writeMonitors(folder);
    PlatformOptions options;
    options.simulationFolder = folder.path().toStdString();
    tl::expected<Platform, std::string> made = makePlatform(options, clock, mainThread);
    if (!made)
        fail(QString::fromStdString(made.error()));
    platform = std::move(*made);
    hardware = std::make_unique<DisplayHardware>(std::move(platform.hardware), mainThread);
    store =
        std::make_unique<DisplayStore>(*hardware, *platform.defaults, *platform.screens, *platform.events, clock);
    presets = std::make_unique<PresetStore>(*platform.defaults);
    editor = std::make_unique<PresetEditor>(*store, *presets, *platform.defaults);
    preferences = std::make_unique<GeneralPreferences>(*platform.defaults, startup);
    evening = addPresets(*presets);

    store->requestRefresh();
    while (store->isRefreshing.get())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    store->setBrightness(office, 0.0); // the monitor overrides it: a problem to show
    while (!store->display(office)->error)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    editor->activePresetID.set(evening);
}

} // namespace lumenvale
