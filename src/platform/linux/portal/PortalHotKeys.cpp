// SPDX-License-Identifier: MIT
#include "platform/linux/portal/PortalHotKeys.h"

#include "base/Identity.h"
#include "platform/linux/portal/PortalRequest.h"
#include "platform/linux/portal/PortalSession.h"
#include "platform/linux/portal/PortalTrigger.h"
#include "platform/linux/x11/X11HotKeys.h"

#include <QDBusServiceWatcher>
#include <QTimer>
#include <map>
#include <utility>

namespace lumenvale {

namespace {

constexpr char noPortalMessage[] =
    "This desktop lets no app set system-wide shortcuts. In its own keyboard settings, bind a key to the command "
    "\"lumenvale apply\" followed by the preset's name.";

class PortalHotKeys final : public HotKeyService {
public:
    explicit PortalHotKeys(const QDBusConnection& connection)
        : bus(connection), watcher(portalService, bus, QDBusServiceWatcher::WatchForOwnerChange)
    {
        bindLater.setSingleShot(true);
        QObject::connect(&bindLater, &QTimer::timeout, &bindLater, [this] { bind(); });
        QObject::connect(&watcher, &QDBusServiceWatcher::serviceOwnerChanged, &watcher,
                         [this](const QString&, const QString&, const QString& newOwner) {
                             session.reset();
                             if (!newOwner.isEmpty())
                                 bindLater.start(0);
                         });
    }

    std::int32_t installHandler(Handler next, HotKeyReference& reference) override
    {
        if (!bus.isConnected())
            return hotKeyServiceAbsentStatus;
        handler = std::move(next);
        reference = ++lastReference;
        return 0;
    }
    void removeHandler(HotKeyReference) override { handler = nullptr; }

    std::int32_t registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, HotKeyID id,
                                const std::string& description, HotKeyReference& reference) override
    {
        const std::string trigger = portalTrigger(keyCode, modifiers);
        if (trigger.empty())
            return hotKeyInvalidStatus;
        for (const auto& [other, key] : keys) {
            if (key.shortcut.trigger == trigger)
                return hotKeyExistsStatus;
        }
        reference = ++lastReference;
        // The desktop remembers what the user chose under this name, so it must be the same in every run.
        keys.emplace(reference, Key{{"shortcut-" + trigger, description, trigger}, id});
        bindLater.start(0);
        return 0;
    }

    void unregisterHotKey(HotKeyReference reference) override
    {
        if (keys.erase(reference) > 0)
            bindLater.start(0);
    }

    void setStatusObserver(StatusObserver next) override { observer = std::move(next); }

private:
    struct Key {
        PortalShortcut shortcut;
        HotKeyID id;
    };

    void bind()
    {
        session.reset();
        if (keys.empty())
            return;
        std::vector<PortalShortcut> shortcuts;
        for (const auto& [reference, key] : keys)
            shortcuts.push_back(key.shortcut);
        session = std::make_unique<PortalSession>(
            bus, std::move(shortcuts),
            PortalSession::Events{
                .activated = [this](const std::string& name) { activate(name); },
                .bound = [this](const auto& triggers) { reportBound(triggers); },
                .failed = [this](PortalFailure failure) { reportFailure(failure); },
            });
    }

    void activate(const std::string& name)
    {
        for (const auto& [reference, key] : keys) {
            if (key.shortcut.name != name || !handler)
                continue;
            const Handler call = handler; // it may remove itself, and any key
            call(HotKeyID(key.id));
            return;
        }
    }

    void reportBound(const std::map<std::string, std::string>& triggers)
    {
        for (const auto& [reference, key] : keys) {
            const auto bound = triggers.find(key.shortcut.name);
            report(key, bound == triggers.end()
                            ? "The desktop did not accept this shortcut. Choose a key for it in the desktop's own "
                              "keyboard settings."
                            : "");
        }
    }

    void reportFailure(PortalFailure failure)
    {
        for (const auto& [reference, key] : keys) {
            report(key,
                   failure == PortalFailure::refused
                       ? "The desktop did not allow system-wide shortcuts. Allow them in its settings for apps."
                       : noPortalMessage);
        }
    }

    void report(const Key& key, const std::string& message) const
    {
        if (observer)
            observer(key.id.id, message);
    }

    QDBusConnection bus;
    QDBusServiceWatcher watcher;
    QTimer bindLater;
    Handler handler;
    StatusObserver observer;
    HotKeyReference lastReference = 0;
    std::map<HotKeyReference, Key> keys;
    std::unique_ptr<PortalSession> session;
};

} // namespace

std::unique_ptr<HotKeyService> makePortalHotKeys(const QDBusConnection& bus)
{
    return std::make_unique<PortalHotKeys>(bus);
}

} // namespace lumenvale
