// SPDX-License-Identifier: MIT
// Draws the panel and the settings window into PNG files, dark and light, at one and two pixels per point:
// screenshots FOLDER. Each scale is drawn by a copy of this program with its own scale factor, so that the
// pictures are what a screen of that scale shows. LUMENVALE_SCREENSHOT_FONT names a font family, to compare with a
// design.
#include "screenshots/Scene.h"
#include "screenshots/Showcase.h"

#include "preferences/BuildInfo.h"
#include "ui/look/Theme.h"
#include "ui/panel/BrightnessMenu.h"
#include "ui/panel/BrightnessPanel.h"
#include "ui/settings/SettingsTabController.h"

#include <QApplication>
#include <QDir>
#include <QProcess>
#include <QTextStream>
#include <QVBoxLayout>
#include <cstdio>

namespace lumenvale {

namespace {

constexpr double desktopMargin = 30;
constexpr int settingsWidth = 800;
constexpr int settingsHeight = 552; // without the title bar, which is the system's

void turnLoop()
{
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
}

class Pictures {
public:
    Pictures(const QDir& target, double pixelsPerPoint)
        : folder(target), scale(pixelsPerPoint),
          menu(
              *showcase.store, *showcase.presets, *showcase.editor, showcase.clock, [] {}, [](const auto&) {}),
          settings({*showcase.store, *showcase.presets, *showcase.editor, *showcase.preferences,
                    *showcase.platform.diagnostics, showcase.clock, showcase.platform.words,
                    BuildInfo{"1.0", "1", showcase.clock.wallTime()}})
    {
        panel.setWindowFlags(Qt::FramelessWindowHint);
        panel.setAttribute(Qt::WA_TranslucentBackground);
        auto* layout = new QVBoxLayout(&panel);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(&menu);
        const auto count = [](const auto& list) { return static_cast<int>(list.get().size()); };
        panel.resize(panelWidth, static_cast<int>(preferredHeight(count(showcase.store->displays),
                                                                  count(showcase.presets->presets))));
        panel.show();
        settings.resize(settingsWidth, settingsHeight);
        settings.show();
    }

    /// False when a file could not be written.
    bool draw(bool dark)
    {
        Theme::set(dark ? Appearance::dark : Appearance::light);
        const QString mode = dark ? "dark" : "light";
        showcase.editor->activePresetID.set(showcase.evening);
        turnLoop();
        bool saved = save(onDesktop(panel, panelCornerRadius), "panel-" + mode);
        showcase.editor->selectTab(SettingsTab::general);
        saved = saveSettings("general-" + mode) && saved;
        showcase.editor->select(DisplaySelection{Showcase::studio}, true);
        saved = saveSettings("displays-" + mode) && saved;
        showcase.editor->select(PresetSelection{showcase.evening}, true);
        return saveSettings("presets-" + mode) && saved;
    }

private:
    QImage onDesktop(QWidget& window, double radius) const
    {
        const QSizeF size = QSizeF(window.size()) + QSizeF(2, 2.6) * desktopMargin;
        Scene scene(size, scale);
        scene.add(window, {desktopMargin, desktopMargin}, radius);
        return scene.image();
    }
    bool saveSettings(const QString& name)
    {
        turnLoop();
        return save(settings.grab().toImage(), "settings-" + name);
    }
    bool save(QImage image, const QString& name) const
    {
        image.setDevicePixelRatio(1); // it would be written as the picture's resolution
        const QString path = folder.filePath(QString("%1@%2x.png").arg(name).arg(scale));
        if (!image.save(path)) {
            QTextStream(stderr) << path << " could not be written.\n";
            return false;
        }
        QTextStream(stdout) << path << '\n';
        return true;
    }

    QDir folder;
    double scale;
    Showcase showcase;
    BrightnessPanel panel; // before its content, which it must not delete
    BrightnessMenu menu;
    SettingsTabController settings;
};

int drawAt(const QString& folder, const QString& scale)
{
    Pictures pictures(QDir(folder), scale.toDouble());
    return pictures.draw(true) && pictures.draw(false) ? 0 : 1;
}

int runCopyAt(const QString& folder, const QString& scale)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_SCALE_FACTOR", scale);
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    QProcess copy;
    copy.setProcessEnvironment(environment);
    copy.setProcessChannelMode(QProcess::ForwardedChannels);
    copy.start(QCoreApplication::applicationFilePath(), {folder, scale});
    return copy.waitForFinished(-1) && copy.exitStatus() == QProcess::NormalExit ? copy.exitCode() : 1;
}

} // namespace

} // namespace lumenvale

int main(int argc, char** argv)
{
    using namespace lumenvale;
    QApplication application(argc, argv);
    QApplication::setStyle("Fusion");
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2 || !QDir().mkpath(arguments[1])) {
        QTextStream(stderr) << "usage: screenshots FOLDER\n";
        return 2;
    }
    if (const QString family = qEnvironmentVariable("LUMENVALE_SCREENSHOT_FONT"); !family.isEmpty())
        QApplication::setFont(QFont(family));
    if (arguments.size() == 3)
        return drawAt(arguments[1], arguments[2]);
    for (const char* scale : {"1", "2"}) {
        if (const int status = runCopyAt(arguments[1], scale))
            return status;
    }
    return 0;
}
