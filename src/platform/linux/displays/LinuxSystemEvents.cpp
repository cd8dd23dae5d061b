// SPDX-License-Identifier: MIT
#include "platform/linux/displays/LinuxSystemEvents.h"

#include "platform/linux/displays/Connector.h"
#include "platform/linux/displays/Logind.h"
#include "platform/linux/displays/Uevent.h"

#include <QSocketNotifier>
#include <algorithm>
#include <utility>

namespace lumenvale {

namespace {

/// Everything that a new probing could depend on.
std::string topologyText(const SystemPaths& paths, const std::vector<Connector>& connectors)
{
    std::string text;
    for (const std::string& bus : entryNames(paths.sysfs / "class/i2c-dev"))
        text += bus + ' ';
    for (const Connector& connector : connectors) {
        if (!connector.isConnected)
            continue;
        text += connector.path.string() + (connector.isDriven ? '+' : '-');
        if (connector.edid)
            text.append(connector.edid->block.begin(), connector.edid->block.end());
    }
    return text;
}

bool areAllAsleep(const std::vector<Connector>& connectors)
{
    const auto isAwake = [](const Connector& each) { return each.isDisplay() && !each.isAsleep; };
    const auto isDisplay = [](const Connector& each) { return each.isDisplay(); };
    return std::any_of(connectors.begin(), connectors.end(), isDisplay) &&
           std::none_of(connectors.begin(), connectors.end(), isAwake);
}

} // namespace

struct LinuxSystemEvents::Sources {
    UeventSocket uevents;
    std::unique_ptr<QSocketNotifier> notifier;
    std::unique_ptr<SleepWatch> sleepWatch;
    Subscription windowScreens;
};

LinuxSystemEvents::LinuxSystemEvents(SystemPaths paths, WindowSystem* windowSystem, Clock& clock)
    : paths(std::move(paths)), windowSystem(windowSystem), clock(clock)
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
    lastTopology = topologyText(paths, readConnectors(paths));
    lastEmission = clock.now();
    powerTimer = clock.callAfter(powerCheckInterval, [this] { checkPower(); });
    sources = std::make_unique<Sources>();
    sources->sleepWatch = std::make_unique<SleepWatch>(QDBusConnection::systemBus(), [this](bool isGoingToSleep) {
        events.emit(isGoingToSleep ? SystemEvent::systemWillSleep : SystemEvent::systemDidWake);
    });
    if (sources->uevents.isOpen()) {
        sources->notifier =
            std::make_unique<QSocketNotifier>(sources->uevents.descriptor(), QSocketNotifier::Read);
        QObject::connect(sources->notifier.get(), &QSocketNotifier::activated, sources->notifier.get(), [this] {
            while (const std::optional<Uevent> event = sources->uevents.receive()) {
                if (concernsDisplays(*event))
                    announced();
            }
        });
    }
    if (windowSystem)
        sources->windowScreens = windowSystem->observe([this] { changedForCertain(); });
}

void LinuxSystemEvents::changedForCertain()
{
    lastTopology.clear(); // this counts whatever the connectors say
    announced();
}

void LinuxSystemEvents::announced()
{
    if (settleTimer == 0)
        settleTimer = clock.callAfter(settleTime, [this] { settle(); });
}

void LinuxSystemEvents::settle()
{
    settleTimer = 0;
    const std::vector<Connector> connectors = readConnectors(paths);
    std::string topology = topologyText(paths, connectors);
    const bool isChanged = topology != lastTopology;
    lastTopology = std::move(topology);
    if (!isChanged && clock.now() - lastEmission < idleAnnouncementInterval)
        return;
    lastEmission = clock.now();
    wasChangedInTheDark = areAllAsleep(connectors);
    if (wasChangedInTheDark)
        checkPower(); // watches for their return from now on
    events.emit(SystemEvent::screenParametersChanged);
}

void LinuxSystemEvents::checkPower()
{
    const std::vector<Connector> connectors = readConnectors(paths);
    const bool isAsleep = areAllAsleep(connectors);
    if (topologyText(paths, connectors) != lastTopology)
        announced(); // some changes are not announced: a picture switched on by the desktop
    clock.cancel(powerTimer);
    powerTimer = clock.callAfter(isAsleep ? wakeCheckInterval : powerCheckInterval, [this] { checkPower(); });
    if (std::exchange(areScreensAsleep, isAsleep) != isAsleep)
        events.emit(isAsleep ? SystemEvent::screensDidSleep : SystemEvent::screensDidWake);
    if (!isAsleep && std::exchange(wasChangedInTheDark, false))
        changedForCertain(); // a monitor that was off may have given no answer then
}

} // namespace lumenvale
