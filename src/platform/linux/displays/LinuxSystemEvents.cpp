// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LinuxSystemEvents.h"

#include "base/Worker.h"
#include "platform/linux/displays/Logind.h"
#include "platform/linux/displays/Uevent.h"

#include <QSocketNotifier>
#include <algorithm>
#include <utility>

namespace lumenvale {

namespace {

/// Everything that a new probing could depend on.
std::string topologyText(const DisplayRecords& records)
{
    std::string text;
    for (const std::string& bus : records.busFiles)
        text += bus + ' ';
    for (const Backlight& backlight : records.backlights)
        text += backlight.name + ' ';
    for (const Connector& connector : records.connectors) {
        if (!connector.isConnected)
            continue;
        text += connector.path.string() + (connector.isDriven ? '+' : '-');
        if (connector.edid)
            text.append(connector.edid->block.begin(), connector.edid->block.end());
    }
    return text;
}

bool areAllAsleep(const DisplayRecords& records)
{
    const auto isAwake = [](const Connector& each) { return each.isDisplay() && !each.isAsleep; };
    const auto isDisplay = [](const Connector& each) { return each.isDisplay(); };
    return std::ranges::any_of(records.connectors, isDisplay) && std::ranges::none_of(records.connectors, isAwake);
}

} // namespace

RecordsLook lookInBackground(std::shared_ptr<KernelRecords> records, MainThread& mainThread)
{
    return [records = std::move(records), &mainThread, worker = std::shared_ptr<Worker>()](Look what) mutable {
        if (!worker)
            worker = std::make_shared<Worker>();
        return runOnWorker<SharedRecords>(*worker, mainThread, [records, what](const CancellationToken&) {
            return what == Look::power ? records->readPower() : records->readAnew();
        });
    };
}

struct LinuxSystemEvents::Sources {
    UeventSocket uevents;
    std::unique_ptr<QSocketNotifier> notifier;
    std::unique_ptr<SleepWatch> sleepWatch;
    Subscription windowScreens;
};

LinuxSystemEvents::LinuxSystemEvents(std::shared_ptr<KernelRecords> records, RecordsLook look,
                                     WindowSystem* windowSystem, Clock& clock)
    : records(std::move(records)), look(std::move(look)), windowSystem(windowSystem), clock(clock)
{
}

LinuxSystemEvents::~LinuxSystemEvents()
{
    clock.cancel(settleTimer);
    clock.cancel(powerTimer);
}

Subscription LinuxSystemEvents::subscribe(std::function<void(SystemEvent)> observer)
{
    if (!sources)
        startListening();
    return events.subscribe(std::move(observer));
}

void LinuxSystemEvents::startListening()
{
    lastTopology = topologyText(*records->last());
    lastEmission = clock.now();
    powerTimer = clock.callAfter(powerCheckInterval, [this] { checking.run(checkPower()); });
    sources = std::make_unique<Sources>();
    sources->sleepWatch = std::make_unique<SleepWatch>(QDBusConnection::systemBus(), [this](bool isGoingToSleep) {
        events.emit(isGoingToSleep ? SystemEvent::systemWillSleep : SystemEvent::systemDidWake);
    });
    if (sources->uevents.isOpen()) {
        sources->notifier =
            std::make_unique<QSocketNotifier>(sources->uevents.descriptor(), QSocketNotifier::Read);
        QObject::connect(sources->notifier.get(), &QSocketNotifier::activated, sources->notifier.get(), [this] {
            if (sources->uevents.takeIn(concernsDisplays))
                announced();
        });
    }
    if (windowSystem)
        sources->windowScreens = windowSystem->observe([this] { changedForCertain(); });
}

void LinuxSystemEvents::changedForCertain()
{
    lastTopology.reset(); // this counts whatever the connectors say
    announced();
}

void LinuxSystemEvents::announced()
{
    if (settleTimer == 0)
        settleTimer = clock.callAfter(settleTime, [this] { settling.run(settle()); });
}

Task<> LinuxSystemEvents::settle()
{
    settleTimer = 0;
    checks = 0;
    Task<SharedRecords> looking = look(Look::everything);
    const SharedRecords found = co_await std::move(looking);
    std::string topology = topologyText(*found);
    const bool isChanged = topology != lastTopology;
    lastTopology = std::move(topology);
    if (!isChanged && clock.now() - lastEmission < idleAnnouncementInterval)
        co_return;
    wasChangedInTheDark = areAllAsleep(*found);
    if (wasChangedInTheDark) {
        showPower(*found); // which tells of the change when they return: asked now, monitors that sleep may wake
        co_return;
    }
    lastEmission = clock.now();
    events.emit(SystemEvent::screenParametersChanged);
}

Task<> LinuxSystemEvents::checkPower()
{
    powerTimer = 0;
    const bool isFullLook = ++checks >= checksPerFullLook;
    if (isFullLook)
        checks = 0;
    Task<SharedRecords> looking = look(isFullLook ? Look::everything : Look::power);
    const SharedRecords found = co_await std::move(looking);
    if (topologyText(*found) != lastTopology)
        announced(); // some changes are not announced: a picture switched on by the desktop
    showPower(*found);
}

void LinuxSystemEvents::showPower(const DisplayRecords& found)
{
    const bool isAsleep = areAllAsleep(found);
    clock.cancel(powerTimer);
    powerTimer =
        clock.callAfter(isAsleep ? wakeCheckInterval : powerCheckInterval, [this] { checking.run(checkPower()); });
    if (std::exchange(areScreensAsleep, isAsleep) != isAsleep)
        events.emit(isAsleep ? SystemEvent::screensDidSleep : SystemEvent::screensDidWake);
    if (!isAsleep && std::exchange(wasChangedInTheDark, false))
        changedForCertain(); // a monitor that was off may have given no answer then
}

} // namespace lumenvale
