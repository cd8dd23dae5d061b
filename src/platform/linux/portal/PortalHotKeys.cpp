// SPDX-License-Identifier: MIT
#include "platform/linux/portal/PortalHotKeys.h"

#include "platform/linux/keyboard/ShortcutMessages.h"
#include "platform/linux/portal/PortalRequest.h"
#include "platform/linux/portal/PortalSession.h"
#include "platform/qt/ProgramFile.h"

#include <QDBusServiceWatcher>
#include <QTimer>
#include <algorithm>
#include <map>
#include <utility>

namespace lumenvale {

namespace {

std::string explain(PortalFailure failure)
{
    switch (failure) {
    case PortalFailure::refused:
        return "The desktop did not allow system-wide shortcuts. Allow them in its settings for apps.";
    case PortalFailure::stopped:
        return "The desktop's service for system-wide shortcuts has stopped.";
    case PortalFailure::absent:
        break;
    }
    return "This desktop lets no app set system-wide shortcuts. In its own keyboard settings, bind a key to the "
           "command \"" +
           programCommand() + " apply\" followed by the preset's name.";
}

class PortalHotKeys final : public HotKeyService {
public:
    explicit PortalHotKeys(const QDBusConnection& bus)
        : bus(bus), watcher(portalService, bus, QDBusServiceWatcher::WatchForOwnerChange)
    {
        bindLater.setSingleShot(true);
        QObject::connect(&bindLater, &QTimer::timeout, &bindLater, [this] { bind(); });
        QObject::connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, &watcher,
                         [this](const QString&, const QString& oldOwner, const QString& newOwner) {
                             portalChanged(!oldOwner.isEmpty(), !newOwner.isEmpty());
                         });
    }

    void start(Events toCall) override { events = std::move(toCall); }

    void stop() override
    {
        keys.clear();
        bindLater.stop();
        session.reset();
        events = {};
    }

    tl::expected<void, std::string> registerHotKey(std::uint32_t id, const PresetShortcut& shortcut,
                                                   const std::string& description) override
    {
        if (!bus.isConnected())
            return tl::unexpected(couldNotStartMessage("there is no session bus"));
        const std::string trigger = portalTrigger(shortcut);
        if (trigger.empty())
            return tl::unexpected(unknownKeyMessage(shortcut));
        if (std::ranges::any_of(keys, [&](const auto& each) { return each.second.trigger == trigger; }))
            return tl::unexpected(usedTwiceMessage(shortcut));
        // The desktop remembers what the user chose under this name, so it must be the same in every run.
        keys.emplace(id, PortalShortcut{"shortcut-" + trigger, description, trigger});
        bindLater.start(0);
        return {};
    }

    void unregisterHotKey(std::uint32_t id) override
    {
        if (keys.erase(id) > 0)
            bindLater.start(0);
    }

private:
    void bind()
    {
        if (session) {
            session->close([this] {
                forgetSession();
                bind();
            });
            return;
        }
        if (keys.empty())
            return;
        std::vector<PortalShortcut> shortcuts;
        for (const auto& [id, key] : keys)
            shortcuts.push_back(key);
        session = std::make_unique<PortalSession>(
            bus, std::move(shortcuts),
            PortalSession::Events{
                .activated = [this](const std::string& name) { activate(name); },
                .bound = [this](const std::set<std::string>& names) { reportBound(names); },
                .failed = [this](PortalFailure failure) { fail(failure); },
            });
    }

    /// Our own first call starts a portal that did not run: the session that is being made is then the new
    /// portal's.
    void portalChanged(bool wasThere, bool isThere)
    {
        if (wasThere)
            session.reset();
        if (!isThere)
            report([](const PortalShortcut&) { return explain(PortalFailure::stopped); });
        else if (!session && !keys.empty())
            bindLater.start(0);
    }

    void forgetSession() { session.release()->deleteLater(); } // one of its calls may be under way

    void activate(const std::string& name)
    {
        const auto key = std::ranges::find_if(keys, [&](const auto& each) { return each.second.name == name; });
        if (key == keys.end())
            return;
        if (const auto call = events.pressed) // it may stop the service
            call(key->first);
    }

    void reportBound(const std::set<std::string>& names)
    {
        report([&](const PortalShortcut& key) -> std::string {
            if (names.contains(key.name))
                return {};
            return "The desktop did not accept this shortcut. Choose a key for it in the desktop's own keyboard "
                   "settings.";
        });
    }

    void fail(PortalFailure failure)
    {
        forgetSession();
        report([failure](const PortalShortcut&) { return explain(failure); });
    }

    template <typename Message>
    void report(Message message) const
    {
        const auto reported = keys; // whoever is told may register anew
        for (const auto& [id, key] : reported) {
            if (const auto call = events.changed)
                call(id, message(key));
        }
    }

    QDBusConnection bus;
    QDBusServiceWatcher watcher;
    QTimer bindLater;
    Events events;
    std::map<std::uint32_t, PortalShortcut> keys;
    std::unique_ptr<PortalSession> session;
};

} // namespace

std::unique_ptr<HotKeyService> makePortalHotKeys(const QDBusConnection& bus)
{
    return std::make_unique<PortalHotKeys>(bus);
}

} // namespace lumenvale
