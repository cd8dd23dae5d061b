// SPDX-License-Identifier: MIT
// Draws the panel and the settings window, dark and light, at one and two pixels a point, from simulated monitors:
// screenshots FOLDER
#include "base/Identity.h"
#include "displays/DisplayStore.h"
#include "platform/Platform.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtMainThread.h"
#include "preferences/GeneralPreferences.h"
#include "presets/PresetEditor.h"
#include "ui/BrightnessMenu.h"
#include "ui/PreferredHeight.h"
#include "ui/SettingsTabController.h"
#include "ui/Theme.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLinearGradient>
#include <QPainter>
#include <QTemporaryDir>
#include <QVBoxLayout>
#include <cstdio>
#include <functional>

using namespace lumenvale;

namespace {

constexpr const char* panelFile = R"({"name": "Built-in Display", "isBuiltIn": true, "isMain": true, "displayID": 1,
    "uuid": "0B1E6C3A-52D1-4B7E-9B0C-6F1F0D3C5A10", "native": {"brightness": 0.625}})";
constexpr const char* studioFile = R"({"name": "Studio 27", "displayID": 2, "uuid": "37D8832A-2D66-02CA-B9F7-8F30A301B230",
    "pixelWidth": 3840, "pixelHeight": 2160, "logicalWidth": 3840, "logicalHeight": 2160, "refreshRate": 60,
    "nativePixelWidth": 3840, "nativePixelHeight": 2160, "alphanumericSerial": "QX7200143", "upstream": "DP",
    "downstream": "HDMI", "ddc": {"maximum": 100, "current": 42}})";
constexpr const char* officeFile = R"({"name": "Office 4K", "displayID": 3, "uuid": "9C1D6E0F-71B4-4E52-A2D8-6F0C4B85D713",
    "ddc": {"maximum": 100, "current": 0, "ignoresWrites": true}})";

void write(const QString& path, const char* text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
        qFatal("cannot write %s", qPrintable(path));
}

void turnUntil(const std::function<bool()>& condition)
{
    while (!condition())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// The whole program below its shell, on simulated monitors.
struct Program {
    explicit Program(const QString& folder)
    {
        platform = makePlatform({.simulationFolder = folder.toStdString()}, clock, mainThread).value();
        hardware.emplace(std::move(platform.hardware), mainThread);
        store.emplace(*hardware, *platform.defaults, *platform.screens, *platform.events, clock);
        presets.emplace(*platform.defaults);
        preferences.emplace(*platform.defaults, *platform.startup);
        editor.emplace(*store, *presets, *platform.defaults);
    }

    QtClock clock;
    QtMainThread mainThread;
    Platform platform;
    std::optional<DisplayHardware> hardware;
    std::optional<DisplayStore> store;
    std::optional<PresetStore> presets;
    std::optional<GeneralPreferences> preferences;
    std::optional<PresetEditor> editor;
};

void prepare(Program& program)
{
    DisplayStore& store = *program.store;
    store.requestRefresh();
    turnUntil([&] { return !store.isRefreshing.get(); });
    const auto levels = [](double a, double b) {
        return std::map<std::string, double>{{"0B1E6C3A-52D1-4B7E-9B0C-6F1F0D3C5A10", a},
                                             {"37D8832A-2D66-02CA-B9F7-8F30A301B230", b}};
    };
    PresetStore& presets = *program.presets;
    presets.addPreset(levels(0.9, 0.8), {});
    auto evening = levels(0.30, 0.20);
    evening["living-room"] = 0.456;
    const BrightnessPreset added = presets.addPreset(evening, {{"living-room", "Living room TV"}});
    const BrightnessPreset blank = presets.addPreset(levels(0.5, 0.5), {});
    const auto presetNamed = [&](const Uuid& id, const char* name) { presets.rename(id, name); };
    presetNamed(presets.presets.get().front().id, "Day");
    presetNamed(added.id, "Evening");
    presetNamed(blank.id, " ");
    presets.setShortcut(PresetShortcut{.functionKey = 17, .option = true, .control = true}, added.id);
    presets.setShortcut(std::nullopt, blank.id);
    store.setBrightness("9C1D6E0F-71B4-4E52-A2D8-6F0C4B85D713", 0.01);
    turnUntil([&] { return store.display("9C1D6E0F-71B4-4E52-A2D8-6F0C4B85D713")->error.has_value(); });
    store.startMonitoring();
    turnUntil([&] { return store.display("9C1D6E0F-71B4-4E52-A2D8-6F0C4B85D713")->error.has_value(); });
}

QImage render(QWidget& widget, double scale)
{
    widget.ensurePolished();
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

/// The window on a coloured ground with a shadow, as on a desktop.
QImage onDesktop(const QImage& window, double scale)
{
    const QSizeF size = QSizeF(window.size()) / scale + QSizeF(80, 80);
    QImage image((size * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    QPainter painter(&image);
    QLinearGradient ground(0, 0, size.width(), size.height());
    ground.setColorAt(0, QColor(0x3D6F9C));
    ground.setColorAt(0.5, QColor(0x7A5CA8));
    ground.setColorAt(1, QColor(0xDB8F6B));
    painter.fillRect(QRectF(QPointF(), size), ground);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (int spread = 24; spread > 0; spread -= 2) {
        painter.setBrush(QColor(0, 0, 0, 5));
        painter.drawRoundedRect(QRectF(40, 46, size.width() - 80, size.height() - 80).adjusted(-spread, -spread, spread, spread),
                                12 + spread, 12 + spread);
    }
    painter.drawImage(QPointF(40, 40), window);
    return image;
}

void save(const QImage& image, const QString& path)
{
    QImage plain = image;
    plain.setDevicePixelRatio(1);
    if (!plain.save(path))
        qFatal("cannot write %s", qPrintable(path));
    std::printf("%s\n", qPrintable(path));
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setStyle("Fusion");
    const QString folder = application.arguments().value(1, ".");
    QDir().mkpath(folder);
    const QTemporaryDir monitors;
    write(monitors.filePath("1.json"), panelFile);
    write(monitors.filePath("2.json"), studioFile);
    write(monitors.filePath("3.json"), officeFile);
    Program program(monitors.path());
    prepare(program);

    BrightnessMenu panel(*program.store, *program.presets, *program.editor, program.clock, [] {}, [](const auto&) {});
    panel.setAttribute(Qt::WA_TranslucentBackground);
    panel.resize(panelWidth, static_cast<int>(preferredHeight(3, 3)));
    SettingsTabController settings({*program.store, *program.presets, *program.editor, *program.preferences,
                                    *program.platform.diagnostics, program.clock,
                                    BuildInfo{"1.0", "1", program.clock.wallTime()}});
    settings.resize(800, 552);
    program.editor->activePresetID.set(program.presets->presets.get().at(1).id);
    panel.show();
    settings.show();
    for (const bool dark : {true, false}) {
        QApplication::setPalette(makePalette(dark));
        const QString mode = dark ? "dark" : "light";
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents();
        for (const int scale : {1, 2})
            save(onDesktop(render(panel, scale), scale), QString("%1/panel-%2@%3x.png").arg(folder, mode).arg(scale));
        const auto pages = std::to_array<std::pair<const char*, SettingsSelection>>({
            {"displays", DisplaySelection{"37D8832A-2D66-02CA-B9F7-8F30A301B230"}},
            {"presets", PresetSelection{program.presets->presets.get().at(1).id}},
        });
        program.editor->selectTab(SettingsTab::general);
        for (int i = 0; i < 20; ++i)
            QCoreApplication::processEvents();
        save(render(settings, 2), QString("%1/settings-general-%2@2x.png").arg(folder, mode));
        for (const auto& [name, selection] : pages) {
            program.editor->select(selection, true);
            for (int i = 0; i < 20; ++i)
                QCoreApplication::processEvents();
            save(render(settings, 2), QString("%1/settings-%2-%3@2x.png").arg(folder, name, mode));
        }
    }
    return 0;
}
