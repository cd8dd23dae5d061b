// SPDX-License-Identifier: MIT
// How long the main thread is busy at one go while the user drags a slider for three seconds and the monitor takes
// two seconds for every transfer. The counter "longest stall" is in milliseconds; under 8 is wanted.
#include "displays/DisplayStore.h"
#include "hardware/DisplayHardware.h"
#include "platform/Platform.h"
#include "platform/qt/QtClock.h"
#include "platform/qt/QtMainThread.h"
#include "presets/PresetEditor.h"
#include "ui/controls/LevelSlider.h"
#include "ui/panel/BrightnessMenu.h"

#include <QApplication>
#include <QFile>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <algorithm>
#include <benchmark/benchmark.h>

namespace lumenvale {
namespace {

using Time = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr auto dragTime = std::chrono::seconds(3);
constexpr auto mouseInterval = std::chrono::milliseconds(8); // a mouse of 125 Hz

void writeMonitor(const QString& folder, int delay)
{
    QFile file(folder + "/monitor.json");
    if (!file.open(QIODevice::WriteOnly))
        std::abort();
    file.write(QString(R"({"name": "Slow", "displayID": 1, "ddc": {"delayMs": %1}})").arg(delay).toUtf8());
}

void moveMouse(QWidget& slider, QEvent::Type type, double x)
{
    const QPointF point(x, slider.height() / 2.0);
    QMouseEvent event(type, point, slider.mapToGlobal(point), Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&slider, &event);
}

/// Drags to and fro and returns the longest time that passed between two turns of the loop's work.
Milliseconds drag(QWidget& slider)
{
    Milliseconds longest{};
    const auto begin = Time::now();
    moveMouse(slider, QEvent::MouseButtonPress, 20);
    auto next = begin;
    for (int i = 0; Time::now() - begin < dragTime; ++i) {
        const auto turn = Time::now();
        if (turn >= next) {
            moveMouse(slider, QEvent::MouseMove, 20 + i % 200);
            next = turn + mouseInterval;
        }
        QCoreApplication::processEvents();
        longest = std::max(longest, Milliseconds(Time::now() - turn));
    }
    moveMouse(slider, QEvent::MouseButtonRelease, 20);
    return longest;
}

void longestStallWhileDragging(benchmark::State& state)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int count = 1;
    char name[] = "lumenvale_bench";
    char* arguments[] = {name, nullptr};
    const QApplication application(count, arguments);
    const QTemporaryDir folder;
    writeMonitor(folder.path(), 0);
    QtClock clock;
    QtMainThread mainThread;
    Platform platform = makePlatform({.simulationFolder = folder.path().toStdString()}, clock, mainThread).value();
    DisplayHardware hardware(std::move(platform.hardware), mainThread);
    DisplayStore store(hardware, *platform.defaults, *platform.screens, *platform.events, clock);
    PresetStore presets(*platform.defaults);
    PresetEditor editor(store, presets, *platform.defaults);
    store.requestRefresh();
    while (store.isRefreshing.get())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    store.startMonitoring();
    writeMonitor(folder.path(), 2000);
    BrightnessMenu menu(
        store, presets, editor, clock, [] {}, [](const BrightnessPreset&) {});
    menu.resize(340, 140);
    menu.show();
    QCoreApplication::processEvents();
    Milliseconds longest{};
    for (auto each : state)
        longest = std::max(longest, drag(*menu.findChild<LevelSlider*>()));
    state.counters["longest stall"] = longest.count();
}
BENCHMARK(longestStallWhileDragging)->Iterations(1)->Unit(benchmark::kSecond);

} // namespace
} // namespace lumenvale
